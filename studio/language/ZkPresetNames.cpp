#include "ZkPresetNames.h"

#include <QCoreApplication>

namespace zk::app {

// Never read: they are here for translators.
[[maybe_unused]] static const char *const names[] = {
    QT_TRANSLATE_NOOP("presets", "Background"),      QT_TRANSLATE_NOOP("presets", "Border"),
    QT_TRANSLATE_NOOP("presets", "Light"),           QT_TRANSLATE_NOOP("presets", "Shadow"),
    QT_TRANSLATE_NOOP("presets", "Style"),           QT_TRANSLATE_NOOP("presets", "Aura"),
    QT_TRANSLATE_NOOP("presets", "Chalk Doodle"),    QT_TRANSLATE_NOOP("presets", "Colour Pop"),
    QT_TRANSLATE_NOOP("presets", "Comic"),           QT_TRANSLATE_NOOP("presets", "Dashed Border"),
    QT_TRANSLATE_NOOP("presets", "Double Border"),   QT_TRANSLATE_NOOP("presets", "Drop Shadow"),
    QT_TRANSLATE_NOOP("presets", "Duotone"),         QT_TRANSLATE_NOOP("presets", "Ghost Trail"),
    QT_TRANSLATE_NOOP("presets", "Glitch"),          QT_TRANSLATE_NOOP("presets", "Glow"),
    QT_TRANSLATE_NOOP("presets", "Gradient Border"), QT_TRANSLATE_NOOP("presets", "Neon"),
    QT_TRANSLATE_NOOP("presets", "Neon Pulse"),      QT_TRANSLATE_NOOP("presets", "Retro Offset"),
    QT_TRANSLATE_NOOP("presets", "Shockwave"),       QT_TRANSLATE_NOOP("presets", "Sketch Border"),
    QT_TRANSLATE_NOOP("presets", "Solid Border"),    QT_TRANSLATE_NOOP("presets", "Spotlight"),
    QT_TRANSLATE_NOOP("presets", "Sticker"),         QT_TRANSLATE_NOOP("presets", "Sunset Border"),
};

QString presetName(const QString &name)
{
    return QCoreApplication::translate("presets", name.toUtf8().constData());
}

} // namespace zk::app
