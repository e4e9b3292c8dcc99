#include "ZkMediaPlayerZoomerPresenter_p.h"
#include "ZkTestMain.h"

#include <QApplication>

#include <limits>

namespace {

// A zoomer as the player sets it up. An empty view port: no widget.
class Zoomer : public ZkMediaPlayerZoomerPresenter
{
public:
    Zoomer(const QSize &source, const QSizeF &viewport)
    {
        d.setSourceSize(source, false);
        d.setViewport(viewport, 1);
        connect(this, &Zoomer::sigPropertyChanged, this, [this](int property) {
            m_properties += QString::number(property);
        });
    }
    // The properties that were reported, as digits.
    QString takeReports() { return std::exchange(m_properties, {}); }

    ZkMediaPlayerZoomerPresenterPrivate &d = *ZkMediaPlayerZoomerPresenterPrivate::get(this);

private:
    QString m_properties;
};

const QSize source(640, 360);
const QSizeF viewport(640, 360);

} // namespace

class ZkMediaPlayerZoomerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fits_data();
    void fits();
    void keepsTheAnchor_data();
    void keepsTheAnchor();
    void steps_data();
    void steps();
    void holdsEveryLevelOfTheZoomBoxes();
    void limitsAndRefusesLevels();
    void pans();
    void zoomsDuringAPan();
    void resizes();
    void changesSource();
};

void ZkMediaPlayerZoomerTest::fits_data()
{
    QTest::addColumn<QSize>("source");
    QTest::addColumn<QSizeF>("viewport");
    QTest::addColumn<QRectF>("frame");

    QTest::newRow("odd") << QSize(853, 479) << QSizeF(640, 360) << QRectF(0, 1, 640, 359);
    QTest::newRow("wide") << QSize(1920, 1080) << QSizeF(500, 500) << QRectF(0, 110, 500, 281);
    QTest::newRow("upright") << QSize(1080, 1920) << QSizeF(500, 500) << QRectF(110, 0, 281, 500);
    QTest::newRow("enlarged") << QSize(32, 16) << QSizeF(640, 360) << QRectF(0, 20, 640, 320);
    QTest::newRow("line") << QSize(4001, 1) << QSizeF(400, 300) << QRectF(0, 150, 400, 1);
    QTest::newRow("no widget") << QSize(853, 479) << QSizeF() << QRectF(0, 0, 853, 479);
}

void ZkMediaPlayerZoomerTest::fits()
{
    QFETCH(QSize, source);
    QFETCH(QSizeF, viewport);
    QFETCH(QRectF, frame);

    Zoomer zoomer(source, viewport);
    zoomer.zoom(4, QPointF(1, 1));
    zoomer.zoom(0, QPointF(17, 30));
    QCOMPARE(zoomer.frameRect(), frame);
    QCOMPARE(zoomer.zoomLevel(false), 0.0F);
    const QSizeF fitted =
        viewport.isEmpty() ? source : QSizeF(source).scaled(viewport, Qt::KeepAspectRatio);
    QCOMPARE(zoomer.zoomLevel(true), float(fitted.width() / source.width()));
    QVERIFY(!zoomer.canPan());
}

void ZkMediaPlayerZoomerTest::keepsTheAnchor_data()
{
    QTest::addColumn<QSize>("source");
    QTest::addColumn<QSizeF>("viewport");
    QTest::addColumn<QPointF>("anchor");

    QTest::newRow("middle") << source << viewport << QPointF();
    QTest::newRow("corner") << source << viewport << QPointF(639, 359);
    QTest::newRow("odd") << QSize(853, 479) << QSizeF(641, 307) << QPointF(123.5, 211.25);
    QTest::newRow("large") << QSize(3840, 2160) << QSizeF(333, 777) << QPointF(20, 400);
}

void ZkMediaPlayerZoomerTest::keepsTheAnchor()
{
    QFETCH(QSize, source);
    QFETCH(QSizeF, viewport);
    QFETCH(QPointF, anchor);
    const QRectF view(QPointF(), viewport);
    const QPointF fixed = anchor.isNull() ? view.center() : anchor;

    Zoomer zoomer(source, viewport);
    zoomer.zoom(1.5F, QPointF());
    const QRectF before = zoomer.frameRect();
    QVERIFY(before.contains(view)); // so that nothing but the anchor places the frame from here on
    for (const float level : {1.5F, 2.0F, 2.7F, 8.0F}) {
        zoomer.zoom(level, anchor);
        const QRectF frame = zoomer.frameRect();
        const double growth = frame.width() / before.width();
        const QPointF off = frame.topLeft() + (fixed - before.topLeft()) * growth - fixed;
        // Half a pixel of snapping before, magnified, half a pixel after, and that of the size.
        QVERIFY2(off.manhattanLength() <= 1.2 * (1 + growth), qPrintable(QString::number(level)));
        QCOMPARE(frame, QRectF(frame.toRect()));
    }
    // Zooming in and out again does not make the frame wander off.
    for (int i = 0; i < 500; ++i) {
        zoomer.zoom(1.7F, anchor);
        zoomer.zoom(6.1F, anchor);
    }
    zoomer.zoom(1.5F, anchor);
    QCOMPARE(zoomer.frameRect().size(), before.size());
    const QPointF drift = zoomer.frameRect().topLeft() - before.topLeft();
    QVERIFY(qAbs(drift.x()) <= 1 && qAbs(drift.y()) <= 1); // a half, rounded the other way
}

void ZkMediaPlayerZoomerTest::steps_data()
{
    QTest::addColumn<QSize>("source");
    QTest::addColumn<float>("level");
    QTest::addColumn<int>("step");
    QTest::addColumn<float>("next");

    QTest::newRow("in") << source << 1.0F << 1 << 1.5F;
    QTest::newRow("out") << source << 1.0F << -1 << 0.75F;
    QTest::newRow("several") << source << 1.2F << 4 << 4.0F;
    QTest::newRow("several out") << source << 1.2F << -3 << 0.5F;
    QTest::newRow("nowhere") << source << 1.2F << 0 << 1.2F;
    QTest::newRow("upper end") << source << 6.0F << 7 << 8.0F;
    QTest::newRow("at the end") << source << 8.0F << 1 << 8.0F;
    QTest::newRow("lower end") << source << 0.25F << std::numeric_limits<int>::min() << 0.1F;
    QTest::newRow("fitted") << QSize(1920, 1080) << 0.0F << 1 << 0.5F; // from a third
    QTest::newRow("above") << QSize(32, 18) << 0.0F << 1 << 20.0F;
    QTest::newRow("from above") << QSize(32, 18) << 0.0F << -1 << 8.0F;
    QTest::newRow("below") << QSize(12800, 7200) << 0.0F << -1 << 0.05F;
    QTest::newRow("from below") << QSize(12800, 7200) << 0.0F << 1 << 0.1F;
}

void ZkMediaPlayerZoomerTest::steps()
{
    QFETCH(QSize, source);
    QFETCH(float, level);
    QFETCH(int, step);
    QFETCH(float, next);

    Zoomer zoomer(source, viewport);
    zoomer.zoom(level, QPointF());
    QCOMPARE(zoomer.getNextZoomLevel(step), next);
    zoomer.zoom(next, QPointF());
    QCOMPARE(zoomer.zoomLevel(false), next); // it can be had
}

void ZkMediaPlayerZoomerTest::holdsEveryLevelOfTheZoomBoxes()
{
    Zoomer zoomer(source, viewport);
    zoomer.zoom(0.1F, QPointF());
    QList<int> percents;
    for (float before = 0; zoomer.zoomLevel(false) > before;) {
        before = zoomer.zoomLevel(false);
        percents.append(int(before * 100)); // as the boxes calculate it, which cut the fraction off
        zoomer.zoom(zoomer.getNextZoomLevel(1), QPointF());
    }
    QCOMPARE(percents, (QList<int> {10, 25, 50, 75, 100, 150, 200, 300, 400, 600, 800}));
}

void ZkMediaPlayerZoomerTest::limitsAndRefusesLevels()
{
    Zoomer zoomer(source, viewport);
    zoomer.zoom(std::numeric_limits<float>::quiet_NaN(), QPointF());
    zoomer.zoom(-1, QPointF());
    zoomer.zoom(0, QPointF(3, 3));
    QCOMPARE(zoomer.takeReports(), QString());
    zoomer.zoom(1, QPointF()); // the same rectangle, but no longer fitted
    zoomer.zoom(0.01F, QPointF());
    QCOMPARE(zoomer.frameRect(), QRectF(288, 162, 64, 36));
    zoomer.zoom(20, QPointF());
    zoomer.zoom(8, QPointF(5, 5));
    QCOMPARE(zoomer.takeReports(), QStringLiteral("111"));
    zoomer.d.setZoomEnabled(false);
    zoomer.zoom(4, QPointF());
    zoomer.zoom(0, QPointF());
    QCOMPARE(zoomer.frameRect().size(), QSizeF(5120, 2880));
    QCOMPARE(zoomer.takeReports(), QString());
}

void ZkMediaPlayerZoomerTest::pans()
{
    Zoomer zoomer(source, viewport);
    zoomer.zoom(2, QPointF());
    zoomer.panBy(QPointF(10, 10)); // none was begun
    QCOMPARE(zoomer.takeReports(), QStringLiteral("1"));
    QCOMPARE(zoomer.frameRect(), QRectF(-320, -180, 1280, 720));
    zoomer.beginPan();
    zoomer.panBy(QPointF(10.4, 0));
    QCOMPARE(zoomer.frameRect().topLeft(), QPointF(-310, -180));
    zoomer.panBy(QPointF(1000, 1000));
    QCOMPARE(zoomer.frameRect().topLeft(), QPointF(0, 0));
    zoomer.panBy(QPointF(2000, 2000)); // no further
    zoomer.panBy(QPointF(-20, 30)); // from where it began
    QCOMPARE(zoomer.frameRect().topLeft(), QPointF(-340, -150));
    zoomer.panBy(QPointF(-1000, -1000));
    zoomer.endPan();
    zoomer.panBy(QPointF(500, 500));
    QCOMPARE(zoomer.frameRect().topLeft(), QPointF(-640, -360));
    QCOMPARE(zoomer.takeReports(), QStringLiteral("2222"));

    // Zooming out about any point keeps the view port covered, or the frame in its middle.
    zoomer.zoom(1.5F, QPointF(1, 1));
    QCOMPARE(zoomer.frameRect(), QRectF(-320, -180, 960, 540));
    zoomer.zoom(0.5F, QPointF(1, 1));
    QCOMPARE(zoomer.frameRect(), QRectF(160, 90, 320, 180));
    QVERIFY(!zoomer.canPan());

    zoomer.d.setViewport(QSizeF(1280, 360), 1); // only the height does not fit
    zoomer.zoom(1.5F, QPointF());
    QVERIFY(zoomer.canPan());
    zoomer.beginPan();
    zoomer.panBy(QPointF(50, 50));
    QCOMPARE(zoomer.frameRect(), QRectF(160, -40, 960, 540));
}

void ZkMediaPlayerZoomerTest::zoomsDuringAPan()
{
    Zoomer zoomer(source, viewport);
    zoomer.zoom(2, QPointF());
    zoomer.beginPan();
    zoomer.panBy(QPointF(100, 50));
    zoomer.zoom(4, QPointF(320, 180));
    const QRectF zoomed = zoomer.frameRect();
    zoomer.panBy(QPointF(100, 50)); // the mouse has not moved since
    QCOMPARE(zoomer.frameRect(), zoomed);
    zoomer.panBy(QPointF(90, 55));
    QCOMPARE(zoomer.frameRect(), zoomed.translated(-10, 5));
}

void ZkMediaPlayerZoomerTest::resizes()
{
    Zoomer zoomer(source, viewport);
    zoomer.zoom(4, QPointF(600, 20));
    const QRectF before = zoomer.frameRect();
    zoomer.d.setViewport(QSizeF(300, 160), 2);
    QCOMPARE(zoomer.frameRect(), before.translated(-170, -100)); // what was in the middle still is
    zoomer.d.setViewport(viewport, 1);
    QCOMPARE(zoomer.frameRect(), before);
    zoomer.d.setViewport(viewport, 1);
    QCOMPARE(zoomer.takeReports(), QStringLiteral("1111"));

    zoomer.zoom(0, QPointF());
    zoomer.d.setViewport(QSizeF(64, 64), 1);
    QCOMPARE(zoomer.frameRect(), QRectF(0, 14, 64, 36));
    zoomer.d.setViewport(QSizeF(), 1);
    QCOMPARE(zoomer.frameRect(), QRectF(QPointF(), source));
}

void ZkMediaPlayerZoomerTest::changesSource()
{
    Zoomer zoomer({}, {});
    zoomer.zoom(3, QPointF(5, 5));
    zoomer.beginPan();
    zoomer.panBy(QPointF(5, 5));
    QVERIFY(zoomer.frameRect().isNull());
    QVERIFY(!zoomer.canPan());
    zoomer.d.setSourceSize(source, true);
    QCOMPARE(zoomer.frameRect(), QRectF(-640, -360, 1920, 1080));
    zoomer.d.setSourceSize(QSize(320, 480), false);
    QCOMPARE(zoomer.frameRect(), QRectF(0, 0, 320, 480));
}

ZK_TEST_MAIN(ZkMediaPlayerZoomerTest)
#include "ZkMediaPlayerZoomerTest.moc"
