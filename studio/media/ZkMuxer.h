// Private to this folder.
#pragma once

#include "ZkOutputProfile.h"

namespace zk::media {

// A container file that is being written.
class Muxer
{
public:
    // Null, with a sentence for the user, when the file cannot be opened.
    static std::unique_ptr<Muxer>
    create(const OutputProfile &profile, const QString &path, QString *error);
    ~Muxer();
    Muxer(const Muxer &) = delete;
    Muxer &operator=(const Muxer &) = delete;

    AVFormatContext *context() const { return m_context; }
    // Whether encoders must put their headers beside the packets.
    bool wantsGlobalHeader() const;
    AVStream *addStream();
    // After all streams have been added.
    bool begin(QString *error);
    // Takes the packet; its time stamps are in timeBase.
    bool write(AVPacket *packet, const AVStream &stream, AVRational timeBase, QString *error);
    // Writes what is left and closes the file: after success it is complete on the disk.
    bool end(QString *error);

private:
    explicit Muxer(const OutputProfile &profile);
    bool check(int code, QString *error);

    const OutputProfile &m_profile;
    AVFormatContext *m_context = nullptr;
};

// Says what stopped an encoder or a file from being written, and what to do.
QString writeFailure(int code);

// Options for avcodec_open2() and avformat_write_header(); the caller frees them.
AVDictionary *dictionary(const QVector<EncoderOption> &options);

} // namespace zk::media
