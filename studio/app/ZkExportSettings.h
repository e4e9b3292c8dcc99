// What an export writes, and the formats that there are for it.
#pragma once

#include "ZkMediaWriter.h"

#include <QColor>
#include <QString>
#include <QStringList>
#include <QVector>

namespace zk::app {

// One line of a choice of formats.
struct ExportFormat
{
    media::OutputFormat format;
    QString suffix; // with the dot; of a picture sequence "/%05d.png", below a folder
    QString name; // for the user
    bool hasAlpha;
    bool hasAudio;
};
QVector<ExportFormat> exportFormats();

struct ExportSettings
{
    QStringList outputs; // the suffix of each picks its format
    bool matteOnly = false;
    // Under outputs without transparency: the picture, or else the colour (invalid: black).
    QColor backgroundColour;
    QString backgroundPicture;

    // A colour (#rrggbb or a name) or the path of a picture; false when it is neither.
    bool setBackground(const QString &text);
};

} // namespace zk::app
