// Project files: one SQLite database each.
#pragma once

#include "ZkProjectRecords.h"
#include "ZkStorageGlobal.h"

#include <QString>

namespace zk::storage {

// Pure file operations: any thread may call them. *error may be null; otherwise it gets a text for the
// user when the result is not a success.
class ZKSTORAGE_EXPORT ProjectStore
{
public:
    enum class OpenResult {
        Opened,
        Missing,
        Unreadable, // no permission, a folder, ...
        Foreign, // not a project
        Newer, // of a format that this program does not know
        Damaged,
    };

    // Of the files that this program writes. Every format keeps its number in SQLite's user_version
    // and the program's version in project.application, so that older programs can name both. Drafts
    // have tables and a fingerprint of their own, which programs that do not know them pass over.
    static constexpr int formatVersion = 1;

    // With the dot.
    static QString fileSuffix();

    // Writes a new file beside, checks it and puts it in place: complete, or the file is as it was,
    // whatever kills the program. The folder must exist. Two programs that write one file take turns.
    static bool save(const QString &path, const ProjectRecord &project, QString *error);
    // Never changes anything on disk. *project is untouched unless the result is Opened.
    static OpenResult load(const QString &path, ProjectRecord *project, QString *error);
    // Only what stands outside the lists, and as many empty clips as there are.
    static OpenResult loadSummary(const QString &path, ProjectRecord *project, QString *error);
};

} // namespace zk::storage
