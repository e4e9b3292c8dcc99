#pragma once

#include <QHash>
#include <QImage>
#include <QObject>
#include <QThreadPool>

#include <functional>

namespace zk::app {

// Makes pictures in a thread, one after the other. GUI thread only; the destructor waits for the one
// that is being made.
class PictureLoader : public QObject
{
    Q_OBJECT

public:
    using Job = std::function<QImage()>; // runs in the thread; null when it fails

    explicit PictureLoader(QObject *parent = nullptr);
    ~PictureLoader() override;

    // loaded() follows, unless another job is requested for the key before that.
    void request(qint64 key, Job job);
    void forget(qint64 key);

Q_SIGNALS:
    void loaded(qint64 key, const QImage &picture);

private:
    void finish(qint64 key, quint64 serial, const QImage &picture);

    QHash<qint64, quint64> m_wanted; // serial numbers by key
    quint64 m_lastSerial = 0;
    QThreadPool m_pool;
};

} // namespace zk::app
