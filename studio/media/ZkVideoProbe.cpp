#include "ZkVideoProbe.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QVector>

extern "C" {
#include <libavutil/display.h>
}

#include <algorithm>
#include <cmath>
#include <cstring>

namespace zk::media {

namespace {

// Enough packets to tell an even rate from an uneven one. Where pictures are large, as between editors, so
// many of them are all of the file, and reading that takes as long as copying it: fewer must do.
constexpr int HeadPackets = 2000;
constexpr int HeadPictures = 100;
constexpr qint64 HeadBytes = 64 * 1024 * 1024;
// Time stamps of the head's last packets may still be missing their reordered neighbours.
constexpr int ReorderReserve = 16;
constexpr int64_t MicroSeconds = 1000000;

constexpr AVRational StandardRates[] = {{24000, 1001},
                                        {24, 1},
                                        {25, 1},
                                        {30000, 1001},
                                        {30, 1},
                                        {48, 1},
                                        {50, 1},
                                        {60000, 1001},
                                        {60, 1},
                                        {120, 1}};

// What the packets of a file say about its time.
struct PacketSurvey
{
    // Of the first pictures of the video stream: when they are shown, and when they are decoded.
    QVector<int64_t> headStamps;
    QVector<int64_t> headDecodeStamps;
    int64_t lastStamp = AV_NOPTS_VALUE;
    int64_t lastDuration = 0;
    qint64 pictures = 0;
    qint64 bytes = 0; // of these
    bool isSampled = false; // between head and tail there is more that was not read
    int64_t endOfAll = 0; // of all streams, in microseconds
    // Reordered pictures in AVI, in MPEG program streams and bare ones say at best when they are
    // decoded. What libav makes of that is wrong after a seek, so all that counts is their order.
    bool isUntimed = false;
    bool sawEnd = false;

    bool isHeadKnown() const
    {
        return pictures >= HeadPackets || (pictures >= HeadPictures && bytes >= HeadBytes);
    }
};

void noteEnd(const AVStream &stream, const AVPacket &packet, PacketSurvey *survey)
{
    const int64_t stamp = packet.pts != AV_NOPTS_VALUE ? packet.pts : packet.dts;
    if (stamp == AV_NOPTS_VALUE)
        return;
    const int64_t end = av_rescale_q(stamp + packet.duration, stream.time_base, AV_TIME_BASE_Q);
    survey->endOfAll = std::max(survey->endOfAll, end);
}

void notePicture(const AVPacket &packet, PacketSurvey *survey)
{
    const bool isInHead = !survey->isHeadKnown();
    ++survey->pictures;
    survey->bytes += packet.size;
    if (isInHead && packet.dts != AV_NOPTS_VALUE)
        survey->headDecodeStamps.append(packet.dts);
    if (packet.pts == AV_NOPTS_VALUE) {
        survey->isUntimed = true;
        return;
    }
    if (isInHead)
        survey->headStamps.append(packet.pts);
    if (survey->lastStamp == AV_NOPTS_VALUE || packet.pts > survey->lastStamp) {
        survey->lastStamp = packet.pts;
        survey->lastDuration = packet.duration;
    }
}

void note(const VideoFile &file, const AVPacket &packet, PacketSurvey *survey)
{
    const AVStream *stream = file.input()->streams[packet.stream_index];
    noteEnd(*stream, packet, survey);
    if (stream == file.stream() && (packet.flags & AV_PKT_FLAG_DISCARD) == 0)
        notePicture(packet, survey);
}

// Reads on until the file ends or, where a limit is given, the head is known.
void survey(VideoFile &file, bool headOnly, PacketSurvey *survey)
{
    const PacketPtr packet(av_packet_alloc());
    while (file.nextPacket(packet.get())) {
        note(file, *packet, survey);
        if (headOnly && survey->isHeadKnown())
            return;
    }
    survey->sawEnd = true;
}

bool seekToTail(VideoFile &file, const PacketSurvey &head)
{
    const AVStream &stream = *file.stream();
    const int64_t whole = file.input()->duration;
    if (stream.duration != AV_NOPTS_VALUE)
        return file.seek(head.headStamps.first() + stream.duration);
    return whole != AV_NOPTS_VALUE
        && file.seek(head.headStamps.first()
                     + av_rescale_q(whole, AV_TIME_BASE_Q, stream.time_base));
}

PacketSurvey surveyPackets(VideoFile &file)
{
    PacketSurvey result;
    survey(file, true, &result);
    std::sort(result.headStamps.begin(), result.headStamps.end());
    if (result.sawEnd)
        return result;
    const int64_t headEnd = result.lastStamp;
    if (result.isUntimed || seekToTail(file, result))
        survey(file, false, &result);
    result.isSampled = !result.isUntimed;
    // A seek that led nowhere: the long way is still exact.
    if (!result.isUntimed && result.lastStamp == headEnd && file.rewind())
        survey(file, false, &result);
    return result;
}

// In a short head rates that are close to each other look alike. The wrong one has drifted by the end.
bool endsInTime(const PacketSurvey &survey, const FrameClock &clock)
{
    const int64_t off = survey.lastStamp - clock.stampOf(clock.frameOf(survey.lastStamp));
    const int64_t millisecond = av_rescale_q(1, {1, 1000}, clock.timeBase);
    return std::abs(off) <= 2 * std::max<int64_t>(millisecond, 1);
}

bool isGif(const VideoFile &file)
{
    return std::strcmp(file.input()->iformat->name, "gif") == 0;
}

bool isSane(AVRational rate, double limit)
{
    return rate.num > 0 && rate.den > 0 && av_q2d(rate) <= limit;
}

// Whether every frame of the rate has one picture. Without stamps those of decoding are as even.
bool isEven(const PacketSurvey &survey, FrameClock clock, AVRational rate)
{
    const QVector<int64_t> &stamps = survey.isUntimed ? survey.headDecodeStamps : survey.headStamps;
    const int last = survey.isHeadKnown() ? stamps.size() - ReorderReserve : stamps.size();
    clock.rate = rate;
    clock.start = stamps.value(0);
    for (int i = 1; i < last; ++i) {
        if (clock.frameOf(stamps.at(i)) != i)
            return false;
    }
    const bool isShortHead = survey.isSampled && stamps.size() < HeadPackets;
    return !isShortHead || endsInTime(survey, clock);
}

// An uneven clip runs at the rate that holds all its time stamps, if that is not wastefully high.
AVRational conformedRate(const AVStream &stream, bool isGif)
{
    const double average =
        av_q2d(stream.avg_frame_rate.den ? stream.avg_frame_rate : AVRational {});
    const double limit = isGif ? 100 : std::min(60.0, 2.1 * average);
    if (isSane(stream.r_frame_rate, limit))
        return stream.r_frame_rate;
    for (const AVRational rate : StandardRates) {
        if (av_q2d(rate) > 0.999 * average)
            return rate;
    }
    return {60, 1};
}

AVRational frameRate(const VideoFile &file, const PacketSurvey &survey, const FrameClock &clock)
{
    constexpr double FastestCamera = 1000;
    QVector<AVRational> candidates {file.stream()->r_frame_rate, file.stream()->avg_frame_rate};
    std::copy(std::begin(StandardRates), std::end(StandardRates), std::back_inserter(candidates));
    for (const AVRational rate : qAsConst(candidates)) {
        if (isSane(rate, FastestCamera) && isEven(survey, clock, rate))
            return survey.pictures > 1 || isSane(rate, 120) ? rate : AVRational {25, 1};
    }
    return conformedRate(*file.stream(), isGif(file));
}

qint64 frameCount(const PacketSurvey &survey, const FrameClock &clock, bool isVariable)
{
    const qint64 count = clock.frameOf(survey.lastStamp) + 1;
    if (!isVariable)
        return count;
    return std::max(count, qint64(clock.frameOf(survey.lastStamp + survey.lastDuration)));
}

// The index of an MP4 names the place of every sample, also of those that are no longer there.
bool indexPointsPastEnd(const VideoFile &file)
{
    const int64_t fileSize = avio_size(file.input()->pb);
    auto *stream = const_cast<AVStream *>(file.stream());
    const int count = avformat_index_get_entries_count(stream);
    const AVIndexEntry *last = count ? avformat_index_get_entry(stream, count - 1) : nullptr;
    return std::strstr(file.input()->iformat->name, "mp4") && last && fileSize > 0
        && last->pos + last->size > fileSize;
}

bool isTruncated(const VideoFile &file, const PacketSurvey &survey)
{
    const AVFormatContext &input = *file.input();
    if (indexPointsPastEnd(file))
        return true;
    if (survey.isUntimed || input.duration == AV_NOPTS_VALUE
        || input.duration_estimation_method == AVFMT_DURATION_FROM_BITRATE)
        return false;
    const int64_t start = input.start_time == AV_NOPTS_VALUE ? 0 : input.start_time;
    const int64_t missing = input.duration - (survey.endOfAll - std::max<int64_t>(start, 0));
    return missing > std::max(MicroSeconds / 2, input.duration / 50);
}

int rotation(const AVStream &stream)
{
    const uint8_t *matrix = av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, nullptr);
    if (!matrix)
        return 0;
    const double counterClockwise =
        av_display_rotation_get(reinterpret_cast<const int32_t *>(matrix));
    if (std::isnan(counterClockwise))
        return 0;
    const int quarters = int(std::lround(-counterClockwise / 90));
    return ((quarters % 4 + 4) % 4) * 90;
}

bool hasAudio(const VideoFile &file)
{
    return av_find_best_stream(file.input(), AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0) >= 0;
}

void describePicture(const VideoFile &file, MediaInfo *info)
{
    info->rotation = rotation(*file.stream());
    info->size = squarePixelSize(file);
    if (info->rotation % 180 != 0)
        info->size.transpose();
    info->hasAlpha = file.hasAlpha();
    info->hasAudio = hasAudio(file);
}

// Pictures are numbered, and the number is the time stamp.
void describeUntimed(const VideoFile &file,
                     const PacketSurvey &survey,
                     MediaInfo *info,
                     FrameClock *clock)
{
    const AVRational rate = file.stream()->avg_frame_rate;
    clock->rate = isSane(rate, 120) ? rate : AVRational {25, 1};
    clock->timeBase = av_inv_q(clock->rate);
    info->frameCount = survey.pictures;
}

void describeTimed(const VideoFile &file,
                   const PacketSurvey &survey,
                   MediaInfo *info,
                   FrameClock *clock)
{
    clock->timeBase = file.stream()->time_base;
    clock->start = survey.headStamps.first();
    clock->rate = frameRate(file, survey, *clock);
    info->isVariableRate = !isEven(survey, *clock, clock->rate);
    info->frameCount = frameCount(survey, *clock, info->isVariableRate);
    info->isAnimatedGif = isGif(file) && survey.headStamps.size() > 1;
}

QString brokenOff(const QString &path)
{
    return QCoreApplication::translate("zk::media",
                                       "%1 breaks off before its end; copy or download it again.")
        .arg(QDir::toNativeSeparators(path));
}

} // namespace

QSize squarePixelSize(const VideoFile &file)
{
    auto *stream = const_cast<AVStream *>(file.stream());
    const AVRational aspect = av_guess_sample_aspect_ratio(file.input(), stream, nullptr);
    const QSize size(stream->codecpar->width, stream->codecpar->height);
    // Scaling to a round size leaves an aspect that is off by less than a pixel is wide.
    constexpr double Tolerance = 0.01;
    if (aspect.num <= 0 || aspect.den <= 0 || std::abs(av_q2d(aspect) - 1) < Tolerance)
        return size;
    return {std::max(1, int(std::lround(size.width() * av_q2d(aspect)))), size.height()};
}

bool probeVideo(VideoFile &file, MediaInfo *info, FrameClock *clock, QString *error)
{
    const PacketSurvey packets = surveyPackets(file);
    file.setUntimed(packets.isUntimed);
    if (packets.pictures == 0 || isTruncated(file, packets) || !file.rewind()) {
        *error = brokenOff(info->path);
        return false;
    }
    info->formatSuffix = QFileInfo(info->path).suffix().toLower();
    describePicture(file, info);
    const auto describeTime = packets.isUntimed ? describeUntimed : describeTimed;
    describeTime(file, packets, info, clock);
    info->frameRateNum = clock->rate.num;
    info->frameRateDen = clock->rate.den;
    return true;
}

} // namespace zk::media
