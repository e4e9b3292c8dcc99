// Private to this folder.
#pragma once

#include <QString>

#include <memory>

namespace zk::media {

// The hidden name beside a target under which an output grows: ".NAME.part-PID-N.SUFFIX". It is removed
// unless it has taken the target's place; what a killed process leaves is known by its PID.
class PartFile
{
public:
    // Null, with a sentence for the user, when nothing can be created beside the target.
    static std::unique_ptr<PartFile> createFile(const QString &target, QString *error);
    // The part is a folder.
    static std::unique_ptr<PartFile> createFolder(const QString &target, QString *error);
    // Deletes the target's parts whose process is gone.
    static void removeStale(const QString &targetPath);
    ~PartFile();
    PartFile(const PartFile &) = delete;
    PartFile &operator=(const PartFile &) = delete;

    const QString &path() const { return m_path; }
    // Puts the part in the target's place, whatever file is there.
    bool commit(QString *error);

private:
    explicit PartFile(const QString &target);
    static std::unique_ptr<PartFile> create(const QString &target, bool isFolder, QString *error);

    QString m_target;
    QString m_path;
};

// Renames over an existing file, or to a name that is free, in one step.
bool moveIntoPlace(const QString &from, const QString &to, QString *error);

} // namespace zk::media
