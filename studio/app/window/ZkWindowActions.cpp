#include "ZkWindowActions.h"

#include "ZkFormat.h"

#include "ZkWidgets.h"

#include <QAction>
#include <QWidget>

namespace zk::app {

namespace {

enum Scope {
    Window, // always there
    Editor, // not while the workspace is open
    List, // the key works in the list that has it alone
    Undoing, // follows the workspace, which has the key
    Naming, // always there, with a text that changes
};

struct Command
{
    ActionId id;
    const char *name; // of the object
    const char *icon;
    const char *text;
    const char *key;
    Scope scope;
};

// clang-format off
const Command commands[] = {
    {ActionId::NewProject, "NewProject", "new", QT_TRANSLATE_NOOP("zk::app::WindowActions", "&New Project"), "Ctrl+N", Window},
    {ActionId::OpenProject, "OpenProject", "open", QT_TRANSLATE_NOOP("zk::app::WindowActions", "&Open Project..."), "Ctrl+O", Window},
    {ActionId::SaveProject, "SaveProject", "save", QT_TRANSLATE_NOOP("zk::app::WindowActions", "&Save"), "Ctrl+S", Window},
    {ActionId::SaveProjectAs, "SaveProjectAs", "", QT_TRANSLATE_NOOP("zk::app::WindowActions", "Save &As..."), "Ctrl+Shift+S", Window},
    {ActionId::ImportMedia, "ImportMedia", "import", QT_TRANSLATE_NOOP("zk::app::WindowActions", "&Import Media..."), "Ctrl+I", Editor},
    {ActionId::ExportVideo, "ExportVideo", "export", QT_TRANSLATE_NOOP("zk::app::WindowActions", "&Export..."), "Ctrl+E", Editor},
    {ActionId::Settings, "Settings", "settings", QT_TRANSLATE_NOOP("zk::app::WindowActions", "Se&ttings..."), "Ctrl+,", Window},
    {ActionId::Account, "Account", "", "", "", Naming},
    {ActionId::Quit, "Quit", "", QT_TRANSLATE_NOOP("zk::app::WindowActions", "&Quit"), "Ctrl+Q", Window},
    {ActionId::Undo, "Undo", "undo", QT_TRANSLATE_NOOP("zk::app::WindowActions", "Undo"), "Ctrl+Z", Undoing},
    {ActionId::Redo, "Redo", "redo", QT_TRANSLATE_NOOP("zk::app::WindowActions", "Redo"), "Ctrl+Y", Undoing},
    {ActionId::SmartCutout, "SmartCutout", "cutout", QT_TRANSLATE_NOOP("zk::app::WindowActions", "Smart &Cutout"), "Ctrl+K", Editor},
    {ActionId::RemoveCutout, "RemoveCutout", "", QT_TRANSLATE_NOOP("zk::app::WindowActions", "Remove C&utout"), "", Editor},
    {ActionId::AIErase, "AIErase", "erase_object", QT_TRANSLATE_NOOP("zk::app::WindowActions", "AI &Erase"), "Ctrl+J", Editor},
    {ActionId::RelinkClip, "RelinkClip", "", QT_TRANSLATE_NOOP("zk::app::WindowActions", "Re&link..."), "", Editor},
    {ActionId::RelinkMedia, "RelinkMedia", "", QT_TRANSLATE_NOOP("zk::app::WindowActions", "Re&link..."), "", Editor},
    {ActionId::AddToClips, "AddToClips", "", QT_TRANSLATE_NOOP("zk::app::WindowActions", "&Add to Clips"), "", Editor},
    {ActionId::RemoveMedia, "RemoveMedia", "delete", QT_TRANSLATE_NOOP("zk::app::WindowActions", "Remove from Media"), "Del", List},
    {ActionId::RemoveClip, "RemoveClip", "delete", QT_TRANSLATE_NOOP("zk::app::WindowActions", "&Remove Clip"), "Del", List},
    {ActionId::MoveEarlier, "MoveEarlier", "", QT_TRANSLATE_NOOP("zk::app::WindowActions", "Move Clip to the Left"), "Alt+Left", List},
    {ActionId::MoveLater, "MoveLater", "", QT_TRANSLATE_NOOP("zk::app::WindowActions", "Move Clip to the Right"), "Alt+Right", List},
    {ActionId::PlayPause, "PlayPause", "play", QT_TRANSLATE_NOOP("zk::app::WindowActions", "&Play or Pause"), "Space", Editor},
    {ActionId::Stop, "Stop", "stop", QT_TRANSLATE_NOOP("zk::app::WindowActions", "S&top and Go Back"), "Ctrl+/", Editor},
    {ActionId::PreviousFrame, "PreviousFrame", "frame_back", QT_TRANSLATE_NOOP("zk::app::WindowActions", "P&revious Frame"), "Left", Editor},
    {ActionId::NextFrame, "NextFrame", "frame_forward", QT_TRANSLATE_NOOP("zk::app::WindowActions", "&Next Frame"), "Right", Editor},
    {ActionId::FirstFrame, "FirstFrame", "", QT_TRANSLATE_NOOP("zk::app::WindowActions", "F&irst Frame"), "Home", Editor},
    {ActionId::LastFrame, "LastFrame", "", QT_TRANSLATE_NOOP("zk::app::WindowActions", "&Last Frame"), "End", Editor},
    {ActionId::FitPicture, "FitPicture", "", QT_TRANSLATE_NOOP("zk::app::WindowActions", "&Fit Picture"), "Ctrl+Shift+F", Editor},
    {ActionId::FitTimeline, "FitTimeline", "fit_timeline", QT_TRANSLATE_NOOP("zk::app::WindowActions", "Fit Ti&meline"), "Shift+Z", Editor},
    {ActionId::ZoomInTimeline, "ZoomInTimeline", "zoom_in", QT_TRANSLATE_NOOP("zk::app::WindowActions", "Zoom &In Timeline"), "Ctrl+=", Editor},
    {ActionId::ZoomOutTimeline, "ZoomOutTimeline", "zoom_out", QT_TRANSLATE_NOOP("zk::app::WindowActions", "Zoom &Out Timeline"), "Ctrl+-", Editor},
    {ActionId::ShowMedia, "ShowMedia", "", QT_TRANSLATE_NOOP("zk::app::WindowActions", "&Media"), "", Editor},
    {ActionId::ShowProperties, "ShowProperties", "", QT_TRANSLATE_NOOP("zk::app::WindowActions", "&Properties"), "", Editor},
    {ActionId::ShowTimeline, "ShowTimeline", "", QT_TRANSLATE_NOOP("zk::app::WindowActions", "&Timeline"), "", Editor},
    {ActionId::FullScreen, "FullScreen", "", QT_TRANSLATE_NOOP("zk::app::WindowActions", "F&ull Screen"), "F11", Window},
    {ActionId::ResetLayout, "ResetLayout", "", QT_TRANSLATE_NOOP("zk::app::WindowActions", "&Reset Layout"), "", Editor},
    {ActionId::Shortcuts, "Shortcuts", "", QT_TRANSLATE_NOOP("zk::app::WindowActions", "&Keyboard Shortcuts"), "F1", Window},
    {ActionId::About, "About", "info", QT_TRANSLATE_NOOP("zk::app::WindowActions", "&About ZkStudio"), "", Window},
};
// clang-format on

QKeySequence keyOf(const Command &command)
{
    return QKeySequence(QLatin1String(command.key), QKeySequence::PortableText);
}

QString textOf(const QKeySequence &key)
{
    return key.toString(QKeySequence::NativeText);
}

QString nameOf(const Command &command)
{
    return withoutMnemonic(WindowActions::tr(command.text)).remove(QLatin1String("..."));
}

bool isKeptInWorkspace(const Command &command)
{
    return command.scope == Window || command.scope == Undoing || command.scope == Naming;
}

} // namespace

WindowActions::WindowActions(QWidget *window)
    : QObject(window)
{
    for (const Command &command : commands) {
        auto *action = new QAction(this);
        action->setObjectName(QStringLiteral("Action_") + QLatin1String(command.name));
        action->setShortcut(keyOf(command));
        if (*command.icon)
            action->setIcon(ZkSkinManager::instance()->icon(QLatin1String(command.icon)));
        if (command.scope == List)
            action->setShortcutContext(Qt::WidgetShortcut);
        else
            window->addAction(action);
        m_actions.insert(int(command.id), action);
    }
    for (const ActionId id : {ActionId::ShowMedia,
                              ActionId::ShowProperties,
                              ActionId::ShowTimeline,
                              ActionId::FullScreen})
        action(id)->setCheckable(true);
    action(ActionId::About)->setMenuRole(QAction::AboutRole);
    action(ActionId::Quit)->setMenuRole(QAction::QuitRole);
    action(ActionId::Settings)->setMenuRole(QAction::PreferencesRole);
    retranslate();
}

void WindowActions::retranslate()
{
    for (const Command &command : commands) {
        QAction *action = m_actions.value(int(command.id));
        if (command.scope != Undoing && command.scope != Naming)
            action->setText(tr(command.text));
        const QString key = textOf(keyOf(command));
        const QString plain = nameOf(command);
        action->setToolTip(key.isEmpty() ? plain : QStringLiteral("%1 (%2)").arg(plain, key));
    }
}

void WindowActions::setWorkspaceOpen(bool open)
{
    for (const Command &command : commands) {
        QAction *action = m_actions.value(int(command.id));
        if (command.scope == Undoing)
            action->setShortcut(open ? QKeySequence() : keyOf(command));
        else if (!isKeptInWorkspace(command))
            action->setEnabled(!open);
    }
}

QVector<WindowActions::Key> WindowActions::keys() const
{
    QVector<Key> keys;
    for (const Command &command : commands) {
        if (*command.key)
            keys.append({nameOf(command), textOf(keyOf(command))});
    }
    return keys;
}

} // namespace zk::app
