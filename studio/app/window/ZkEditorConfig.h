// What the editor is started with.
#pragma once

#include "ZkModelFile.h"

#include <QString>
#include <QUrl>
#include <QVector>

namespace zk::app {

struct EditorConfig
{
    QString libraryFolder; // of the presets; empty: the user's
    QString autosaveFolder; // empty: the user's
    QUrl presetServer; // empty: none
    QVector<models::ModelFile> models; // networks that take the place of those in the settings
    QString eraser; // program that has the command erase-worker; empty: the one that runs
};

} // namespace zk::app
