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
    void fits()
    {
        const auto fitted = [](const QSize &source, const QSizeF &viewport) {
            Zoomer zoomer(source, viewport);
            zoomer.zoom(4, QPointF(1, 1));
            zoomer.zoom(0, QPointF(17, 30));
            return zoomer.zoomLevel(false) == 0 && !zoomer.canPan() ? zoomer.frameRect() : QRectF();
        };
        QCOMPARE(fitted({853, 479}, {640, 360}), QRectF(0, 1, 640, 359));
        QCOMPARE(fitted({1080, 1920}, {500, 500}), QRectF(110, 0, 281, 500));
        QCOMPARE(fitted({32, 16}, {640, 360}), QRectF(0, 20, 640, 320));
        QCOMPARE(fitted({853, 479}, {}), QRectF(0, 0, 853, 479)); // no widget
    }

    void keepsTheAnchor()
    {
        const QPointF anchor(123.5, 211.25);
        Zoomer zoomer(QSize(853, 479), QSizeF(641, 307));
        zoomer.zoom(1.5F, QPointF()); // fills the view port: from here on the anchor alone counts
        const QRectF before = zoomer.frameRect();
        for (const float level : {1.5F, 2.0F, 2.7F, 8.0F}) {
            zoomer.zoom(level, anchor);
            const QRectF frame = zoomer.frameRect();
            const double growth = frame.width() / before.width();
            const QPointF off = frame.topLeft() + (anchor - before.topLeft()) * growth - anchor;
            // Half a pixel of snapping before, magnified, half a pixel after, and that of the size.
            QVERIFY2(off.manhattanLength() <= 1.2 * (1 + growth),
                     qPrintable(QString::number(level)));
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

    void steps()
    {
        const auto next = [](const QSize &source, float level, int steps) {
            Zoomer zoomer(source, viewport);
            zoomer.zoom(level, QPointF());
            zoomer.zoom(zoomer.getNextZoomLevel(steps), QPointF());
            return zoomer.zoomLevel(false);
        };
        QCOMPARE(next(source, 1, -1), 0.75F);
        QCOMPARE(next(source, 6, 7), 8.0F);
        QCOMPARE(next(source, 0.25F, std::numeric_limits<int>::min()), 0.1F);
        QCOMPARE(next({1920, 1080}, 0, 1), 0.5F); // from a third
        QCOMPARE(next({32, 18}, 0, -1), 8.0F); // from above the largest level
    }

    void stepsOverEveryLevelOfTheZoomBoxes()
    {
        Zoomer zoomer(source, viewport);
        zoomer.zoom(0.1F, QPointF());
        QList<int> percents;
        for (float before = 0; zoomer.zoomLevel(false) > before;) {
            before = zoomer.zoomLevel(false);
            percents.append(int(before * 100)); // as the boxes do, which cut the fraction off
            zoomer.zoom(zoomer.getNextZoomLevel(1), QPointF());
        }
        QCOMPARE(percents, (QList<int> {10, 25, 50, 75, 100, 150, 200, 300, 400, 600, 800}));
    }

    void limitsAndRefusesLevels()
    {
        Zoomer zoomer(source, viewport);
        zoomer.zoom(std::numeric_limits<float>::quiet_NaN(), QPointF());
        zoomer.zoom(-1, QPointF());
        zoomer.zoom(0, QPointF(3, 3));
        QCOMPARE(zoomer.takeReports(), QString());
        zoomer.zoom(0.01F, QPointF());
        QCOMPARE(zoomer.frameRect(), QRectF(288, 162, 64, 36));
        zoomer.zoom(20, QPointF());
        zoomer.d.setZoomEnabled(false);
        zoomer.zoom(4, QPointF());
        QCOMPARE(zoomer.frameRect().size(), QSizeF(5120, 2880));
        QCOMPARE(zoomer.takeReports(), QStringLiteral("11"));
    }

    void pans()
    {
        Zoomer zoomer(source, viewport);
        zoomer.zoom(2, QPointF());
        zoomer.panBy(QPointF(10, 10)); // none was begun
        QCOMPARE(zoomer.takeReports(), QStringLiteral("1"));
        QCOMPARE(zoomer.frameRect(), QRectF(-320, -180, 1280, 720));
        zoomer.beginPan();
        zoomer.panBy(QPointF(2000, 2000)); // no further than the frame reaches
        QCOMPARE(zoomer.frameRect().topLeft(), QPointF(0, 0));
        zoomer.panBy(QPointF(-20, 30)); // from where it began
        QCOMPARE(zoomer.frameRect().topLeft(), QPointF(-340, -150));
        zoomer.panBy(QPointF(-1000, -1000));
        zoomer.endPan();
        zoomer.panBy(QPointF(500, 500));
        QCOMPARE(zoomer.frameRect().topLeft(), QPointF(-640, -360));
        QCOMPARE(zoomer.takeReports(), QStringLiteral("222"));

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

        zoomer.zoom(4, QPointF(320, 180));
        const QRectF zoomed = zoomer.frameRect();
        zoomer.panBy(QPointF(50, 50)); // the mouse has not moved since
        QCOMPARE(zoomer.frameRect(), zoomed);
        zoomer.panBy(QPointF(40, 55));
        QCOMPARE(zoomer.frameRect(), zoomed.translated(-10, 5));
    }

    void resizes()
    {
        Zoomer zoomer(source, viewport);
        zoomer.zoom(4, QPointF(600, 20));
        const QRectF before = zoomer.frameRect();
        zoomer.d.setViewport(QSizeF(300, 160), 2);
        // What was in the middle still is.
        QCOMPARE(zoomer.frameRect(), before.translated(-170, -100));
        zoomer.d.setViewport(viewport, 1);
        QCOMPARE(zoomer.frameRect(), before);
        QCOMPARE(zoomer.takeReports(), QStringLiteral("111"));
    }
};

ZK_TEST_MAIN(ZkMediaPlayerZoomerTest)
#include "ZkMediaPlayerZoomerTest.moc"
