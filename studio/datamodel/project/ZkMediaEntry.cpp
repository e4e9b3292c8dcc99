#include "ZkMediaEntry.h"

#include "ZkMediaReader.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace zk::datamodel {

namespace {

class Texts
{
    Q_DECLARE_TR_FUNCTIONS(MediaEntry)

public:
    static QString isMissing(const QString &path)
    {
        return tr("%1 is missing.").arg(QDir::toNativeSeparators(path));
    }
    static QString hasChanged(const QString &path)
    {
        return tr("%1 was changed since the project was saved.")
            .arg(QDir::toNativeSeparators(path));
    }
    static QString doesNotFit(const QString &path, const QString &reason)
    {
        return tr("%1 cannot take the place of the file that was imported: %2")
            .arg(QDir::toNativeSeparators(path), reason);
    }
    static QString otherSize(const QSize &is, const QSize &was)
    {
        return tr("its pictures have %1 x %2 pixels instead of %3 x %4.")
            .arg(is.width())
            .arg(is.height())
            .arg(was.width())
            .arg(was.height());
    }
    static QString otherRate(double is, double was)
    {
        return tr("it has %1 frames per second instead of %2.")
            .arg(is, 0, 'g', 5)
            .arg(was, 0, 'g', 5);
    }
    static QString isShorter(qint64 is, qint64 was)
    {
        return tr("it has only %1 frames instead of %2.").arg(is).arg(was);
    }
};

void noteFile(MediaEntry *entry)
{
    const QFileInfo file(entry->info.path);
    entry->fileSize = file.size();
    entry->modified = file.lastModified().toUTC();
}

bool isTheSame(const MediaEntry &known, const QString &path)
{
    const QFileInfo file(path);
    // Some file systems keep whole seconds only.
    return file.isFile() && file.size() == known.fileSize
        && qAbs(file.lastModified().msecsTo(known.modified)) < 1000;
}

QString placeOf(const MediaEntry &known, const QStringList &places)
{
    for (const QString &place : places) {
        if (isTheSame(known, place))
            return place;
    }
    for (const QString &place : places) {
        if (QFileInfo(place).isFile())
            return place;
    }
    return QString();
}

MediaEntry missing(const MediaEntry &known, const QString &problem)
{
    MediaEntry entry = known;
    entry.state = MediaEntry::State::Missing;
    entry.problem = problem;
    return entry;
}

// A file of that name that was written to since.
MediaEntry examined(const MediaEntry &known, const QString &path)
{
    MediaEntry entry;
    QString problem;
    if (!probeMedia(path, &entry, &problem))
        return missing(known, problem);
    if (!fitsInPlaceOf(known, entry, &problem))
        return missing(known, Texts::doesNotFit(path, problem));
    entry.id = known.id;
    if (entry.fileSize != known.fileSize) {
        entry.state = MediaEntry::State::Changed;
        entry.problem = Texts::hasChanged(path);
    }
    return entry;
}

} // namespace

bool probeMedia(const QString &path, MediaEntry *entry, QString *error)
{
    zk::media::StillOptions oneFrame;
    oneFrame.frameCount = 1;
    const QString absolute = QFileInfo(path).absoluteFilePath();
    const auto reader = zk::media::MediaReader::open(absolute, error, oneFrame);
    if (!reader)
        return false;
    *entry = MediaEntry();
    entry->info = reader->info();
    entry->info.path = absolute;
    noteFile(entry);
    return true;
}

bool fitsInPlaceOf(const MediaEntry &old, const MediaEntry &other, QString *reason)
{
    const zk::media::MediaInfo &was = old.info;
    const zk::media::MediaInfo &is = other.info;
    QString text;
    if (is.size != was.size)
        text = Texts::otherSize(is.size, was.size);
    else if (qint64(is.frameRateNum) * was.frameRateDen
             != qint64(was.frameRateNum) * is.frameRateDen)
        text = Texts::otherRate(is.frameRate(), was.frameRate());
    else if (is.frameCount < was.frameCount)
        text = Texts::isShorter(is.frameCount, was.frameCount);
    if (reason)
        *reason = text;
    return text.isEmpty();
}

MediaEntry lookedUp(const MediaEntry &known, const QStringList &places)
{
    const QString place = placeOf(known, places);
    if (place.isEmpty())
        return missing(known, Texts::isMissing(known.info.path));
    if (!isTheSame(known, place))
        return examined(known, place);
    MediaEntry entry = known;
    entry.info.path = place;
    entry.state = MediaEntry::State::Present;
    entry.problem.clear();
    return entry;
}

} // namespace zk::datamodel
