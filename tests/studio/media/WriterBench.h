// What the tests of outputs share: frames that can be recognised, a folder to write to.
#pragma once

#include "ZkMediaReader.h"
#include "ZkMediaWriter.h"
#include "ZkTestClips.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

namespace zk::test {

const QSize Size(96, 54);

// The frame's number in opaque blocks in the upper half; below, colours under every alpha there is.
inline QImage testFrame(int number, const QSize &size = Size)
{
    QImage image = numberedImage(number, size);
    for (int y = size.height() * 3 / 4; y < size.height(); ++y) {
        uchar *pixel = image.scanLine(y);
        for (int x = 0; x < size.width(); ++x, pixel += 4) {
            pixel[0] = 200;
            pixel[1] = 120;
            pixel[2] = 40;
            pixel[3] = uchar(255 * x / (size.width() - 1));
        }
    }
    return image;
}

inline media::OutputSettings settingsFor(const QString &path, int frames = 0)
{
    media::OutputSettings settings;
    media::formatFor(path, &settings.format, nullptr);
    settings.size = Size;
    settings.frameRateNum = 30000;
    settings.frameRateDen = 1001;
    settings.frameCount = frames;
    return settings;
}

inline QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

class WriterBench
{
protected:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_error;

    QString path(const QString &name) const { return m_folder->filePath(name); }
    QStringList everything() const { return filesIn(m_folder->path()); }
    qint64 framesIn(const QString &file)
    {
        const auto reader = media::MediaReader::open(file, &m_error);
        return reader ? reader->info().frameCount : -1;
    }

    bool writeFrames(media::MediaWriter *writer, int frames, const QSize &size = Size)
    {
        bool isWritten = writer != nullptr;
        for (int i = 0; i < frames && isWritten; ++i)
            isWritten = writer->write(testFrame(i, size), &m_error);
        return isWritten;
    }
    bool writeWhole(const QString &path, const media::OutputSettings &settings, int frames)
    {
        const auto writer = media::MediaWriter::create(path, settings, &m_error);
        return writeFrames(writer.get(), frames, settings.size) && writer->finish(&m_error);
    }
    bool writeWhole(const QString &path, int frames)
    {
        return writeWhole(path, settingsFor(path, frames), frames);
    }

    static void addFormats()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"out.mov", "out.webm", "out.mkv", "out.mp4", "out/%05d.png"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }
};

} // namespace zk::test
