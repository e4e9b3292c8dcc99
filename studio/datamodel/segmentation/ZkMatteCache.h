#pragma once

#include "ZkEncodedMatte.h"

#include <QMutex>
#include <QVector>

#include <functional>

namespace zk::datamodel {

// The last few pictures that were made from encoded mattes: shown again and again while nothing
// changes. Thread-safe.
class MatteCache
{
public:
    using Make = std::function<QImage()>;

    // The picture that was made of these, or else the one that is made now, outside the lock.
    QImage find(const QVector<EncodedMatte> &parts, const Make &make);

private:
    struct Entry
    {
        QVector<EncodedMatte> parts;
        QImage picture;
    };
    static constexpr int capacity = 6;

    QImage taken(const QVector<EncodedMatte> &parts);

    QMutex m_mutex;
    QVector<Entry> m_entries; // the last used one last
};

} // namespace zk::datamodel
