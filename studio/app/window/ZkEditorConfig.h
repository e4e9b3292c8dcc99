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
};

} // namespace zk::app
