#include "ZkAvHandles.h"

#include <QFileInfo>
#include <QLoggingCategory>

#include <mutex>

extern "C" {
#include <libavutil/log.h>
}

namespace zk::media {

namespace {

Q_LOGGING_CATEGORY(logMedia, "zk.media", QtInfoMsg)

void forwardLog(void *object, int level, const char *format, va_list arguments)
{
    if (level > AV_LOG_WARNING || !logMedia().isDebugEnabled())
        return;
    thread_local int printPrefix = 1;
    char line[1024];
    av_log_format_line2(object, level, format, arguments, line, sizeof(line), &printPrefix);
    qCDebug(logMedia).noquote() << QString::fromUtf8(line).trimmed();
}

} // namespace

void initialiseAv()
{
    static std::once_flag once;
    std::call_once(once, [] { av_log_set_callback(forwardLog); });
}

QString avErrorText(int code)
{
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(code, text, sizeof(text));
    return QString::fromUtf8(text);
}

QByteArray avFileName(const QString &path)
{
    return QByteArrayLiteral("file:") + QFileInfo(path).absoluteFilePath().toUtf8();
}

InputPtr openInput(const QString &path, int *code)
{
    initialiseAv();
    // A play list must not make the editor fetch from the network.
    AVDictionary *options = nullptr;
    av_dict_set(&options, "protocol_whitelist", "file", 0);
    AVFormatContext *context = nullptr;
    *code = avformat_open_input(&context, avFileName(path).constData(), nullptr, &options);
    av_dict_free(&options);
    InputPtr input(context);
    if (*code >= 0)
        *code = avformat_find_stream_info(input.get(), nullptr);
    return *code >= 0 ? std::move(input) : nullptr;
}

} // namespace zk::media
