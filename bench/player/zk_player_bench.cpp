// What the user waits for at the player: a stroke to follow the mouse, a frame to follow the playhead,
// playback to keep its rate. Usage: zk_player_bench [clip]; without one a 1080p sample is made.
#include "ZkMediaPlayer.h"
#include "ZkSampleClip.h"
#include "player/ZkMediaPlayerWidget.h"
#include "timeline/ZkStudioTimeline.h"
#include "widgets/ZkDrawing.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <random>
#include <vector>

namespace {

constexpr int longestWait = 20000; // milliseconds

// Counts how often a widget is painted.
class PaintWatch : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            ++paints;
        return QObject::eventFilter(watched, event);
    }
    int paints = 0;
};

// Sleeps between events, so that the worker threads have the machine to themselves meanwhile. What the
// condition asks for is done when it returns, painting included.
template<typename Condition>
bool waitFor(Condition isMet)
{
    QTimer wake;
    wake.start(50);
    QElapsedTimer timer;
    timer.start();
    while (!isMet() && timer.elapsed() < longestWait)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return isMet();
}

double percentile(std::vector<double> values, double share)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[size_t(share * double(values.size() - 1))];
}

void sendMouse(QWidget &widget, QEvent::Type type, const QPointF &at)
{
    const bool isMove = type == QEvent::MouseMove;
    QMouseEvent event(type,
                      at,
                      isMove ? Qt::NoButton : Qt::LeftButton,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

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
    constexpr int seeks = 40;
    constexpr int enough = 10000; // milliseconds; some clips can only be read forwards
    Player player(timeline);
    const int frames = int(timeline.frameCount());
    std::minstd_rand random(1);
    QElapsedTimer timer;
    timer.start();
    int done = 0;
    for (int i = 0; i < seeks && timer.elapsed() < enough; ++i) {
        const int frame =
            stride != 0 ? (frames + i * stride % frames) % frames : int(random() % uint(frames));
        if (frame == player.presenter.currentFrame())
            continue;
        done += player.seek([&] { player.presenter.seek(frame); }) ? 1 : 0;
    }
    std::printf(
        "scrubbing %s: %.1f frames a second\n", name, done * 1000.0 / double(timer.elapsed()));
}

void measurePlayback(const ZkStudioTimeline &timeline)
{
    Player player(timeline);
    const int frames = int(timeline.frameCount());
    const int before = player.watch.paints;
    QElapsedTimer timer;
    timer.start();
    const std::clock_t busy = std::clock();
    player.presenter.play();
    waitFor([&] { return !player.presenter.isPlaying(); });
    const double seconds = double(timer.elapsed()) / 1000;
    const int shown = player.watch.paints - before;
    const double busyTime = 1000.0 * double(std::clock() - busy) / CLOCKS_PER_SEC;
    std::printf(
        "playback: %d of %d frames painted in %.2f s, %.1f of %.1f frames a second, %.0f %%, "
        "%.1f ms of processor time each\n",
        shown,
        frames - 1,
        seconds,
        shown / seconds,
        timeline.frameRate(),
        100.0 * shown / (frames - 1),
        busyTime / qMax(1, shown));
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
    measurePlayback(*timeline);
    measureScrubbing(*timeline, "forwards", 1);
    measureScrubbing(*timeline, "every seventh frame", 7);
    measureScrubbing(*timeline, "backwards", -1);
    measureScrubbing(*timeline, "anywhere", 0);
    return 0;
}
