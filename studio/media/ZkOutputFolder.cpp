#include "ZkOutputFolder.h"

#include "ZkMediaWriter.h"
#include "ZkPartFile.h"
#include "ZkSequenceWriter.h"

#include <QDir>
#include <QFileInfo>

namespace zk::media {

struct OutputFolder::Private
{
    QString target;
    bool isSequence = false;
    SequencePattern pattern;
    std::unique_ptr<PartFile> part;
};

OutputFolder::OutputFolder(std::unique_ptr<Private> data)
    : d(std::move(data))
{ }

OutputFolder::~OutputFolder() = default;

std::unique_ptr<OutputFolder> OutputFolder::create(const QString &target, QString *error)
{
    auto d = std::make_unique<Private>();
    d->target = target;
    d->isSequence = SequencePattern::parse(target, &d->pattern);
    const bool isFolderNew = d->isSequence && !QFileInfo(d->pattern.folder).isDir();
    removeStaleParts(target);
    d->part = PartFile::createFolder(isFolderNew ? d->pattern.folder : target, error);
    if (!d->part)
        return nullptr;
    return std::unique_ptr<OutputFolder>(new OutputFolder(std::move(d)));
}

QString OutputFolder::path() const
{
    return d->part->path();
}

QString OutputFolder::outputPath() const
{
    const QString name = QFileInfo(d->target).fileName();
    return QDir(path()).filePath(d->isSequence ? QStringLiteral("output/") + name : name);
}

bool OutputFolder::place(qint64 frameCount, QString *error)
{
    if (d->isSequence)
        return placeSequence(QFileInfo(outputPath()).absolutePath(), d->pattern, frameCount, error);
    return moveIntoPlace(outputPath(), d->target, error);
}

} // namespace zk::media
