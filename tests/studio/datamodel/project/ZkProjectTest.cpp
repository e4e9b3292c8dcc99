#include "project/ZkProject.h"
#include "EditBench.h"
#include "ZkFrameRenderer.h"
#include "ZkProjectStore.h"
#include "library/ZkStudioProjectManager.h"
#include "segmentation/ZkMatteTrack.h"
#include "timeline/ZkStudioEffect.h"
#include "timeline/ZkStudioEffectList.h"

#include "ZkTestMain.h"

#include <QSignalSpy>

using namespace zk::datamodel;
using namespace zk::test;

namespace {

constexpr char borderLook[] =
    R"({"slug":"edge","name":"Edge","category":"Test","version":2,"matte":{"shift":3},
        "layers":[{"type":"outline","width":6}]})";

// The workspace of a clip of a project, as it is when it is opened again and again.
class ClipWorkspace
{
public:
    explicit ClipWorkspace(
        const ProjectClip *clip,
        ZKSMARTKEYING::ZkSmartKeyingBusinessType type = ZKSMARTKEYING::SmartCutout)
        : controller(createSmartKeyingEditController())
    {
        qint64 frame = 0;
        isOpen = controller->initialise(clip->clip(), &player, &frame, type);
        if (!isOpen)
            return;
        player.service = service();
        service()->setEnabled(true);
        controller->addObserver(&observer);
    }
    ~ClipWorkspace() { releaseSmartKeyingEditController(controller); }

    ZkStudioTimeline *timeline() const
    {
        return static_cast<ZkStudioTimeline *>(controller->editTimeline());
    }
    ZkStudioSmartKeyingService *service() const { return timeline()->shownService(); }
    bool track() const
    {
        controller->startTracking(0, ZKSMARTKEYING::TrackForward, ZKSMARTKEYING::TrackToClipEnd);
        return QTest::qWaitFor(
            [this] { return service()->workMode() != ZKSMARTKEYING::TrackingMode; }, 100000);
    }
    bool apply()
    {
        controller->apply();
        return QTest::qWaitFor([this] { return !observer.results.isEmpty(); }, 100000)
            && observer.results.last() == ZKSMARTKEYING::SaveSucceeded;
    }

    bool isOpen = false;
    NotingPlayer player;
    NotingControllerObserver observer;
    IZkSmartKeyingEditController *const controller;

private:
    Q_DISABLE_COPY(ClipWorkspace)
};

void write(QDataStream &stream, const EncodedMatte &matte)
{
    stream << matte.size() << matte.box() << matte.objectPixels() << matte.data();
}

void write(QDataStream &stream, const TrackedSide &side)
{
    write(stream, side.matte);
    stream << side.confidence << side.seed << side.seedRevision << side.serial;
}

// All that the service holds.
QByteArray contentOf(const ZkStudioSmartKeyingService *service)
{
    QByteArray content;
    QDataStream stream(&content, QIODevice::WriteOnly);
    const auto &settings = service->settings();
    stream << int(settings.type) << settings.overlayColour << settings.overlayAlpha
           << settings.invert;
    const auto &nodes = service->segments().nodes();
    for (auto node = nodes.begin(); node != nodes.end(); ++node) {
        stream << node.key() << (*node)->revision;
        for (const EncodedMatte &matte :
             {(*node)->keep, (*node)->remove, (*node)->erase, (*node)->given, (*node)->result})
            write(stream, matte);
    }
    const auto &tracked = service->segments().tracked();
    for (auto mattes = tracked.begin(); mattes != tracked.end(); ++mattes) {
        stream << mattes.key();
        write(stream, mattes->forward);
        write(stream, mattes->backward);
    }
    return content.toHex();
}

QByteArray contentOf(const MatteTrack *track)
{
    QByteArray content;
    QDataStream stream(&content, QIODevice::WriteOnly);
    const QVector<EncodedMatte> mattes = track ? track->mattes() : QVector<EncodedMatte>();
    for (const EncodedMatte &matte : mattes)
        write(stream, matte);
    return track ? content.toHex() : "no track";
}

QByteArray contentOf(const ProjectClip *projectClip)
{
    const ZkStudioClip *clip = projectClip->clip();
    QByteArray text = "from " + QByteArray::number(clip->inFrame()) + " for "
        + QByteArray::number(clip->frameCount()) + " at "
        + QByteArray::number(projectClip->timeline()->playhead()->position());
    for (int i = 0; i < clip->effects()->count(); ++i) {
        const auto *effect = static_cast<ZkStudioEffect *>(clip->effects()->effectAt(i));
        text += " effect " + effect->descriptor()->slug().toUtf8() + effect->lookJson()
            + QByteArray::number(effect->isEnabled());
    }
    for (auto type : {ZKSMARTKEYING::SmartCutout, ZKSMARTKEYING::AIErasing})
        text += contentOf(clip->studioService(type)) + ' ';
    return text + contentOf(clip->matteTrack().get());
}

} // namespace

class ZkProjectTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        folder.emplace();
        project.emplace();
        file = folder->filePath(QStringLiteral("film.zkproj"));
    }
    void cleanup() { project.reset(); }

    void bringsEverythingBack()
    {
        ProjectClip *clip = addClip(EditClip::instance().path());
        QVERIFY(clip && addClip(EditClip::instance().stillPath()));
        {
            ClipWorkspace cutout(clip);
            QVERIFY(cutout.controller->addMask(0, EditClip::instance().keepStroke()));
            QVERIFY(cutout.controller->setMatte(9, EditClip::instance().matte(9)));
            QVERIFY(cutout.track());
            cutout.service()->setPreviewType(ZKSMARTKEYING::GridPreview);
            cutout.service()->setMaskRegionColor(QColor(1, 2, 3));
            cutout.service()->setMaskRegionAlpha(77);
            cutout.service()->setMaskInverted(true);
            cutout.controller->editClip()->effects()->add(
                ZkStudioEffect::fromLookJson(borderLook, QStringLiteral("edge-slug"), nullptr));
            QVERIFY(cutout.apply());
            ClipWorkspace erasing(clip, ZKSMARTKEYING::AIErasing);
            QVERIFY(erasing.controller->setMatte(3, maskOf({5, 5, 20, 10})));
            const ExpectedMessage gaps(QStringLiteral("15 of 16 frames have no mask"));
            QVERIFY(erasing.apply());
        }
        clip->timeline()->playhead()->setPosition(11);
        clip->clip()->effects()->effectAt(0)->setEnabled(false);
        project->setCurrentClip(project->clipAt(1));
        save();

        Project other;
        QVERIFY2(other.open(file, &error), qPrintable(error));
        QVERIFY(!other.isDirty() && other.id() == project->id() && other.path() == file);
        QCOMPARE(other.media().size(), 2);
        QCOMPARE(other.clipCount(), 2);
        QCOMPARE(other.currentClip(), other.clipAt(1));
        for (int i = 0; i < 2; ++i)
            QCOMPARE(contentOf(other.clipAt(i)), contentOf(project->clipAt(i)));
        QVERIFY(other.clipAt(0)->isCutOut() && !other.undoRedoService()->canUndo());
        other.clipAt(0)->clip()->effects()->effectAt(0)->setEnabled(true);
        clip->clip()->effects()->effectAt(0)->setEnabled(true);
        FrameRenderer renderer;
        for (qint64 frame : {0, 5, 15})
            QCOMPARE(renderer.preview(RenderSnapshot(*other.clipAt(0)->timeline()), frame),
                     renderer.preview(RenderSnapshot(*clip->timeline()), frame));

        // The workspace goes on from there, with results that are newer than all of the file.
        ClipWorkspace again(other.clipAt(0));
        QVERIFY(again.isOpen && again.service()->isTracked());
        QCOMPARE(again.service()->maskItemCount(), 2);
        const auto revision = again.service()->segments().node(0)->revision;
        QVERIFY(again.controller->addMask(0, strokeOn({60, 30, 30, 30})));
        QVERIFY(again.service()->segments().node(0)->revision > revision);
        QVERIFY(again.track() && again.apply());
        QVERIFY(other.isDirty());
        QCOMPARE(other.undoRedoService()->undoText(), QStringLiteral("Smart Cutout"));
    }

    void keepsDraftsBesideWhatWasApplied()
    {
        ProjectClip *clip = addClip(EditClip::instance().path());
        save();
        const QSignalSpy changed(&*project, &Project::contentChanged);
        QByteArray painted;
        {
            ClipWorkspace workspace(clip);
            project->beginEditing(clip, workspace.timeline());
            workspace.service()->setPreviewType(ZKSMARTKEYING::GridPreview);
            QVERIFY(project->clipsWithDrafts().isEmpty() && !project->isDirty());
            QVERIFY(workspace.controller->setMatte(0, EditClip::instance().matte(0)));
            QVERIFY(project->isDirty() && changed.count() == 1);
            QVERIFY(workspace.timeline()->undoRedoService()->undo());
            QVERIFY(!project->isDirty() && project->clipsWithDrafts().isEmpty());
            QVERIFY(workspace.timeline()->undoRedoService()->redo());
            QVERIFY(workspace.track());
            QVERIFY(changed.count() > EditClip::frames); // as the results come
            workspace.controller->editClip()->effects()->add(
                ZkStudioEffect::fromLookJson(borderLook, QStringLiteral("edge-slug"), nullptr));
            save();
            QVERIFY(!project->isDirty());
            painted = contentOf(workspace.service());
            project->endEditing(Project::DraftFate::Dropped); // cancelled
        }
        QVERIFY(project->isDirty() && project->clipsWithDrafts().isEmpty());

        Project other;
        QVERIFY2(other.open(file, &error), qPrintable(error));
        clip = other.clipAt(0);
        QVERIFY(!other.isDirty() && !clip->isCutOut());
        QCOMPARE(other.clipsWithDrafts(), QVector<ProjectClip *> {clip});
        {
            ClipWorkspace workspace(clip);
            other.beginEditing(clip, workspace.timeline());
            QCOMPARE(contentOf(workspace.service()), painted);
            const IZkEffectList *effects = workspace.timeline()->clip()->effects();
            QCOMPARE(effects->effectAt(0)->descriptor()->slug(), QStringLiteral("edge-slug"));
            QVERIFY(!other.isDirty());
            QCOMPARE(workspace.timeline()->undoRedoService()->undoStepCount(), 1);
            QVERIFY(workspace.timeline()->undoRedoService()->undo());
            QVERIFY(workspace.service()->segments().isEmpty() && effects->count() == 0);
            QVERIFY(other.isDirty());
            QVERIFY(workspace.timeline()->undoRedoService()->redo());
            QVERIFY(!other.isDirty() && contentOf(workspace.service()) == painted);
            other.endEditing(Project::DraftFate::Kept);
            QCOMPARE(clip->drafts().size(), 1);
            other.beginEditing(clip, workspace.timeline());
            QVERIFY(workspace.apply());
            other.endEditing(Project::DraftFate::Dropped);
        }
        QVERIFY(other.isDirty() && other.clipsWithDrafts().isEmpty());
        QVERIFY(other.save(file, &error) && project->open(file, &error));
        QVERIFY(project->clipAt(0)->isCutOut() && project->clipsWithDrafts().isEmpty());
        QCOMPARE(contentOf(project->clipAt(0)->clip()->studioService(ZKSMARTKEYING::SmartCutout)),
                 painted);
    }

    void hasOneHistoryForAllClips()
    {
        ProjectClip *first = addClip(EditClip::instance().path());
        ProjectClip *second = addClip(EditClip::instance().stillPath());
        const QSignalSpy changed(&*project, &Project::clipChanged);
        const QSignalSpy moved(&*project, &Project::clipMoved);
        const QSignalSpy removed(&*project, &Project::clipRemoved);
        const QSignalSpy added(&*project, &Project::clipAdded);
        first->clip()->effects()->add(ZkStudioEffect::plainCutout());
        second->clip()->effects()->add(ZkStudioEffect::plainCutout());
        first->clip()->effects()->effectAt(0)->setEnabled(false);
        QVERIFY(project->moveClip(0, 1));
        QVERIFY(!project->removeMedia(first->mediaId()));
        QVERIFY(project->removeClip(1) && project->removeMedia(first->mediaId()));
        QCOMPARE(changed.count(), 3);
        const auto state = [&] {
            QString text = QString::number(project->media().size());
            for (int i = 0; i < project->clipCount(); ++i) {
                const IZkEffectList *effects = project->clipAt(i)->clip()->effects();
                text += project->clipAt(i) == first ? QStringLiteral(" first")
                                                    : QStringLiteral(" other");
                if (effects->count() > 0)
                    text += effects->effectAt(0)->isEnabled() ? QLatin1Char('+') : QLatin1Char('-');
            }
            return text;
        };
        const QStringList states =
            QStringLiteral("0|1|1 first|2 first|2 first other|2 first+ other|"
                           "2 first+ other+|2 first- other+|"
                           "2 other+ first-|2 other+|1 other+")
                .split(QLatin1Char('|'));
        const QStringList texts =
            QStringLiteral("Import media|Add clip|Import media|Add clip|Add effect|Add effect|"
                           "Disable effect|Move clip|Remove clip|Remove media")
                .split(QLatin1Char('|'));
        for (int i = texts.size(); i > 0; --i) {
            QCOMPARE(state(), states.at(i));
            QCOMPARE(project->undoRedoService()->undoText(), texts.at(i - 1));
            QVERIFY(project->undoRedoService()->undo());
        }
        QCOMPARE(state(), states.at(0));
        QVERIFY(!project->isDirty() && !project->currentClip());
        for (int i = 1; i < states.size(); ++i) {
            QVERIFY(project->undoRedoService()->redo());
            QCOMPARE(state(), states.at(i));
        }
        QCOMPARE(moved.count(), 3);
        QCOMPARE(removed.count(), 1 + 2 + 1);
        QCOMPARE(added.count(), 1 + 2);

        // Somebody who steps a clip's own history makes the project's begin anew.
        save();
        QVERIFY(second->timeline()->undoRedoService()->undo());
        QVERIFY(!project->undoRedoService()->canUndo() && !project->undoRedoService()->canRedo());
        QVERIFY(project->isDirty());
    }

    void knowsWhatIsSaved()
    {
        QTemporaryDir library;
        LibrarySettings settings;
        settings.directory = library.path();
        ZkStudioProjectManager manager(settings);
        Project mine(&manager);
        QSignalSpy dirty(&mine, &Project::dirtyChanged);
        QSignalSpy paths(&mine, &Project::pathChanged);
        QSignalSpy finished(&mine, &Project::savingFinished);
        QVERIFY(manager.isNewProject() && mine.id() == manager.projectId());
        const qint64 media = mine.importMedia(EditClip::instance().path(), &error);
        QVERIFY(mine.isDirty());
        QVERIFY(mine.startSaving(file) && !mine.startSaving(file));
        mine.addClip(media); // while it is being saved
        QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, 10000);
        QVERIFY(mine.isDirty() && !manager.isNewProject());
        QCOMPARE(paths.takeFirst().at(0).toString(), file);
        QVERIFY(mine.undoRedoService()->undo());
        QVERIFY(!mine.isDirty()); // that is what was saved
        QVERIFY(mine.undoRedoService()->redo());
        QVERIFY(mine.save(file, &error) && !mine.isDirty());
        mine.undoRedoService()->clearHistory();
        QVERIFY(!mine.isDirty());
        mine.markModified();
        QVERIFY(mine.isDirty());
        QCOMPARE(dirty.count(), 5);

        QVERIFY(mine.startSaving(folder->filePath(QStringLiteral("gone/film.zkproj"))));
        mine.waitForSaving();
        QCOMPARE(finished.last().at(0).toBool(), false);
        QVERIFY(finished.last().at(1).toString().contains(QLatin1String("gone")));
        QVERIFY(mine.isDirty() && mine.path() == file);

        const QString id = mine.id();
        mine.startNew();
        QVERIFY(mine.path().isEmpty() && mine.clipCount() == 0 && !mine.isDirty());
        QVERIFY(mine.id() != id && manager.isNewProject() && manager.projectId() == mine.id());
        QVERIFY(mine.open(file, &error));
        QVERIFY(manager.projectId() == id && !manager.isNewProject());
    }

    void staysAsItIsWhenOpeningFails()
    {
        ProjectClip *clip = addClip(EditClip::instance().path());
        save();
        zk::storage::ProjectRecord record;
        zk::storage::ProjectStore::load(file, &record, &error);
        record.clips[0].mattes.fill({QSize(10, 10), QRect(), 0, QByteArray()},
                                    int(record.clips[0].frameCount));
        const QString bad = folder->filePath(QStringLiteral("bad.zkproj"));
        QVERIFY(zk::storage::ProjectStore::save(bad, record, &error)); // of another size
        const QSignalSpy reset(&*project, &Project::aboutToReset);
        QVERIFY(!project->open(bad, &error));
        QVERIFY2(error.contains(QLatin1String("bad.zkproj")), qPrintable(error));
        QVERIFY(!project->open(folder->filePath(QStringLiteral("none.zkproj")), &error));
        QCOMPARE(project->clipAt(0), clip);
        QCOMPARE(reset.count(), 0);
    }

    void findsItsMediaAgain()
    {
        const QString media = copyOfClip(QStringLiteral("one/media/clip.mkv"));
        file = folder->filePath(QStringLiteral("one/film.zkproj"));
        ProjectClip *clip = addClip(media);
        clip->clip()->effects()->add(ZkStudioEffect::plainCutout());
        save();
        const auto stateAfterOpening = [this] {
            return project->open(file, &error) ? project->media().first().state
                                               : MediaEntry::State(-1);
        };
        // With its folder.
        QVERIFY(QDir(folder->path()).rename(QStringLiteral("one"), QStringLiteral("two")));
        file = folder->filePath(QStringLiteral("two/film.zkproj"));
        QCOMPARE(stateAfterOpening(), MediaEntry::State::Present);
        const QString moved = folder->filePath(QStringLiteral("two/media/clip.mkv"));
        QCOMPARE(project->clipAt(0)->clip()->media().path, moved);
        // Written to, with pictures that fit.
        const zk::media::SampleClip longer({EditClip::size, EditClip::frames + 1, 24});
        QVERIFY(longer.write(moved, QString(), &error));
        QCOMPARE(stateAfterOpening(), MediaEntry::State::Changed);

        QVERIFY(!project->clipAt(0)->isOffline());
        QVERIFY(project->media().first().problem.contains(QLatin1String("changed")));
        // With others.
        QVERIFY(QFile::remove(moved) && QFile::copy(EditClip::instance().stillPath(), moved));
        QCOMPARE(stateAfterOpening(), MediaEntry::State::Missing);
        QVERIFY2(project->media().first().problem.contains(QLatin1String("frames")),
                 qPrintable(project->media().first().problem));
        // Gone.
        QVERIFY(QFile::remove(moved));
        QCOMPARE(stateAfterOpening(), MediaEntry::State::Missing);
        QCOMPARE(project->missingMedia(), QVector<qint64> {project->media().first().id});
        QVERIFY(project->clipAt(0)->isOffline() && !project->isDirty());
        QCOMPARE(project->clipAt(0)->clip()->effects()->count(), 1);
        QVERIFY(!ClipWorkspace(project->clipAt(0)).isOpen);
        QVERIFY(
            FrameRenderer().source(RenderSnapshot(*project->clipAt(0)->timeline()), 0).isNull());

        const qint64 id = project->media().first().id;
        QVERIFY(!project->relinkMedia(id, EditClip::instance().stillPath(), &error));
        QVERIFY2(error.contains(QLatin1String("still.png")), qPrintable(error));
        const QSignalSpy relinked(&*project, &Project::clipChanged);
        QVERIFY2(project->relinkMedia(id, EditClip::instance().path(), &error), qPrintable(error));
        QVERIFY(!project->clipAt(0)->isOffline() && project->missingMedia().isEmpty());
        QVERIFY(project->isDirty() && relinked.count() == 1);
        QVERIFY(ClipWorkspace(project->clipAt(0)).isOpen);

        copyOfClip(QStringLiteral("two/media/clip.mkv"));
        QVERIFY(project->open(file, &error) && project->missingMedia().isEmpty());
        QVERIFY(QFile::remove(moved));
        project->checkMedia();
        QVERIFY(project->clipAt(0)->isOffline());
    }

private:
    ProjectClip *addClip(const QString &path)
    {
        return project->addClip(project->importMedia(path, &error));
    }
    void save() { QVERIFY2(project->save(file, &error), qPrintable(error)); }
    QString copyOfClip(const QString &name)
    {
        const QString path = folder->filePath(name);
        QDir().mkpath(QFileInfo(path).absolutePath());
        if (!QFile::copy(EditClip::instance().path(), path))
            qFatal("the test clip cannot be copied");
        return path;
    }

    std::optional<QTemporaryDir> folder;
    std::optional<Project> project;
    QString file;
    QString error;
};

ZK_TEST_MAIN(ZkProjectTest)
#include "ZkProjectTest.moc"
