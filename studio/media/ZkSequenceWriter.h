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
    bool moveFiles(QString *error);
    void removeFirst(qint64 count);
    void removeLongerTail();

    SequencePattern m_pattern;
    std::unique_ptr<PartFile> m_part;
};

} // namespace zk::media
