// What the user has set, kept from one start to the next.
#pragma once

#include "backend/ZkModelProblem.h"

#include <QString>

namespace zk::app {

// Reads and writes the user's settings at once. GUI thread only.
class Preferences
{
public:
    static int autosaveSeconds(); // 0: never
    static void setAutosaveSeconds(int seconds);

    // Initially not.
    static bool areAnalyticsAllowed();
    // Switches them on or off at once. False: they cannot be written; *error says why.
    static bool allowAnalytics(bool allowed, QString *error);
    static QString analyticsFile();

    // Network in place of the built-in engine; empty: none.
    static QString modelFile(engine::EngineRole role);
    static void setModelFile(engine::EngineRole role, const QString &path);

    enum Folder {
        ProjectFolder,
        MediaFolder,
        ExportFolder,
        ModelFolder,
    };
    // Where a file was chosen last; the user's own folder for such files at first.
    static QString folder(Folder folder);
    static void rememberFolderOf(Folder folder, const QString &file);
};

} // namespace zk::app
