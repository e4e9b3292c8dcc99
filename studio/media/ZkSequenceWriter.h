// Private to this folder.
#pragma once

#include "ZkMediaWriter.h"
#include "ZkPartFile.h"

namespace zk::media {

// "DIR/NAME%05d.png": where such a name leads.
struct SequencePattern
{
    QString folder;
    QString prefix;
    QString suffix;
    int digits = 0;

    static bool parse(const QString &path, SequencePattern *pattern);
    QString fileName(qint64 number) const;
};

// Moves the first pictures of a folder to where the pattern leads, or makes the folder that one's where
// there is none yet. On failure none of them is there.
bool placeSequence(const QString &from,
                   const SequencePattern &to,
                   qint64 frameCount,
                   QString *error);

// Writes numbered PNG files. They grow in a hidden folder, which becomes the target's folder where that
// does not exist yet; into a folder that exists the finished files are moved, over those of an earlier
// sequence of the same name.
class SequenceWriter : public MediaWriter
{
public:
    static std::unique_ptr<MediaWriter>
    create(const QString &path, const OutputSettings &settings, QString *error);

private:
    SequenceWriter(const OutputSettings &settings, SequencePattern pattern);
    bool encode(const QImage &image, QString *error) override;
    bool complete(QString *error) override;
    void discard() override;

    SequencePattern m_pattern;
    std::unique_ptr<PartFile> m_part;
};

} // namespace zk::media
