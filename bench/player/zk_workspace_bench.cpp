// From the release of the mouse to the new mask on screen, in a workspace that is open on a clip of
// 1080p, with the stages that it takes. The progress, which waits so that it can be seen, is off. Usage: zk_workspace_bench [strokes [clip]]; without a clip a sample is made.
#include "BenchTools.h"

#include "ZkInteractiveSegmenter.h"
#include "ZkMediaPlayerPresenter_p.h"
#include "ZkMediaReader.h"
#include "ZkSampleClip.h"
#include "ZkSmartKeyingPresenter.h"
#include "ZkWidgets.h"
#include "ZkWorkspacePage.h"
#include "library/ZkStudioProjectManager.h"
#include "player/ZkMediaPlayerWidget.h"
#include "segmentation/ZkStudioSmartKeyingService.h"
#include "timeline/ZkStudioEffect.h"
#include "timeline/ZkStudioTimeline.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include <cstdio>

using namespace zk::bench;
using zk::datamodel::SegmentNodePtr;

namespace {

cv::Mat pixelsOf(const QImage &image)
{
    if (image.isNull())
        return {};
    return cv::Mat(image.height(),
                   image.width(),
                   CV_8UC(image.depth() / 8),
                   const_cast<uchar *>(image.constBits()),
                   size_t(image.bytesPerLine()));
}

// The engine alone, on what the workspace gives it.
class Engine
{
public:
    explicit Engine(const QImage &frame)
        : m_frame(frame)
    { }
    Times timesFor(const SegmentNodePtr &node, const QImage &before)
    {
        const QImage keep = node->keep.decoded();
        const QImage remove = node->remove.decoded();
        zk::engine::Scribbles scribbles {node->keep.isEmpty() ? cv::Mat() : pixelsOf(keep),
                                         node->remove.isEmpty() ? cv::Mat() : pixelsOf(remove)};
        const Stopwatch stopwatch;
        m_segmenter.segment(pixelsOf(m_frame), scribbles, pixelsOf(before));
        return stopwatch.times();
    }

private:
    QImage m_frame;
    zk::engine::InteractiveSegmenter m_segmenter;
};

class Workspace
{
public:
    Workspace(ZkStudioTimeline *timeline, ZkStudioProjectManager *manager)
        : m_page(timeline->clip(), manager)
    {
        ZkSkinManager::instance()->applyStyleSheet(&m_window,
                                                   QStringLiteral("Application/MainWindow"));
        auto *column = new QVBoxLayout(&m_window);
        column->setContentsMargins(0, 0, 0, 0);
        column->addWidget(&m_page);
        m_window.resize(1600, 960);
        m_window.show();
        presenter()->setProgressEnabled(false);
        waitFor([this] { return canvas() && canvas()->canvasRect().width() > 300; });
        surface()->installEventFilter(&m_watch);
        const auto *player = ZkMediaPlayerPresenterPrivate::get(presenter()->playerPresenter());
        QObject::connect(player, &ZkMediaPlayerPresenterPrivate::pictureChanged, &m_watch, [this] {
            ++m_pictures;
        });
        QObject::connect(presenter(),
                         &ZkSmartKeyingPresenter::sigDrawingFinished,
                         &m_watch,
                         [this] { m_answered = m_sinceRelease.milliseconds(); });
    }
    ~Workspace() { m_page.setParent(nullptr); }

    QSize surfaceSize() const { return surface()->size(); }
    void erase() { presenter()->setPlayerEditMode(ZkSmartKeyingPresenter::EraseMode); }
    // engine: null when it has no part in it. Returns the milliseconds that are not the engine's.
    double paint(double x, double y, Engine *engine, const char *name);

private:
    ZkSmartKeyingPresenter *presenter() const { return m_page.presenter(); }
    ZkDrawingWidget *canvas() const { return m_page.findChild<ZkDrawingWidget *>(); }
    ZkVblPlayerWidget *surface() const { return m_page.findChild<ZkVblPlayerWidget *>(); }
    const ZkStudioSmartKeyingService *service() const
    {
        return static_cast<ZkStudioSmartKeyingService *>(presenter()->smartKeyingService());
    }
    void press(double x, double y);

    QWidget m_window;
    zk::app::WorkspacePage m_page;
    PaintWatch m_watch;
    Stopwatch m_sinceRelease;
    QPointF m_penAt;
    int m_pictures = 0;
    double m_answered = -1;
};

// A short line, all but its end.
void Workspace::press(double x, double y)
{
    const QRectF frame = canvas()->canvasRect();
    const auto at = [&frame](double right, double down) {
        return frame.topLeft() + QPointF(frame.width() * right, frame.height() * down);
    };
    sendMouse(*canvas(), QEvent::MouseButtonPress, at(x, y));
    for (int i = 1; i <= 6; ++i) {
        m_penAt = at(x + 0.003 * i, y + 0.012 * i);
        sendMouse(*canvas(), QEvent::MouseMove, m_penAt);
    }
}

// Thumbnails, above all, are made in the background.
void waitForQuiet()
{
    for (int quiet = 0; quiet < 5;) {
        const Stopwatch stopwatch;
        waitFor([&] { return stopwatch.milliseconds() > 100; });
        quiet = stopwatch.processorMilliseconds() < 5 ? quiet + 1 : 0;
    }
}

// Copies are all that is neither the engine nor the painting of the player: the picture of the stroke
// and its way to the pixels of the frame, the mask that is kept, undo, and the picture with the mask on it.
double Workspace::paint(double x, double y, Engine *engine, const char *name)
{
    const qint64 frame = presenter()->currentFrame();
    const QImage before = service()->segments().matteAt(frame);
    const SegmentNodePtr node = service()->segments().node(frame);
    press(x, y);
    waitForQuiet();
    m_watch.paints = 0;
    m_watch.milliseconds = 0;
    m_pictures = 0;
    m_answered = -1;
    m_sinceRelease = Stopwatch();
    sendMouse(*canvas(), QEvent::MouseButtonRelease, m_penAt);
    Times total;
    const bool isShown = waitFor([&] {
        total = m_sinceRelease.times();
        return m_answered >= 0 && m_pictures > 0 && m_watch.paints > 0;
    });
    const SegmentNodePtr after = service()->segments().node(frame);
    if (!isShown || !after || after == node) {
        std::printf("%s: nothing new came on screen\n", name);
        return longestWait;
    }
    const Times alone = engine ? engine->timesFor(after, before) : Times();
    const double painting = m_watch.milliseconds;
    std::printf("%-14s %6.1f ms: engine %6.1f, copies %5.1f, paint %4.1f; of processors %6.1f ms: "
                "engine %6.1f, the rest %5.1f\n",
                name,
                total.wall,
                alone.wall,
                total.wall - alone.wall - painting,
                painting,
                total.processors,
                alone.processors,
                total.processors - alone.processors);
    return total.wall - alone.wall;
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const QTemporaryDir folder;
    QString error;
    const int strokes = qMax(3, QCoreApplication::arguments().value(1).toInt());
    QString path = QCoreApplication::arguments().value(2);
    if (path.isEmpty()) {
        path = folder.filePath(QStringLiteral("sample.mp4"));
        zk::media::SampleClip({QSize(1920, 1080), 10, 25}).write(path, QString(), &error);
    }
    const auto timeline = ZkStudioTimeline::fromMediaFile(path, &error);
    const auto reader = zk::media::MediaReader::open(path, &error);
    if (!timeline || !reader) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    zk::datamodel::LibrarySettings settings;
    settings.directory = folder.filePath(QStringLiteral("library"));
    settings.effectFactory = &ZkStudioEffect::fromLookJson;
    ZkStudioProjectManager manager(settings);
    Workspace workspace(timeline.get(), &manager);
    const QSize size = timeline->frameSize();
    std::printf("%dx%d in a player of %dx%d\n",
                size.width(),
                size.height(),
                workspace.surfaceSize().width(),
                workspace.surfaceSize().height());
    Engine engine(reader->frameAt(0));
    const auto paintAll = [&](Engine *part, const char *name) {
        std::vector<double> rest;
        for (int i = 0; i < strokes; ++i)
            rest.push_back(
                workspace.paint(0.24 + 0.08 * i / strokes, 0.28 + 0.01 * (i % 3), part, name));
        std::printf("%-14s copies and paint, median: %.1f ms\n", name, percentile(rest, 0.5));
    };
    workspace.paint(0.28, 0.30, &engine, "first stroke");
    paintAll(&engine, "later stroke");
    // What erasing takes is all but the engine, without the uncertainty of subtracting it.
    workspace.erase();
    paintAll(nullptr, "erased");
    return 0;
}
