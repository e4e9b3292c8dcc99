// What the editor is started with.
#pragma once

#include <QString>
#include <QUrl>

namespace zk::app {

struct EditorConfig
{
    QString libraryFolder; // of the presets; empty: the user's
    QString autosaveFolder; // empty: the user's
    QUrl presetServer; // empty: none
    QString eraser; // program that has the command erase-worker; empty: the one that runs
};

} // namespace zk::app
