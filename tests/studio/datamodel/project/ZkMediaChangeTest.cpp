// A clip takes over what erasing has made of its file.
#include "project/ZkMediaChange.h"
#include "EditBench.h"
#include "ZkFrameRenderer.h"
#include "project/ZkProject.h"

#include "ZkTestMain.h"

#include <QSignalSpy>

using namespace zk::datamodel;
using namespace zk::test;

class ZkMediaChangeTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    QString m_error;

    MediaEntry write(const QString &name, const QSize &size, int frames)
    {
        MediaEntry entry;
        const zk::media::SampleClip sample({size, frames, 24});
        if (!sample.write(m_folder.filePath(name), QString(), &m_error)
            || !probeMedia(m_folder.filePath(name), &entry, &m_error))
            qFatal("%s", qPrintable(m_error));
        return entry;
    }
    static QImage shown(const ProjectClip *clip, qint64 frame)
    {
        return FrameRenderer().source(RenderSnapshot(*clip->timeline()), frame);
    }

private Q_SLOTS:
    void isOneStepThatComesBack()
    {
        Project project;
        ProjectClip *clip = project.addClip(project.importMedia(write("before.mkv", {96, 54}, 8)));
        const qint64 before = clip->mediaId();
        const MediaEntry result = write("after.mkv", {96, 54}, 12);
        auto *service = clip->clip()->studioService(ZKSMARTKEYING::AIErasing);
        Segments segments;
        auto node = QSharedPointer<SegmentNode>::create();
        QImage mask(96, 54, QImage::Format_Grayscale8);
        mask.fill(255);
        node->result = node->given = EncodedMatte(mask);
        segments.setNode(2, node);
        service->setState(segments, service->settings());
        const QImage first = shown(clip, 0);
        const int steps = project.undoRedoService()->undoStepCount();
        QSignalSpy changed(&project, &Project::clipChanged);

        QVERIFY(replaceErasedMedia(&project, clip, result, 4, &m_error));
        const QImage second = shown(clip, 0);
        QVERIFY(second != first);
        QCOMPARE(project.undoRedoService()->undoStepCount(), steps + 1);
        QCOMPARE(project.media().size(), 2);
        QCOMPARE(clip->clip()->inFrame(), qint64(4));
        QCOMPARE(clip->clip()->frameCount(), qint64(8));
        QVERIFY(service->segments().isEmpty());
        QCOMPARE(changed.size(), 1);

        QVERIFY(project.save(m_folder.filePath("saved.zkproj"), &m_error));
        Project saved;
        QVERIFY2(saved.open(m_folder.filePath("saved.zkproj"), &m_error), qPrintable(m_error));
        QCOMPARE(shown(saved.clipAt(0), 0), second);

        QVERIFY(project.undoRedoService()->undo());
        QCOMPARE(shown(clip, 0), first);
        QCOMPARE(clip->mediaId(), before);
        QCOMPARE(project.media().size(), 1);
        QVERIFY(service->segments().hasMask(2));
        QVERIFY(project.undoRedoService()->redo());
        QCOMPARE(shown(clip, 0), second);
        QVERIFY(service->segments().isEmpty());
        QCOMPARE(changed.size(), 3);
    }

    void refusesWhatDoesNotFit()
    {
        Project project;
        ProjectClip *clip = project.addClip(project.importMedia(write("clip.mkv", {96, 54}, 8)));
        const int steps = project.undoRedoService()->undoStepCount();
        for (const MediaEntry &other :
             {write("small.mkv", {64, 54}, 8), write("short.mkv", {96, 54}, 7)})
            QVERIFY(!replaceErasedMedia(&project, clip, other, 0, &m_error));
        QVERIFY(!replaceErasedMedia(&project, clip, write("late.mkv", {96, 54}, 8), 1, &m_error));
        QVERIFY2(m_error.contains("late.mkv"), qPrintable(m_error));
        QCOMPARE(project.undoRedoService()->undoStepCount(), steps);
        QCOMPARE(project.media().size(), 1);
    }
};

ZK_TEST_MAIN(ZkMediaChangeTest)
#include "ZkMediaChangeTest.moc"
