#include "ZkExportSettings.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace zk::app {

namespace {

class Texts
{
    Q_DECLARE_TR_FUNCTIONS(ExportFormat)

public:
    static QString nameOf(media::OutputFormat format)
    {
        switch (format) {
        case media::OutputFormat::ProRes4444Mov:
            return tr("ProRes 4444 with transparency (.mov)");
        case media::OutputFormat::Vp9Webm:
            return tr("VP9 with transparency (.webm)");
        case media::OutputFormat::Ffv1Mkv:
            return tr("FFV1, lossless, with transparency (.mkv)");
        case media::OutputFormat::PngSequence:
            return tr("PNG pictures with transparency");
        case media::OutputFormat::H264Mp4:
            return tr("H.264 over a background (.mp4)");
        case media::OutputFormat::H264Mkv: // nobody exports it
            break;
        }
        return QString();
    }
};

QString suffixOf(media::OutputFormat format)
{
    switch (format) {
    case media::OutputFormat::ProRes4444Mov:
        return QStringLiteral(".mov");
    case media::OutputFormat::Vp9Webm:
        return QStringLiteral(".webm");
    case media::OutputFormat::Ffv1Mkv:
        return QStringLiteral(".mkv");
    case media::OutputFormat::PngSequence:
        return QStringLiteral("/%05d.png");
    case media::OutputFormat::H264Mp4:
        return QStringLiteral(".mp4");
    case media::OutputFormat::H264Mkv:
        break;
    }
    return QString();
}

} // namespace

QVector<ExportFormat> exportFormats()
{
    using media::OutputFormat;
    QVector<ExportFormat> formats;
    for (OutputFormat format : {OutputFormat::ProRes4444Mov,
                                OutputFormat::Vp9Webm,
                                OutputFormat::Ffv1Mkv,
                                OutputFormat::PngSequence,
                                OutputFormat::H264Mp4})
        formats.append({format,
                        suffixOf(format),
                        Texts::nameOf(format),
                        media::supportsAlpha(format),
                        media::supportsAudio(format)});
    return formats;
}

bool ExportSettings::setBackground(const QString &text)
{
    if (QFileInfo::exists(text)) {
        backgroundPicture = text;
        return true;
    }
    backgroundColour = QColor(text);
    return backgroundColour.isValid();
}

} // namespace zk::app
