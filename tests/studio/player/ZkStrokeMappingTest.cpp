#include "PlayerBench.h"

#include "player/ZkMediaPlayerWidget.h"
#include "segmentation/ZkStrokeMap.h"
#include "widgets/ZkDrawing.h"
#include "widgets/ZkPlayerOverlay.h"

#include <QApplication>
#include <QMouseEvent>
#include <QVBoxLayout>

#include <cmath>

namespace {

constexpr QSize sourceSize(320, 180);
constexpr int penWidth = 9; // widget pixels; odd: the pen's middle is that of the pointer's pixel

double distanceToLine(const QPointF &point, const QPointF &from, const QPointF &to)
{
    const QPointF along = to - from;
    const double length = QPointF::dotProduct(along, along);
    const double share =
        length > 0 ? qBound(0.0, QPointF::dotProduct(point - from, along) / length, 1.0) : 0;
    const QPointF off = point - from - along * share;
    return std::hypot(off.x(), off.y());
}

} // namespace

// Strokes drawn over a player in a window, and the pixels of the source that they hit. Run once more with
// every widget pixel two device pixels wide.
class ZkStrokeMappingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_notice = std::make_unique<zk::test::ExpectedMessage>(
            QStringLiteral("^This plugin does not support"));
        const QString video = m_dir.filePath(QStringLiteral("clip.mkv"));
        QString error;
        QVERIFY2(zk::media::SampleClip({sourceSize, 2, 24}).write(video, QString(), &error),
                 qPrintable(error));
        m_timeline = ZkStudioTimeline::fromMediaFile(video, nullptr);
        auto *layout = new QVBoxLayout(&m_window);
        layout->addWidget(&m_widget);
        m_widget.setPresenter(&m_bench.presenter);
        m_window.setGeometry(30, 40, 700, 470);
        m_window.show();
        QVERIFY(m_bench.openAndShow(*m_timeline));
        makeCanvas();
        QVERIFY(QTest::qWaitForWindowExposed(m_canvas));
    }
    void cleanupTestCase() { m_notice.reset(); }

    void hitsTheSource_data()
    {
        QTest::addColumn<float>("level");
        QTest::addColumn<QPointF>("pan");
        QTest::newRow("fitted") << 0.0F << QPointF();
        QTest::newRow("50 %") << 0.5F << QPointF();
        QTest::newRow("100 %") << 1.0F << QPointF();
        QTest::newRow("400 %") << 4.0F << QPointF();
        QTest::newRow("400 %, panned") << 4.0F << QPointF(213, -117);
        QTest::newRow("800 %, in the corner") << 8.0F << QPointF(5000, 5000);
    }
    void hitsTheSource()
    {
        QFETCH(float, level);
        QFETCH(QPointF, pan);
        IZkMediaPlayerZoomer *zoomer = m_bench.presenter.zoomer();
        zoomer->zoom(level, QPointF());
        zoomer->beginPan();
        zoomer->panBy(pan);
        zoomer->endPan();
        const QRect canvas = zoomer->frameRect().toRect();
        m_canvas->setCanvasRect(canvas);

        const QPoint from = (canvas & m_canvas->rect()).center() - QPoint(30, 20);
        const QPoint to = from + QPoint(71, 53);
        const QImage strokes = drawn(from, to);
        const qreal ratio = m_canvas->devicePixelRatioF();
        QCOMPARE(strokes.size(), (QSizeF(canvas.size()) * ratio).toSize().boundedTo(sourceSize));
        const QImage map = zk::datamodel::strokeMap(strokes, sourceSize).pixels;

        // A source pixel that the pen covers as a whole is hit. One that it does not touch is not, when
        // source pixels are at least as large as those of the image; smaller ones are hit by majority.
        const double scale = canvas.width() / double(sourceSize.width());
        const double pixel = std::hypot(scale, scale) / 2; // from its middle to its corner
        const double reach = qMax(0.0, 1 / (scale * ratio) - 1) * scale + 0.5;
        const QPointF middle(0.5, 0.5);
        int hits = 0;
        for (int y = 0; y < sourceSize.height(); ++y) {
            for (int x = 0; x < sourceSize.width(); ++x) {
                const QPointF place = (QPointF(x, y) + middle) * scale + canvas.topLeft();
                const double off = distanceToLine(place, from + middle, to + middle);
                const bool isHit = map.constScanLine(y)[x] != 0;
                hits += isHit ? 1 : 0;
                const QByteArray where = QByteArray::number(x) + ", " + QByteArray::number(y)
                    + ", off " + QByteArray::number(off);
                if (off + pixel < penWidth / 2.0 - reach)
                    QVERIFY2(isHit, where.constData());
                if (off - pixel > penWidth / 2.0 + reach)
                    QVERIFY2(!isHit, where.constData());
            }
        }
        QVERIFY(hits > 0);
    }

    // One click of a pen as wide as a source pixel hits the one pixel that is shown there.
    void hitsThePixelThatIsPointedAt()
    {
        IZkMediaPlayerZoomer *zoomer = m_bench.presenter.zoomer();
        zoomer->zoom(8, QPointF(200, 100));
        const QRect canvas = zoomer->frameRect().toRect();
        m_canvas->setCanvasRect(canvas);
        m_canvas->setPenWidth(7);
        const QPoint source = (QPoint(300, 200) - canvas.topLeft()) / 8;
        const QPoint at = canvas.topLeft() + source * 8 + QPoint(3, 3);
        const QImage map = zk::datamodel::strokeMap(drawn(at, at), sourceSize).pixels;
        for (int y = 0; y < sourceSize.height(); ++y)
            for (int x = 0; x < sourceSize.width(); ++x)
                QCOMPARE(map.constScanLine(y)[x] != 0, QPoint(x, y) == source);
        m_canvas->setPenWidth(penWidth);
        // And what is shown there is that pixel.
        const QImage shown = m_widget.vblPlayerWidget()->grab().toImage();
        QCOMPARE(shown.pixel(at * shown.devicePixelRatio()) | 0xff000000,
                 m_bench.d.picture().pixel(source));
    }

private:
    // As the workspace does.
    void makeCanvas()
    {
        m_canvas = new ZkDrawingWidget(&m_widget);
        m_canvas->setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
        m_canvas->setAttribute(Qt::WA_TranslucentBackground);
        new ZkPlayerWidgetEventHelper(m_canvas, &m_widget, m_canvas);
        m_canvas->setPenColor(QColor(0, 255, 255, 160));
        m_canvas->setPenWidth(penWidth);
        m_canvas->setGeometry(QRect(m_widget.mapToGlobal(QPoint(0, 0)), m_widget.size()));
        m_canvas->setVisible(true);
        connect(m_canvas, &ZkDrawingWidget::sigDrawingFinished, this, [this](const QImage &mask) {
            m_image = mask;
        });
    }
    QImage drawn(const QPoint &from, const QPoint &to)
    {
        m_image = QImage();
        QWindow *window = m_canvas->windowHandle();
        QTest::mousePress(window, Qt::LeftButton, {}, from);
        QTest::mouseMove(window, (from + to) / 2);
        QTest::mouseMove(window, to);
        QTest::mouseRelease(window, Qt::LeftButton, {}, to);
        return m_image;
    }

    std::unique_ptr<zk::test::ExpectedMessage> m_notice;
    QTemporaryDir m_dir;
    std::unique_ptr<ZkStudioTimeline> m_timeline;
    zk::test::PlayerBench m_bench;
    QWidget m_window;
    ZkMediaPlayerWidget m_widget;
    ZkDrawingWidget *m_canvas = nullptr;
    QImage m_image;
};

ZK_TEST_MAIN(ZkStrokeMappingTest)
#include "ZkStrokeMappingTest.moc"
