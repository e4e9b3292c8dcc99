#include "ZkMuxer.h"

#include <QCoreApplication>

#include <cerrno>

namespace zk::media {

QString writeFailure(int code)
{
    if (code == AVERROR(ENOSPC))
        return QCoreApplication::translate(
            "zk::media", "The disk is full; free some space or choose another folder.");
    if (code == AVERROR(EFBIG))
        return QCoreApplication::translate(
            "zk::media",
            "The file would become larger than the disk allows; choose another folder.");
    return QCoreApplication::translate(
               "zk::media",
               "The output could not be written (%1); try another format or "
               "folder.")
        .arg(avErrorText(code));
}

AVDictionary *dictionary(const QVector<EncoderOption> &options)
{
    AVDictionary *result = nullptr;
    for (const EncoderOption &option : options)
        av_dict_set(&result, option.name, option.value, 0);
    return result;
}

Muxer::Muxer(const OutputProfile &profile)
    : m_profile(profile)
{ }

Muxer::~Muxer()
{
    if (!m_context)
        return;
    avio_closep(&m_context->pb);
    avformat_free_context(m_context);
}

std::unique_ptr<Muxer>
Muxer::create(const OutputProfile &profile, const QString &path, QString *error)
{
    initialiseAv();
    std::unique_ptr<Muxer> muxer(new Muxer(profile));
    const QByteArray name = avFileName(path);
    int code = avformat_alloc_output_context2(
        &muxer->m_context, nullptr, profile.container, name.constData());
    if (code >= 0)
        code = avio_open(&muxer->m_context->pb, name.constData(), AVIO_FLAG_WRITE);
    return muxer->check(code, error) ? std::move(muxer) : nullptr;
}

bool Muxer::check(int code, QString *error)
{
    // The file keeps the first failure of the disk; what the container makes of it says less.
    if (m_context && m_context->pb && m_context->pb->error < 0)
        code = m_context->pb->error;
    if (code < 0)
        *error = writeFailure(code);
    return code >= 0;
}

bool Muxer::wantsGlobalHeader() const
{
    return (m_context->oformat->flags & AVFMT_GLOBALHEADER) != 0;
}

AVStream *Muxer::addStream()
{
    return avformat_new_stream(m_context, nullptr);
}

bool Muxer::begin(QString *error)
{
    AVDictionary *options = dictionary(m_profile.containerOptions);
    const int code = avformat_write_header(m_context, &options);
    av_dict_free(&options);
    return check(code, error);
}

bool Muxer::write(AVPacket *packet, const AVStream &stream, AVRational timeBase, QString *error)
{
    packet->stream_index = stream.index;
    av_packet_rescale_ts(packet, timeBase, stream.time_base);
    return check(av_interleaved_write_frame(m_context, packet), error);
}

bool Muxer::end(QString *error)
{
    if (!check(av_write_trailer(m_context), error))
        return false;
    const int code = avio_closep(&m_context->pb);
    return check(code, error);
}

} // namespace zk::media
