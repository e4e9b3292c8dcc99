// Keys that a widget needs for itself.
#pragma once

#include <QObject>
#include <QVector>

class QAbstractButton;
class QWidget;

namespace zk::app {

// While the widget has the focus, these keys are its own: the window's shortcuts for them wait. Lives as
// long as the widget.
class OwnKeys : public QObject
{
    Q_OBJECT

public:
    OwnKeys(QWidget *widget, const QVector<int> &keys);

    static QVector<int> navigation();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    const QVector<int> m_keys;
};

// Enter clicks the button while it has the focus, as the windows have other uses for the space bar. Lives
// as long as the button.
class EnterClicks : public QObject
{
    Q_OBJECT

public:
    explicit EnterClicks(QAbstractButton *button);

    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace zk::app
