// What an erase task is to do.
#pragma once

#include "ZkErasingGlobal.h"

#include "ZkMediaInfo.h"
#include "ZkMediaWriter.h"
#include "segmentation/ZkEncodedMatte.h"

#include <QString>
#include <QVector>

namespace zk::erasing {

// By which it is noticed that a file has become another one.
struct ZKERASING_EXPORT Fingerprint
{
    qint64 size = -1; // bytes; -1: there is no file
    qint64 modified = 0; // ms since 1970, UTC

    static Fingerprint of(const QString &path);
    bool isMissing() const { return size < 0; }

    friend bool operator==(const Fingerprint &a, const Fingerprint &b)
    {
        return a.size == b.size && a.modified == b.modified;
    }
    friend bool operator!=(const Fingerprint &a, const Fingerprint &b) { return !(a == b); }
};

// What a task failed of.
enum class EraseCause {
    None,
    Source, // the media file
    Output, // it cannot be written
    Worker, // the process that erases
};

// The file that is made.
struct ZKERASING_EXPORT EraseOutput
{
    QString path;
    bool isPicture = false; // a single one; its suffix says of what kind
    media::OutputFormat format = media::OutputFormat::H264Mkv; // of anything else

    // By the path's suffix: those of exports and, for one frame, .png and .jpg. False, with a sentence
    // for the user, for any other.
    static bool
    forPath(const QString &path, qint64 frameCount, EraseOutput *output, QString *error);
    // For a clip that is edited on. The path comes without a suffix: this adds the one that suits.
    static EraseOutput forEditing(const QString &pathWithoutSuffix, const media::MediaInfo &source);
};

struct ZKERASING_EXPORT EraseJob
{
    QString mediaPath;
    Fingerprint fingerprint; // of that file when the masks were made
    qint64 inFrame = 0; // frame of the file that the first mask belongs to
    // What is erased, one for each frame of the result; a frame with "no mask" stays as it is.
    QVector<datamodel::EncodedMatte> masks;
    EraseOutput output;
    QString modelPath; // of a network that makes up what no frame shows; empty: built in
    // Code of the language of messages, such as "de"; empty: that of the source texts.
    QString language;
};

// A job on its way to another process, which puts what it makes at that path: files in a folder.
bool saveJob(const EraseJob &job, const QString &resultPath, const QString &folder, QString *error);
// Without the masks, which maskFileIn() holds. False for files that saveJob() has not written.
bool loadJob(const QString &folder, EraseJob *job, QString *resultPath);
QString maskFileIn(const QString &folder);

// Why the media file is not the one any more that the masks were made for; empty when it is.
QString changeOf(const EraseJob &job);

} // namespace zk::erasing
