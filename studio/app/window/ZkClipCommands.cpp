#include "ZkClipCommands.h"

#include "ZkClipList.h"
#include "ZkEditorPage.h"
#include "ZkMediaBin.h"
#include "ZkPreferences.h"
#include "ZkPrompts.h"
#include "ZkWindowActions.h"

#include "project/ZkProject.h"
#include "timeline/ZkStudioTimeline.h"
#include "tracking/ZkApplyStep.h"

#include <QAction>
#include <QFileDialog>
#include <QFileInfo>

namespace zk::app {

using datamodel::MediaEntry;
using datamodel::Project;
using datamodel::ProjectClip;

ClipCommands::ClipCommands(Project *project,
                           const WindowActions &actions,
                           EditorPage *page,
                           QWidget *window)
    : m_project(project)
    , m_actions(actions)
    , m_page(page)
    , m_window(window)
{
    connectActions();
    connect(&m_importer, &MediaImporter::finished, this, &ClipCommands::onImported);
    connect(page->mediaBin(), &MediaBin::currentChanged, this, &ClipCommands::refresh);
    connect(page->mediaBin(), &MediaBin::activated, this, [this](qint64 media) {
        m_project->setCurrentClip(m_project->addClip(media));
    });
    connect(page->clipList(), &ClipList::filesDropped, this, [this](const auto &files, int row) {
        import({files, row});
    });
    connect(project, &Project::undoRedoChanged, this, &ClipCommands::refresh);
    connect(project, &Project::currentClipChanged, this, &ClipCommands::refresh);
    connect(project, &Project::clipChanged, this, &ClipCommands::refresh);
    connect(project, &Project::mediaChanged, this, &ClipCommands::refresh);
    connect(project, &Project::reset, this, &ClipCommands::refresh);
    refresh();
}

void ClipCommands::connectActions()
{
    const auto on = [this](ActionId id, auto function) {
        connect(m_actions.action(id), &QAction::triggered, this, function);
    };
    on(ActionId::ImportMedia, [this] { chooseFiles(); });
    on(ActionId::AddToClips, [this] {
        m_project->setCurrentClip(m_project->addClip(m_page->mediaBin()->currentMedia()));
    });
    on(ActionId::RemoveMedia, [this] { removeMedia(); });
    on(ActionId::RelinkMedia, [this] { relink(m_page->mediaBin()->currentMedia()); });
    on(ActionId::RelinkClip, [this] {
        if (const ProjectClip *clip = m_project->currentClip())
            relink(clip->mediaId());
    });
    on(ActionId::RemoveClip, [this] { removeClip(); });
    on(ActionId::MoveEarlier, [this] { moveClip(-1); });
    on(ActionId::MoveLater, [this] { moveClip(1); });
    on(ActionId::RemoveCutout, [this] { removeCutout(); });
}

void ClipCommands::refresh()
{
    const ProjectClip *clip = m_project->currentClip();
    const int index = m_project->indexOf(clip);
    const qint64 media = m_page->mediaBin()->currentMedia();
    const MediaEntry *entry = m_project->findMedia(media);
    const auto enable = [this](ActionId id, bool enabled) {
        m_actions.action(id)->setEnabled(enabled);
    };
    enable(ActionId::SmartCutout, clip && !clip->isOffline());
    enable(ActionId::AIErase, clip && !clip->isOffline());
    enable(ActionId::RemoveCutout, clip && clip->isCutOut());
    enable(ActionId::ExportVideo, clip && !clip->isOffline());
    enable(ActionId::RelinkClip, clip);
    enable(ActionId::RemoveClip, clip);
    enable(ActionId::MoveEarlier, index > 0);
    enable(ActionId::MoveLater, clip && index < m_project->clipCount() - 1);
    enable(ActionId::AddToClips, entry && !entry->isMissing());
    enable(ActionId::RelinkMedia, entry);
    enable(ActionId::RemoveMedia, entry);
    for (const ActionId id : {ActionId::PlayPause,
                              ActionId::Stop,
                              ActionId::PreviousFrame,
                              ActionId::NextFrame,
                              ActionId::FirstFrame,
                              ActionId::LastFrame,
                              ActionId::FitPicture,
                              ActionId::FitTimeline,
                              ActionId::ZoomInTimeline,
                              ActionId::ZoomOutTimeline})
        enable(id, clip && !clip->isOffline());
}

void ClipCommands::chooseFiles()
{
    const QStringList files = QFileDialog::getOpenFileNames(
        m_window,
        tr("Import Media"),
        Preferences::folder(Preferences::MediaFolder),
        tr("Videos and pictures (*.mp4 *.mov *.mkv *.webm *.avi *.m4v "
           "*.mpg *.gif *.png *.jpg *.jpeg *.bmp *.webp)")
            + QLatin1String(";;") + tr("All files (*)"));
    if (files.isEmpty())
        return;
    Preferences::rememberFolderOf(Preferences::MediaFolder, files.first());
    // Whoever imports into an empty project wants to see it, not only to have it.
    const bool isFirst = m_project->clipCount() == 0;
    import({files, isFirst ? ImportRequest::atEnd : ImportRequest::noClips});
}

void ClipCommands::import(const ImportRequest &request)
{
    m_importer.start(request);
}

void ClipCommands::onImported(const ImportResult &result)
{
    if (!result.entries.isEmpty())
        take(result);
    if (result.failures.isEmpty())
        return;
    // The others who hear of the end come before the box.
    QMetaObject::invokeMethod(
        this,
        [this, failures = result.failures] { reportFailures(failures); },
        Qt::QueuedConnection);
}

void ClipCommands::reportFailures(const QStringList &failures)
{
    warnUser(m_window,
             tr("%n file(s) could not be imported", nullptr, failures.size()),
             QString(),
             failures);
}

void ClipCommands::take(const ImportResult &result)
{
    ProjectClip *first = nullptr;
    {
        const ZkUndoRedoCommander step(m_project->undoRedoService(),
                                       tr("Import %n file(s)", nullptr, result.entries.size()),
                                       QStringLiteral("ClipCommands"));
        int place = result.clipIndex;
        for (const MediaEntry &entry : result.entries) {
            const qint64 media = m_project->importMedia(entry);
            if (place == ImportRequest::noClips)
                continue;
            ProjectClip *clip = m_project->addClip(media, place);
            first = first ? first : clip;
            place += place >= 0 ? 1 : 0;
        }
    }
    if (first)
        m_project->setCurrentClip(first);
}

void ClipCommands::removeMedia()
{
    const qint64 media = m_page->mediaBin()->currentMedia();
    if (m_project->isMediaUsed(media))
        warnUser(m_window, tr("The file is in use"), tr("Remove the clips that use it first."));
    else
        m_project->removeMedia(media);
}

void ClipCommands::removeClip()
{
    m_project->removeClip(m_project->indexOf(m_project->currentClip()));
}

void ClipCommands::moveClip(int places)
{
    const int index = m_project->indexOf(m_project->currentClip());
    m_project->moveClip(index, index + places);
}

void ClipCommands::relink(qint64 media)
{
    const MediaEntry *entry = m_project->findMedia(media);
    if (!entry)
        return;
    const QString name = QFileInfo(entry->info.path).fileName();
    const QString path = QFileDialog::getOpenFileName(
        m_window, tr("Where is %1?").arg(name), Preferences::folder(Preferences::MediaFolder));
    if (path.isEmpty())
        return;
    Preferences::rememberFolderOf(Preferences::MediaFolder, path);
    QString error;
    if (!m_project->relinkMedia(media, path, &error))
        warnUser(m_window, tr("The file cannot stand in for %1").arg(name), error);
}

void ClipCommands::removeCutout()
{
    if (const ProjectClip *clip = m_project->currentClip())
        datamodel::removeCutout(clip->clip(), tr("Remove cutout"));
}

} // namespace zk::app
