#include "ZkShoutingTranslator.h"
#include "ZkTestInput.h"
#include "ZkTestMain.h"
#include "widgets/ZkDrawing.h"

#include <QApplication>
#include <QPaintEvent>
#include <QShortcut>

#include <functional>
#include <optional>
#include <utility>

namespace {

const QColor half(255, 0, 0, 128);
const QRgb painted = qPremultiply(half.rgba());

class Canvas : public ZkDrawingWidget
{
public:
    explicit Canvas(QWidget *parent = nullptr)
        : ZkDrawingWidget(parent)
    {
        resize(200, 100);
        setCanvasRect({10, 5, 180, 90});
        setPenColor(half);
        setPenWidth(9);
        connect(this, &Canvas::sigDrawingFinished, this, [this](const QImage &mask, bool finished) {
            images.append(mask);
            finishes += finished ? QLatin1Char('1') : QLatin1Char('0');
        });
    }
    bool showAndWait()
    {
        show();
        return QTest::qWaitForWindowExposed(this);
    }
    void press(const QPoint &at) { QTest::mousePress(this, Qt::LeftButton, {}, at); }
    void drag(const QPoint &to) { zk::test::drag(this, to); }
    void release(const QPoint &at) { QTest::mouseRelease(this, Qt::LeftButton, {}, at); }
    void draw(const QVector<QPoint> &points)
    {
        press(points.first());
        for (const QPoint &point : points)
            drag(point);
        release(points.last());
    }
    QImage takeImage()
    {
        const QImage image = images.value(0);
        images.clear();
        return image;
    }

    QVector<QImage> images;
    QString finishes;
    QRegion paintedRegion;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        paintedRegion += event->region();
        ZkDrawingWidget::paintEvent(event);
    }
};

// The pixels that have been drawn on.
QRect extent(const QImage &image)
{
    QRect extent;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != 0)
                extent |= QRect(x, y, 1, 1);
    return extent;
}

// The largest one of any channel of any pixel.
int difference(const QImage &one, const QImage &other)
{
    int largest = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width() * 4; ++x)
            largest = qMax(largest, qAbs(one.constScanLine(y)[x] - other.constScanLine(y)[x]));
    return largest;
}

} // namespace

class ZkDrawingWidgetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { canvas.emplace(); }
    void cleanup() { canvas.reset(); }

    void drawsWhereTheCursorIs()
    {
        QVERIFY(canvas->showAndWait());
        const QPair<int, QRect> rows[] = {
            {1, {40, 45, 1, 1}}, {8, {36, 41, 8, 8}}, {9, {36, 41, 9, 9}}};
        for (const auto &[width, expected] : rows) {
            canvas->setPenWidth(width);
            QTest::mouseClick(&*canvas, Qt::LeftButton, {}, {50, 50});
            const QImage image = canvas->takeImage();
            QCOMPARE(image.size(), QSize(180, 90));
            QCOMPARE(image.format(), QImage::Format_ARGB32_Premultiplied);
            QCOMPARE(extent(image), expected);
        }
    }

    void staysEvenWhereItCrossesItself()
    {
        QVERIFY(canvas->showAndWait());
        canvas->draw({{20, 50}, {180, 50}, {100, 50}, {100, 10}, {100, 90}, {30, 50}});
        const QImage image = canvas->takeImage();
        for (int x = 10; x <= 170; ++x) // no gaps, no dark spots
            QCOMPARE(image.pixel(x, 45), painted);
        QCOMPARE(image.pixel(90, 10), painted);
        // It does not matter how many events the mouse sends on the way, edges included.
        canvas->draw({{20, 50}, {180, 50}});
        const QImage fast = canvas->takeImage();
        canvas->press({20, 50});
        for (int x = 20; x <= 180; ++x)
            canvas->drag({x, 50});
        canvas->release({180, 50});
        QVERIFY(difference(canvas->takeImage(), fast) <= 4); // of 128, at its edge
    }

    void showsTheStrokeUntilItEnds()
    {
        QWidget paper;
        paper.setStyleSheet(QStringLiteral("background: white"));
        auto *top = new Canvas(&paper);
        paper.resize(200, 100);
        const QImage blank = paper.grab().toImage();
        top->press({4, 50});
        QVERIFY(top->isDrawing());
        top->drag({100, 50});
        const QImage shown = paper.grab().toImage();
        QCOMPARE(shown.pixelColor(60, 50), QColor(255, 127, 127));
        QCOMPARE(shown.pixelColor(60, 20), QColor(Qt::white));
        QCOMPARE(shown.pixelColor(8, 50), QColor(Qt::white)); // beside the canvas
        top->release({100, 50});
        QCOMPARE(paper.grab().toImage(), blank);
    }

    void repaintsWhatIsDamaged()
    {
        QVERIFY(canvas->showAndWait());
        canvas->press({20, 50});
        QCoreApplication::processEvents();
        canvas->paintedRegion = {};
        canvas->drag({40, 50});
        QCoreApplication::processEvents();
        const QRect area = canvas->paintedRegion.boundingRect();
        QVERIFY(area.contains(QRect(16, 46, 28, 8)) && !area.contains(70, 50));
        QVERIFY(area.height() < 16);
    }

    void bindsTheSizeOfTheImage()
    {
        QVERIFY(canvas->showAndWait());
        // A 4K frame at 800 %.
        canvas->setCanvasRect({-10000, -9000, 30720, 17280});
        canvas->setMaximumImageSize({3840, 2160});
        canvas->setPenWidth(16);
        canvas->draw({{1, 1}, {161, 81}});
        const QImage image = canvas->takeImage();
        QCOMPARE(image.size(), QSize(3840, 2160));
        QCOMPARE(extent(image), QRect(1249, 1124, 23, 13));
        canvas->setCanvasRect({0, 0, 160, 90}); // no more than there is to see
        canvas->draw({{1, 1}, {80, 45}});
        QCOMPARE(canvas->takeImage().size(), QSize(160, 90));
    }

    void goesAlongWithTheCanvas()
    {
        QVERIFY(canvas->showAndWait());
        canvas->draw({{30, 30}, {60, 40}, {70, 60}});
        const QImage expected = canvas->takeImage();
        canvas->press({30, 30});
        canvas->drag({60, 40});
        canvas->setCanvasRect({20, 25, 180, 90}); // panned
        canvas->drag({80, 80});
        canvas->release({80, 80});
        QCOMPARE(canvas->takeImage(), expected);

        canvas->setMaximumImageSize({90, 45});
        canvas->draw({{30, 30}, {60, 40}, {70, 60}});
        const QRect before = extent(canvas->takeImage());
        canvas->press({30, 30});
        canvas->drag({60, 40});
        canvas->drag({70, 60});
        canvas->setCanvasRect({20, 25, 360, 180}); // zoomed in
        canvas->release({121, 96});
        const QRect after = extent(canvas->takeImage());
        QVERIFY(after.adjusted(-1, -1, 1, 1).contains(before));
        QVERIFY(before.adjusted(-1, -1, 1, 1).contains(after));
    }

    void cancels()
    {
        QWidget focused;
        int shortcuts = 0;
        QShortcut shortcut(Qt::Key_Escape, &focused);
        connect(&shortcut, &QShortcut::activated, this, [&] { ++shortcuts; });
        focused.show();
        const std::function<void()> ways[] = {
            [&] { QTest::keyClick(&focused, Qt::Key_Escape); }, // typed elsewhere
            [&] { canvas->hide(); },
            [&] { canvas->setEnabled(false); },
            [&] { canvas->setCanvasRect({}); }}; // nothing left to draw on
        for (const auto &interrupt : ways) {
            canvas.emplace();
            QVERIFY(canvas->showAndWait());
            QApplication::setActiveWindow(&focused);
            canvas->press({20, 50});
            canvas->drag({40, 50});
            interrupt();
            QVERIFY(!canvas->isDrawing());
            canvas->drag({60, 50});
            if (canvas->isEnabled())
                canvas->release({60, 50});
            QCOMPARE(canvas->finishes, QStringLiteral("0"));
            QVERIFY(canvas->takeImage().isNull());
            QCOMPARE(std::exchange(shortcuts, 0), 0);
            QTest::keyClick(&focused, Qt::Key_Escape); // is the window's own again
            QCOMPARE(std::exchange(shortcuts, 0), 1);
        }
    }

    void reportsNothing()
    {
        QVERIFY(canvas->showAndWait());
        canvas->draw({{1, 1}, {3, 60}}); // beside the canvas
        QTest::mouseClick(&*canvas, Qt::RightButton, {}, {50, 50});
        canvas->drag({60, 50});
        canvas->setPenColor(Qt::transparent);
        canvas->draw({{20, 20}, {30, 30}});
        canvas->setPenColor({});
        canvas->press({20, 20});
        QVERIFY(!canvas->isDrawing());
        canvas->release({20, 20});
        canvas->setPenColor(half);
        canvas->setCanvasRect({});
        canvas->draw({{20, 20}, {30, 30}});
        QCOMPARE(canvas->finishes, QString());
    }

    void followsTheLanguageUnlessNamed()
    {
        const Canvas unnamed;
        canvas->setAccessibleName(QStringLiteral("Mine"));
        const zk::test::ShoutingTranslator translator;
        QTRY_COMPARE(unnamed.accessibleName(), QStringLiteral("CANVAS"));
        QCOMPARE(canvas->accessibleName(), QStringLiteral("Mine"));
    }

    void keepsAStrokeWhoseReleaseIsLost()
    {
        QVERIFY(canvas->showAndWait());
        canvas->press({20, 20});
        canvas->draw({{60, 60}, {80, 60}});
        QCOMPARE(canvas->finishes, QStringLiteral("11"));
        QCOMPARE(extent(canvas->takeImage()), QRect(6, 11, 9, 9));
    }

private:
    std::optional<Canvas> canvas;
};

ZK_TEST_MAIN(ZkDrawingWidgetTest)
#include "ZkDrawingWidgetTest.moc"
