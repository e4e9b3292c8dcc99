#include "ZkPresetNames.h"

#include <QCoreApplication>

namespace zk::app {

// Never read: they are here for translators.
[[maybe_unused]] static const char *const names[] = {
    QT_TRANSLATE_NOOP("Preset", "Background"),      QT_TRANSLATE_NOOP("Preset", "Border"),
    QT_TRANSLATE_NOOP("Preset", "Light"),           QT_TRANSLATE_NOOP("Preset", "Shadow"),
    QT_TRANSLATE_NOOP("Preset", "Style"),           QT_TRANSLATE_NOOP("Preset", "Aura"),
    QT_TRANSLATE_NOOP("Preset", "Chalk Doodle"),    QT_TRANSLATE_NOOP("Preset", "Colour Pop"),
    QT_TRANSLATE_NOOP("Preset", "Comic"),           QT_TRANSLATE_NOOP("Preset", "Dashed Border"),
    QT_TRANSLATE_NOOP("Preset", "Double Border"),   QT_TRANSLATE_NOOP("Preset", "Drop Shadow"),
    QT_TRANSLATE_NOOP("Preset", "Duotone"),         QT_TRANSLATE_NOOP("Preset", "Ghost Trail"),
    QT_TRANSLATE_NOOP("Preset", "Glitch"),          QT_TRANSLATE_NOOP("Preset", "Glow"),
    QT_TRANSLATE_NOOP("Preset", "Gradient Border"), QT_TRANSLATE_NOOP("Preset", "Neon"),
    QT_TRANSLATE_NOOP("Preset", "Neon Pulse"),      QT_TRANSLATE_NOOP("Preset", "Retro Offset"),
    QT_TRANSLATE_NOOP("Preset", "Shockwave"),       QT_TRANSLATE_NOOP("Preset", "Sketch Border"),
    QT_TRANSLATE_NOOP("Preset", "Solid Border"),    QT_TRANSLATE_NOOP("Preset", "Spotlight"),
    QT_TRANSLATE_NOOP("Preset", "Sticker"),         QT_TRANSLATE_NOOP("Preset", "Sunset Border"),
};

QString presetName(const QString &name)
{
    return QCoreApplication::translate("Preset", name.toUtf8().constData());
}

} // namespace zk::app
