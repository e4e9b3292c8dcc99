#pragma once

#include "ZkMediaGlobal.h"

#include <QString>

#include <memory>

namespace zk::media {

// A hidden folder beside a target in which somebody else, such as another process, makes the output.
// It goes, with all that is in it, with the object; one whose process was killed goes with the next
// output to that target.
class ZKMEDIA_EXPORT OutputFolder
{
public:
    // The target is a file or, "DIR/%05d.png", a sequence. Null, with a sentence for the user, when
    // nothing can be written there.
    static std::unique_ptr<OutputFolder> create(const QString &target, QString *error);
    ~OutputFolder();
    OutputFolder(const OutputFolder &) = delete;
    OutputFolder &operator=(const OutputFolder &) = delete;

    QString path() const;
    // Where the output is to be written: like the target's name, in this folder.
    QString outputPath() const;
    // Puts the output, which is complete, in the target's place, over what is there. A sequence has so
    // many pictures. False, with a sentence for the user, when that is not possible.
    bool place(qint64 frameCount, QString *error);

private:
    struct Private;
    explicit OutputFolder(std::unique_ptr<Private> d);

    const std::unique_ptr<Private> d;
};

} // namespace zk::media
