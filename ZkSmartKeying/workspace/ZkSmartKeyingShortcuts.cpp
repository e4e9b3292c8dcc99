#include "ZkSmartKeyingShortcuts.h"

#include <QKeySequence>
#include <QShortcut>
#include <QVariant>
#include <QWidget>

namespace {

const struct
{
    int id;
    const char *key;
} Keys[] = {
    {ZKSHORTCUT::Undo, "Ctrl+Z"},
    {ZKSHORTCUT::Redo, "Ctrl+Y"},
    {ZKSHORTCUT::RemoveNode, "Del"},
    {ZKSHORTCUT::PlayOrPause, "Space"},
    {ZKSHORTCUT::StopAndReturn, "Ctrl+/"},
    {ZKSHORTCUT::PreviousFrame, "Left"},
    {ZKSHORTCUT::NextFrame, "Right"},
    {ZKSHORTCUT::ZoomTimelineIn, "Ctrl+="},
    {ZKSHORTCUT::ZoomTimelineOut, "Ctrl+-"},
    {ZKSHORTCUT::FitTimeline, "Shift+Z"},
    {ZKSHORTCUT::KeepMask, "W"},
    {ZKSHORTCUT::RemoveMask, "M"},
    {ZKSHORTCUT::EraseMask, "E"},
    {ZKSHORTCUT::PanFrame, "H"},
    {ZKSHORTCUT::FitFrame, "Ctrl+Shift+F"},
};

} // namespace

QString zkShortcutText(int id)
{
    for (const auto &entry : Keys) {
        if (entry.id == id)
            return QString::fromLatin1(entry.key);
    }
    return QString();
}

QShortcut *
zkAddShortcut(QWidget *owner, int id, const QObject *receiver, const std::function<void()> &action)
{
    auto *const shortcut = new QShortcut(QKeySequence(zkShortcutText(id)), owner);
    shortcut->setContext(Qt::WindowShortcut);
    QObject::connect(shortcut, &QShortcut::activated, receiver, action);
    return shortcut;
}

void zkSetToolTip(QWidget *widget, const QString &text, int shortcutId)
{
    const QString key = zkShortcutText(shortcutId);
    widget->setProperty("WITH_SHORTCUT", true);
    widget->setToolTip(key.isEmpty() ? text : QStringLiteral("%1 (%2)").arg(text, key));
    widget->setAccessibleName(text);
}
