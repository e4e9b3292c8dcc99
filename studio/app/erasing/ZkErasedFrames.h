#pragma once

#include <QImage>
#include <QObject>
#include <QString>
#include <QThreadPool>

#include <memory>

namespace zk::app {

// Reads the same frame of a file and of what erasing made of it, in a thread. Of the frames that are asked
// for while it reads, only the last one is read. GUI thread only; the destructor waits for the frame that
// is being read.
class ErasedFrames : public QObject
{
    Q_OBJECT

public:
    struct Source
    {
        QString path;
        qint64 inFrame = 0; // that is frame 0
    };

    ErasedFrames(const Source &before, const Source &after, QObject *parent = nullptr);
    ~ErasedFrames() override;

    // loaded() follows, unless another frame is asked for before that.
    void request(qint64 frame);
    bool isReading() const { return m_isReading; }

Q_SIGNALS:
    // Null pictures where a file cannot be read.
    void loaded(qint64 frame, const QImage &before, const QImage &after);

private:
    class Reader;
    void read(qint64 frame);
    void finish(qint64 frame, const QImage &before, const QImage &after);

    const std::shared_ptr<Reader> m_before; // of the thread
    const std::shared_ptr<Reader> m_after;
    qint64 m_wanted = -1; // next
    bool m_isReading = false;
    QThreadPool m_pool;
};

} // namespace zk::app
