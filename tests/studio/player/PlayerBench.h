// A player with a journal of everything that it reports, and clips for it.
#pragma once

#include "ZkFrameRenderer.h"
#include "ZkMediaPlayerPresenter_p.h"
#include "ZkSampleClip.h"
#include "ZkTestMain.h"
#include "timeline/ZkStudioTimeline.h"

#include <QTemporaryDir>

namespace zk::test {

class PlayerBench
{
public:
    PlayerBench()
    {
        using Presenter = ZkMediaPlayerPresenter;
        using Private = ZkMediaPlayerPresenterPrivate;
        watch(&Presenter::sigStateChanged, "state %1");
        watch(&Presenter::sigPropertyChanged, "property %1");
        watch(&Presenter::sigFrameChanged, "frame %1");
        watch(&Presenter::sigPercentProgress, "percent %1");
        QObject::connect(&presenter, &Presenter::sigSeekFinished, &m_context, [this] {
            m_journal.append(finished);
        });
        QObject::connect(
            &d, &Private::pictureChanged, &m_context, [this] { m_journal.append(picture); });
    }

    bool open(const ZkStudioTimeline &timeline, qint64 frame = 0)
    {
        param.handle = timeline.handle();
        param.startFrame = frame;
        return presenter.mediaPlayer()->open(param);
    }
    // Leaves nothing in the journal.
    bool openAndShow(const ZkStudioTimeline &timeline, qint64 frame = 0)
    {
        const bool isShown = open(timeline, frame) && waitFor(finished);
        takeJournal();
        return isShown;
    }
    bool waitFor(const QString &entry, int times = 1)
    {
        return QTest::qWaitFor([&] { return m_journal.count(entry) >= times; }, 10000);
    }
    // What has been reported, or that part of it that has the word.
    QString takeJournal(const QString &word = QString())
    {
        return std::exchange(m_journal, {}).filter(word).join(QStringLiteral(", "));
    }
    static QImage rendered(const ZkStudioTimeline &timeline, qint64 frame)
    {
        zk::datamodel::FrameRenderer renderer;
        return renderer.preview(zk::datamodel::RenderSnapshot(timeline), frame);
    }
    // Whether that frame as the timeline is now is what is shown.
    bool shows(const ZkStudioTimeline &timeline, qint64 frame) const
    {
        return d.picture() == rendered(timeline, frame);
    }

    const QString finished = QStringLiteral("seek finished");
    const QString picture = QStringLiteral("picture");
    ZkMediaPlayerOpenParam param;
    ZkMediaPlayerPresenter presenter;
    ZkMediaPlayerPresenterPrivate &d = *ZkMediaPlayerPresenterPrivate::get(&presenter);

private:
    template<typename Signal>
    void watch(Signal signal, const char *text)
    {
        QObject::connect(&presenter, signal, &m_context, [this, text](int value) {
            m_journal.append(QString::fromLatin1(text).arg(value));
        });
    }

    QStringList m_journal;
    QObject m_context;
};

} // namespace zk::test
