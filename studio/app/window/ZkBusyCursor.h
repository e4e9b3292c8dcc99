#pragma once

#include <QApplication>

namespace zk::app {

// While it lives, the pointer says that the program is at work.
class BusyCursor
{
public:
    BusyCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyCursor() { QApplication::restoreOverrideCursor(); }

private:
    Q_DISABLE_COPY(BusyCursor)
};

} // namespace zk::app
