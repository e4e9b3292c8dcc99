// What the user waits for at the player: a stroke to follow the mouse, a frame to follow the playhead,
// playback to keep its rate. Usage: zk_player_bench [clip]; without one a 1080p sample is made.
#include "BenchTools.h"

#include "ZkMediaPlayer.h"
#include "ZkSampleClip.h"
#include "player/ZkMediaPlayerWidget.h"
#include "timeline/ZkStudioTimeline.h"
#include "widgets/ZkDrawing.h"

#include <QApplication>
#include <QPainter>
#include <QTemporaryDir>

#include <cmath>
#include <cstdio>
#include <random>

using namespace zk::bench;

namespace {

// From a move event to its line on screen, in milliseconds.
std::vector<double> strokeLatencies(int penWidth, double stride)
{
    constexpr QSize size(3840, 2160);
    constexpr int moves = 300;
    ZkDrawingWidget canvas;
    canvas.setAttribute(Qt::WA_TranslucentBackground);
    canvas.resize(size);
    canvas.setCanvasRect(QRect(QPoint(0, 0), size));
    canvas.setPenColor(QColor(24, 183, 217, 160));
    canvas.setPenWidth(penWidth);
    canvas.show();
    PaintWatch watch;
    canvas.installEventFilter(&watch);
    waitFor([&] { return watch.paints > 0; });

    QPointF at(size.width() / 2.0, size.height() / 2.0);
    sendMouse(canvas, QEvent::MouseButtonPress, at);
    std::vector<double> latencies;
    QElapsedTimer timer;
    for (int i = 0; i < moves; ++i) {
        at += QPointF(std::cos(i * 0.11), std::sin(i * 0.11)) * stride;
        timer.start();
        const int before = watch.paints;
        sendMouse(canvas, QEvent::MouseMove, at);
        if (!waitFor([&] { return watch.paints > before; }))
            break;
        latencies.push_back(double(timer.nsecsElapsed()) * 1e-6);
    }
    timer.start();
    sendMouse(canvas, QEvent::MouseButtonRelease, at);
    std::printf("stroke at 4K, pen %3d, %3.0f pixels a move: median %5.2f ms, 99 %% %5.2f ms, "
                "worst %5.2f ms, release %5.2f ms\n",
                penWidth,
                stride,
                percentile(latencies, 0.5),
                percentile(latencies, 0.99),
                percentile(latencies, 1),
                double(timer.nsecsElapsed()) * 1e-6);
    return latencies;
}

// A player of 1280x720 widget pixels on the clip.
class Player
{
public:
    explicit Player(const ZkStudioTimeline &timeline)
    {
        m_widget.resize(1280, 720);
        m_widget.setPresenter(&presenter);
        m_widget.vblPlayerWidget()->installEventFilter(&watch);
        m_widget.show();
        ZkMediaPlayerOpenParam param;
        param.handle = timeline.handle();
        seek([&] { presenter.mediaPlayer()->open(param); });
    }
    // Until the frame is painted.
    template<typename Action>
    bool seek(Action action)
    {
        bool isFinished = false;
        QObject context;
        QObject::connect(&presenter, &ZkMediaPlayerPresenter::sigSeekFinished, &context, [&] {
            isFinished = true;
        });
        const int before = watch.paints;
        action();
        return waitFor([&] { return isFinished && watch.paints > before; });
    }

    PaintWatch watch;
    ZkMediaPlayerPresenter presenter;

private:
    ZkMediaPlayerWidget m_widget;
};

void measureScrubbing(const ZkStudioTimeline &timeline, const char *name, int stride)
{
    constexpr int seeks = 60;
    constexpr int enough = 10000; // milliseconds; some clips can only be read forwards
    Player player(timeline);
    const int frames = int(timeline.frameCount());
    std::minstd_rand random(1);
    std::vector<double> latencies;
    const Stopwatch all;
    for (int i = 0; i < seeks && all.milliseconds() < enough; ++i) {
        const int frame =
            stride != 0 ? (frames + i * stride % frames) % frames : int(random() % uint(frames));
        if (frame == player.presenter.currentFrame())
            continue;
        const Stopwatch one;
        if (player.seek([&] { player.presenter.seek(frame); }))
            latencies.push_back(one.milliseconds());
    }
    const int done = qMax(1, int(latencies.size()));
    std::printf("scrubbing %-20s %5.1f frames a second; median %5.1f ms, 90 %% %5.1f ms, worst "
                "%6.1f ms; %5.1f ms of processor time each\n",
                name,
                done * 1000.0 / all.milliseconds(),
                percentile(latencies, 0.5),
                percentile(latencies, 0.9),
                percentile(latencies, 1),
                all.processorMilliseconds() / done);
}

void measurePlayback(const ZkStudioTimeline &timeline, const char *name)
{
    Player player(timeline);
    const int frames = int(timeline.frameCount());
    player.watch.paints = 0;
    player.watch.milliseconds = 0;
    const Stopwatch all;
    player.presenter.play();
    waitFor([&] { return !player.presenter.isPlaying(); });
    const double seconds = all.milliseconds() / 1000;
    const int shown = qMax(1, player.watch.paints);
    std::printf(
        "playback %-24s %4.1f of %.1f frames a second, %3.0f %%; %5.1f ms of processor time "
        "each, %4.1f ms of painting\n",
        name,
        shown / seconds,
        timeline.frameRate(),
        100.0 * shown / (frames - 1),
        all.processorMilliseconds() / shown,
        player.watch.milliseconds / shown);
}

// A soft-edged shape that wanders across the frame.
QImage matteOf(const QSize &size, int frame)
{
    QImage matte(size, QImage::Format_Grayscale8);
    matte.fill(Qt::black);
    QPainter painter(&matte);
    painter.setRenderHint(QPainter::Antialiasing);
    const double height = size.height();
    const QPointF middle(size.width() / 2 + 0.3 * height * std::sin(frame * 0.1), height / 2);
    QRadialGradient soft(middle, height * 0.35);
    soft.setColorAt(0.97, Qt::white);
    soft.setColorAt(1, Qt::black);
    painter.fillRect(matte.rect(), soft);
    return matte;
}

// Playback of a clip that has a mask on every frame, in every way to show it.
void measureModes(ZkStudioTimeline *timeline)
{
    const std::unique_ptr<IZkSmartKeyingEditController, void (*)(IZkSmartKeyingEditController *)>
        controller(createSmartKeyingEditController(), releaseSmartKeyingEditController);
    qint64 frame = 0;
    if (!controller->initialise(timeline->clip(), nullptr, &frame, ZKSMARTKEYING::SmartCutout))
        return;
    auto *edited = static_cast<ZkStudioTimeline *>(controller->editTimeline());
    IZkSmartKeyingService *service = edited->clip()->smartKeyingService(ZKSMARTKEYING::SmartCutout);
    service->setEnabled(true);
    for (qint64 i = 0; i < edited->frameCount(); ++i)
        controller->setMatte(i, matteOf(edited->frameSize(), int(i)));
    const char *names[] = {"with an overlay", "of the result", "of the alpha", "on a grid"};
    for (int type = ZKSMARTKEYING::InteractivePreview; type <= 4; ++type) {
        service->setPreviewType(ZKSMARTKEYING::ZkPreviewType(type));
        measurePlayback(*edited, names[type - 1]);
    }
}

std::unique_ptr<ZkStudioTimeline> openClip(const QString &given, const QTemporaryDir &folder)
{
    QString error;
    QString path = given;
    if (path.isEmpty()) {
        path = folder.filePath(QStringLiteral("sample.mp4"));
        zk::media::SampleClip({QSize(1920, 1080), 120, 25}).write(path, QString(), &error);
    }
    auto timeline = ZkStudioTimeline::fromMediaFile(path, &error);
    if (!timeline)
        std::fprintf(stderr, "%s\n", qPrintable(error));
    return timeline;
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    strokeLatencies(20, 12);
    strokeLatencies(20, 200);
    strokeLatencies(300, 12);
    strokeLatencies(300, 200);

    const QTemporaryDir folder;
    const auto timeline = openClip(QCoreApplication::arguments().value(1), folder);
    if (!timeline)
        return 1;
    const QSize size = timeline->frameSize();
    std::printf("%dx%d, %lld frames\n", size.width(), size.height(), timeline->frameCount());
    measurePlayback(*timeline, "without a mask");
    measureModes(timeline.get());
    measureScrubbing(*timeline, "forwards", 1);
    measureScrubbing(*timeline, "every seventh frame", 7);
    measureScrubbing(*timeline, "backwards", -1);
    measureScrubbing(*timeline, "anywhere", 0);
    return 0;
}
