#include "ErasingBench.h"
#include "ZkTestMain.h"

#include <QRandomGenerator>

#include <ctime>
#include <limits>

using namespace zk::datamodel;
using namespace zk::test;

namespace {

const QStringList added {"88", "13", "node 0"};
const QStringList removed {"89", "13", "node 0"};
const QStringList updated {"90", "13", "node 0"};
const QRectF left(0.125, 0.25, 0.25, 0.5);
const QRectF right(0.5, 0.25, 0.25, 0.5);

AreaPtr areaOf(qint64 id, const QRectF &rect)
{
    return QSharedPointer<Area>::create(Area {id, rect, {}});
}

qint64 nearestByHand(const Areas &areas, const QPointF &point)
{
    qint64 id = -1;
    double best = std::numeric_limits<double>::max();
    for (const AreaPtr &area : areas) {
        const QPointF way = area->rect.center() - point;
        const double distance = QPointF::dotProduct(way, way);
        if (area->rect.contains(point) && distance < best) {
            best = distance;
            id = area->id;
        }
    }
    return id;
}

// Of clearing that many areas as the user's "clear all" does it: all ids first.
// Of the processor, so that what else the machine does counts little.
qint64 ticksToClear(ErasingBench *bench, int count)
{
    ZkStudioSmartKeyingService *service = bench->service();
    for (int i = 0; i < count; ++i) {
        const int cell = i * 1000 / count; // over all of the frame, however many
        service->addArea({(cell % 40) / 40.0, (cell / 40) / 25.0, 0.02, 0.03});
    }
    const std::clock_t start = std::clock();
    QVector<qint64> ids;
    for (int i = 0; i < service->areaCount(); ++i)
        ids.append(bench->idOf(i));
    for (qint64 id : qAsConst(ids))
        service->removeArea(id);
    return service->areaCount() == 0 && ids.size() == count ? qint64(std::clock() - start) : -1;
}

} // namespace

class ZkAreasTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { bench.emplace(); }
    void cleanup() { bench.reset(); }

    void indexFindsWhatALoopFinds()
    {
        QRandomGenerator random(3);
        const auto any = [&](double upTo) { return random.generateDouble() * upTo; };
        AreaIndex index;
        Areas areas;
        for (int i = 0; i < 400; ++i) {
            areas = withArea(areas, areaOf(i % 300, {any(0.7), any(0.7), any(0.3), any(0.3)}));
            if (i % 5 == 0)
                areas = withoutArea(areas, random.bounded(300));
            index.setAreas(areas);
            for (int j = 0; j < 10; ++j) {
                const QPointF point(any(1.1), any(1.1));
                QCOMPARE(index.find(point), nearestByHand(areas, point));
            }
        }
        // Around the same centre the smallest one, then the last one.
        const QRectF inner(0.25, 0.25, 0.5, 0.5);
        index.setAreas({areaOf(1, inner), areaOf(2, {0, 0, 1, 1}), areaOf(3, inner)});
        QCOMPARE(index.find({0.5, 0.5}), 3);
        QCOMPARE(index.find({0.125, 0.125}), 2);
    }

    void everyChangeIsUndone()
    {
        ZkStudioSmartKeyingService *service = bench->service();
        QCOMPARE(service->addArea(left), 0);
        QCOMPARE(bench->journal.take(), added);
        QCOMPARE(service->addArea({0.5, 0.75, -0.25, -0.5}), 1); // drawn from its corner
        const qint64 id = bench->idOf(0);
        QVERIFY(service->updateArea(id, left)); // as it is
        QCOMPARE(bench->undo()->undoStepCount(), 2);
        bench->journal.take();
        QVERIFY(service->updateArea(id, {0.75, 0.5, 0.5, 0.25}));
        QCOMPARE(bench->journal.take(), updated);
        QCOMPARE(service->areaRect(0), QRectF(0.75, 0.5, 0.25, 0.25)); // what is in the frame
        QVERIFY(service->removeArea(id));
        QCOMPARE(bench->journal.take(), removed);
        const qint64 last = bench->idOf(0);
        QVERIFY(last != id && bench->hasArea(0, {0.25, 0.25, 0.25, 0.5}));

        QVERIFY(bench->undo()->undo() && bench->undo()->undo());
        QCOMPARE(bench->journal.take(), added + updated);
        QVERIFY(service->areaRectAt(0) == left && bench->idOf(0) == id && bench->idOf(1) == last);
        QVERIFY(bench->undo()->undo() && bench->undo()->undo());
        QVERIFY(service->areaCount() == 0 && service->segmentCount() == 0);
        for (int i = 0; i < 4; ++i)
            QVERIFY(bench->undo()->redo());
        QVERIFY(bench->idOf(0) == last && !bench->undo()->canRedo());
    }

    void wrongRectangles()
    {
        ZkStudioSmartKeyingService *service = bench->service();
        for (const QRectF &rect : {QRectF(), QRectF(0.5, 0.5, 0, 0.1), QRectF(1, 0, 0.5, 0.5)})
            QCOMPARE(service->addArea(rect), -1);
        QCOMPARE(service->addArea(left), 0);
        bench->journal.take();
        const qint64 id = bench->idOf(0);
        QVERIFY(!service->updateArea(id, {-0.5, 0, 0.25, 1}) && !service->updateArea(id + 1, left));
        QVERIFY(!service->removeArea(-1) && service->findAreaIdAt(0.9, 0.9) == -1);
        QVERIFY(service->areaRectAt(-1).isNull() && service->areaRect(1).isNull());
        QVERIFY(bench->journal.take().isEmpty() && bench->undo()->undoStepCount() == 1);
    }

    // Boxes around the same centre are areas of their own, each found by its own centre, and cover the
    // pixels that were asked for.
    void sameCentresAreToldApart()
    {
        ZkStudioSmartKeyingService *service = bench->service();
        service->setObjectFinder({});
        const QRectF whole(0, 0, 1, 1);
        const QRectF around(0.0625, 0.125, 0.375, 0.75); // left
        for (const QRectF &rect : {left, left, around, whole, whole, left})
            service->addArea(rect);
        const auto ids = [&] {
            QVector<qint64> found;
            for (int i = 0; i < service->areaCount(); ++i) {
                const qint64 id = bench->idOf(i);
                if (!found.contains(id))
                    found.append(id);
            }
            return found;
        };
        QCOMPARE(ids().size(), 6);
        const QRectF moved = service->areaRectAt(5);
        for (const int width : {1920, 8192}) {
            QCOMPARE(int(moved.x() * width), int(left.x() * width));
            QCOMPARE(int(moved.width() * width), int(left.width() * width));
        }
        QCOMPARE(service->segments().node(0)->areas.at(5)->object,
                 service->segments().node(0)->areas.at(0)->object);
        QVERIFY(service->areaRectAt(4).width() > 0.999 && whole.contains(service->areaRectAt(4)));

        QVERIFY(service->updateArea(ids().at(3), right) && service->updateArea(ids().at(3), right));
        QCOMPARE(bench->undo()->undoStepCount(), 7);
        QVERIFY(service->updateArea(ids().at(3), left));
        QCOMPARE(ids().size(), 6);
        QVERIFY(bench->undo()->undo() && service->areaRectAt(3) == right);
        const QVector<qint64> all = ids();
        for (qint64 id : all)
            QVERIFY(service->removeArea(id));
        QVERIFY(service->areaCount() == 0 && service->segmentCount() == 0);
    }

    void boxBecomesItsObject()
    {
        const QImage truth = EditClip::instance().matte(0);
        const QRect box = boxOf(truth).adjusted(-4, -4, 4, 4);
        QCOMPARE(bench->service()->addArea(fractions(box)), 0);
        const double iou = agreementOf(bench->maskAt(0), truth);
        QVERIFY2(iou >= 0.8, qPrintable(QString::number(iou)));
        // Nothing surrounds it, so nothing stands out.
        QVERIFY(bench->service()->updateArea(bench->idOf(0), {0, 0, 1, 1}));
        QCOMPARE(bench->maskAt(0), maskOf(QRect(QPoint(), EditClip::size)));
    }

    // The mask of a node is all that its areas and its brush have.
    void areasAndBrush()
    {
        ZkStudioSmartKeyingService *service = bench->service();
        service->setObjectFinder({}); // all of the area is the object
        const QImage leftMask = maskOf(QRect(20, 23, 40, 45), 255);
        QCOMPARE(service->addArea({20 / 160.0, 23 / 90.0, 40 / 160.0, 45 / 90.0}), 0);
        QCOMPARE(bench->maskAt(0), leftMask);
        const QImage stroke = strokeOn(QRect(120, 40, 10, 10));
        QVERIFY(bench->controller->addMask(0, stroke));
        const QImage brush = bench->segments().node(0)->brush.decoded();
        QVERIFY(service->overlapsMask(stroke, 0));
        QCOMPARE(bench->maskAt(0).pixelColor(30, 30), QColor(Qt::white));
        // The eraser takes from both, and an area that is empty goes.
        QVERIFY(bench->controller->eraseMask(0, strokeOn(QRect(20, 23, 20, 45))));
        QVERIFY(bench->maskAt(0).pixelColor(30, 30).red() == 0 && service->areaCount() == 1);
        bench->journal.take();
        QVERIFY(bench->controller->eraseMask(0, strokeOn(QRect(40, 0, 25, 90))));
        QCOMPARE(bench->journal.take(), removed);
        QVERIFY(service->overlapsMask(stroke, 0) && service->segmentCount() == 1);
        QVERIFY(bench->controller->eraseMask(0, strokeOn(QRect(QPoint(), EditClip::size))));
        QVERIFY(service->segmentCount() == 0 && service->maskItemCount() == 0);
        for (int i = 0; i < 3; ++i)
            QVERIFY(bench->undo()->undo());
        QVERIFY(service->removeArea(bench->idOf(0)));
        QCOMPARE(bench->maskAt(0), brush);
    }

    void listIsThatOfTheShownFrame()
    {
        ZkStudioSmartKeyingService *service = bench->service();
        bench->show(3);
        service->addArea(left);
        bench->journal.take();
        bench->show(5);
        QVERIFY(bench->journal.take().isEmpty()); // whoever moves the playhead is done first
        QCoreApplication::processEvents();
        QCOMPARE(bench->journal.take(), QStringList({"90", "13"}));
        bench->show(6);
        QCoreApplication::processEvents();
        QVERIFY(bench->journal.take().isEmpty() && service->areaCount() == 0);
        service->addArea(right);
        bench->show(3);
        QVERIFY(bench->hasArea(0, left));
        QVERIFY(service->segmentIndexAt(6) == 1 && service->segmentNodeAt(0) == 3);
        bench->journal.take();
        QVERIFY(bench->undo()->undo()); // of another frame
        QCOMPARE(bench->journal.take(), QStringList({"89", "13", "node 6"}));
        QVERIFY(bench->hasArea(0, left));
    }

    void reportsWaitForTheEndOfAPause()
    {
        bench->service()->addArea(left);
        bench->journal.take();
        {
            const ZkPauseEventCommander pause(bench->undo());
            bench->service()->removeArea(bench->idOf(0));
            QVERIFY(bench->journal.take().isEmpty());
        }
        QCOMPARE(bench->journal.take(), removed);
    }

    void noChangesWhileTracking()
    {
        ZkStudioSmartKeyingService *service = bench->service();
        QVERIFY(bench->giveTruth(0));
        bench->show(2);
        service->addArea(left);
        const qint64 id = bench->idOf(0);
        QCOMPARE(bench->start(0), 0);
        QVERIFY(service->addArea(right) == -1 && !service->removeArea(id));
        QVERIFY(!service->updateArea(id, right) && !service->removeSegmentNode(0));
        QVERIFY(!bench->controller->deleteSegment(0));
        QVERIFY(!service->setNodeResult(1, service->nodeResult(0)));
        service->clearTrackingResults();
        QCOMPARE(service->segmentCount(), 2);
        bench->controller->stopTracking();
        QVERIFY(service->removeArea(id));
    }

    // Four times as many areas may take four times as long, with room for a busy machine; sixteen times
    // would be a search through all of them for each.
    void clearingIsLinear()
    {
        bench->service()->setObjectFinder({});
        const auto quickest = [this](int count) {
            qint64 best = std::numeric_limits<qint64>::max();
            for (int i = 0; i < 3; ++i)
                best = qMin(best, ticksToClear(&*bench, count));
            bench->undo()->clearHistory();
            return best;
        };
        const qint64 few = quickest(250);
        const qint64 many = quickest(1000);
        QVERIFY(few > 0 && many > 0);
        QVERIFY2(many < 10 * few, qPrintable(QStringLiteral("%1 %2 ticks").arg(few).arg(many)));
    }

private:
    std::optional<ErasingBench> bench;
};

ZK_TEST_MAIN(ZkAreasTest)
#include "ZkAreasTest.moc"
