#include "ZkTestInput.h"
#include "ZkTestMain.h"

#include "widgets/ZkMultiCrop.h"

#include <QApplication>

using Crop = ZkMultiCropWidget;

namespace {

const QRect canvas(20, 10, 300, 200);
const QRect first(40, 30, 80, 60);
const QRect second(100, 60, 90, 90); // overlaps the first

// Writes down what the editor reports, and what its parent gets to see.
class Bench : public QWidget
{
public:
    Bench()
        : editor(this)
    {
        resize(360, 240);
        editor.resize(size());
        editor.setCanvasRect(canvas);
        connect(&editor, &Crop::sigCropCreated, this, [this](int id, const QRect &rect) {
            note("created %1 %2", id, rect);
        });
        connect(&editor, &Crop::sigCropRemoved, this, [this](int id) { note("removed %1", id); });
        connect(&editor, &Crop::sigCropActivated, this, [this](int id) { note("active %1", id); });
        connect(&editor, &Crop::sigCropMoveStarted, this, [this](int id, Crop::OperationType type) {
            note("started %1 " + QByteArray::number(type), id);
        });
        connect(&editor, &Crop::sigCropMoving, this, [this] { ++moves; });
        connect(&editor,
                &Crop::sigCropMoveFinished,
                this,
                [this](int id, Crop::OperationType type, const QRect &rect) {
                    note("finished %1 " + QByteArray::number(type) + " %2", id, rect);
                });
        show();
    }

    QStringList taken() { return std::exchange(m_journal, {}); }
    void dragFrom(const QPoint &from, const QPoint &to)
    {
        QTest::mousePress(&editor, Qt::LeftButton, {}, from);
        zk::test::drag(&editor, (from + to) / 2);
        zk::test::drag(&editor, to);
    }
    void draw(const QPoint &from, const QPoint &to)
    {
        dragFrom(from, to);
        QTest::mouseRelease(&editor, Qt::LeftButton, {}, to);
    }
    void fill(int activeId = -1) { editor.setCropRectsWithIds({first, second}, {7, 9}, activeId); }

    Crop editor;
    int moves = 0;
    int seenByParent = 0;

protected:
    void mousePressEvent(QMouseEvent *) override { ++seenByParent; }
    void mouseMoveEvent(QMouseEvent *) override { ++seenByParent; }

private:
    void note(const QByteArray &text, int id, const QRect &rect = {})
    {
        QString line = QString::fromLatin1(text).arg(id);
        if (!rect.isNull())
            line = line.arg(QStringLiteral("%1,%2 %3x%4")
                                .arg(rect.x())
                                .arg(rect.y())
                                .arg(rect.width())
                                .arg(rect.height()));
        m_journal.append(line);
    }

    QStringList m_journal;
};

} // namespace

class ZkMultiCropWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void drawsWithinTheCanvas()
    {
        Bench bench;
        bench.draw({200, 150}, {350, 230}); // beyond its bottom right
        QCOMPARE(bench.taken(), QStringList {"created 0 200,150 120x60"});
        QCOMPARE(bench.editor.activeCrop(), 0);
        bench.draw({60, 50}, {63, 90});
        QCOMPARE(bench.taken(), QStringList {"active -1"}); // too narrow, but a click beside
        bench.draw({5, 5}, {100, 100});
        QVERIFY(bench.taken().isEmpty());
        QCOMPARE(bench.editor.getCropRects().size(), 1);
    }

    void movesAndStops_data()
    {
        QTest::addColumn<int>("handle");
        QTest::addColumn<QPoint>("by");
        QTest::addColumn<QString>("result");
        QTest::newRow("move") << int(Crop::MoveOperation) << QPoint(10, 20) << "50,50 80x60";
        QTest::newRow("move out") << int(Crop::MoveOperation) << QPoint(-90, 500) << "20,150 80x60";
        QTest::newRow("top left") << int(Crop::ResizeTopLeft) << QPoint(-5, 6) << "35,36 85x54";
        QTest::newRow("top") << int(Crop::ResizeTop) << QPoint(9, -90) << "40,10 80x80";
        QTest::newRow("top right") << int(Crop::ResizeTopRight) << QPoint(5, 6) << "40,36 85x54";
        QTest::newRow("right") << int(Crop::ResizeRight) << QPoint(-200, 0) << "40,30 4x60";
        QTest::newRow("bottom right")
            << int(Crop::ResizeBottomRight) << QPoint(5, 6) << "40,30 85x66";
        QTest::newRow("bottom") << int(Crop::ResizeBottom) << QPoint(0, 6) << "40,30 80x66";
        QTest::newRow("bottom left")
            << int(Crop::ResizeBottomLeft) << QPoint(8, 6) << "48,30 72x66";
        QTest::newRow("left") << int(Crop::ResizeLeft) << QPoint(8, 6) << "48,30 72x60";
    }
    void movesAndStops()
    {
        QFETCH(int, handle);
        QFETCH(QPoint, by);
        QFETCH(QString, result);
        for (const bool isCancelled : {false, true}) {
            Bench bench;
            bench.editor.setCropRectsWithIds({first}, {7}, 7);
            const auto type = Crop::OperationType(handle);
            const QPoint from = handle == Crop::MoveOperation
                ? first.center()
                : bench.editor.handleRect(type).center();
            bench.dragFrom(from, from + by);
            QVERIFY(bench.moves > 0);
            if (isCancelled)
                QTest::keyClick(&bench, Qt::Key_Escape); // which is not the editor
            QTest::mouseRelease(&bench.editor, Qt::LeftButton, {}, from + by);
            const QString last = isCancelled ? QStringLiteral("40,30 80x60") : result;
            QCOMPARE(bench.taken(),
                     QStringList({QStringLiteral("started 0 %1").arg(handle),
                                  QStringLiteral("finished 0 %1 %2").arg(handle).arg(last)}));
            QCOMPARE(bench.editor.getCropRects().first() == first, isCancelled);
        }
    }

    void choosesAmongThoseThatOverlap()
    {
        Bench bench;
        bench.fill();
        const QPoint common(110, 75);
        QTest::mouseClick(&bench.editor, Qt::LeftButton, {}, common);
        QCOMPARE(bench.taken(), QStringList {"active 0"});
        bench.fill(9);
        QTest::mouseClick(&bench.editor, Qt::LeftButton, {}, common);
        QVERIFY(bench.taken().isEmpty()); // the active one comes first
        zk::test::drag(&bench.editor, first.center(), Qt::NoButton);
        QCOMPARE(bench.editor.hoveredCrop(), 0);
        zk::test::drag(&bench.editor, {-1, -1}, Qt::NoButton);
        QCOMPARE(bench.editor.hoveredCrop(), -1);
    }

    void removesByButton()
    {
        Bench bench;
        bench.fill(9);
        const QRect button = bench.editor.closeButtonRect();
        bench.dragFrom(button.center(), first.topLeft());
        QTest::mouseRelease(&bench.editor, Qt::LeftButton, {}, first.topLeft());
        QVERIFY(bench.taken().isEmpty()); // let go elsewhere
        QTest::mouseClick(&bench.editor, Qt::LeftButton, {}, button.center());
        QCOMPARE(bench.taken(), QStringList {"removed 1"});
        QCOMPARE(bench.editor.getCropRects(), QList<QRect> {first});
    }

    void followsTheKeys_data()
    {
        QTest::addColumn<bool>("fromElsewhere");
        QTest::newRow("its own") << false;
        QTest::newRow("those of another widget") << true;
    }
    void followsTheKeys()
    {
        QFETCH(bool, fromElsewhere);
        Bench bench;
        QWidget elsewhere;
        if (fromElsewhere)
            bench.editor.setKeySource(&elsewhere);
        QWidget *target = fromElsewhere ? &elsewhere : &bench.editor;
        bench.fill();
        QTest::keyClick(target, Qt::Key_Delete); // none is active
        QTest::keyClick(target, Qt::Key_PageDown);
        QTest::keyClick(target, Qt::Key_PageUp);
        QTest::keyClick(target, Qt::Key_Right, Qt::ShiftModifier);
        QTest::keyClick(target, Qt::Key_Down, Qt::ControlModifier);
        QTest::keyClick(target, Qt::Key_Up);
        QCOMPARE(bench.taken(),
                 QStringList({"active 0",
                              "active 1",
                              "started 1 0",
                              "finished 1 0 110,60 90x90",
                              "started 1 0",
                              "finished 1 0 110,59 90x90"}));
        QKeyEvent asked(QEvent::ShortcutOverride, Qt::Key_Delete, {});
        asked.ignore();
        QCoreApplication::sendEvent(target, &asked);
        QVERIFY(asked.isAccepted()); // a window's shortcut must not get it
        QTest::keyClick(target, Qt::Key_Delete);
        QCOMPARE(bench.taken(), QStringList {"removed 1"});
    }

    void leavesTheRestToItsParent()
    {
        Bench bench;
        bench.fill(7);
        QTest::mousePress(&bench.editor, Qt::MiddleButton, {}, first.center());
        zk::test::drag(&bench.editor, {100, 100}, Qt::MiddleButton);
        QTest::mouseRelease(&bench.editor, Qt::MiddleButton, {}, first.center());
        QTest::mouseClick(&bench.editor, Qt::RightButton, {}, first.center());
        QCOMPARE(bench.seenByParent, 3);

        bench.editor.setBackgroundOnlyMode(true);
        QVERIFY(bench.editor.closeButtonRect().isEmpty());
        bench.draw(first.center(), {200, 150});
        QTest::keyClick(&bench.editor, Qt::Key_Delete);
        QCOMPARE(bench.seenByParent, 6);
        QVERIFY(bench.taken().isEmpty());
    }

    // Whoever listens rebuilds the list and processes events at once.
    void survivesARebuildFromItsSignals()
    {
        Bench bench;
        QList<QRect> rects {first};
        const auto rebuild = [&] {
            QList<int> ids;
            for (int index = 0; index < rects.size(); ++index)
                ids.append(index);
            const QSignalBlocker blocker(&bench.editor);
            bench.editor.clearCropRects();
            bench.editor.setCropRectsWithIds(rects, ids, rects.size() - 1);
            bench.editor.repaint();
            QCoreApplication::processEvents();
        };
        rebuild();
        connect(&bench.editor, &Crop::sigCropCreated, this, [&](int, const QRect &rect) {
            rects.append(rect);
            rebuild();
        });
        connect(&bench.editor, &Crop::sigCropRemoved, this, [&](int id) {
            rects.removeAt(id);
            rebuild();
        });
        bench.draw({200, 100}, {260, 160});
        QCOMPARE(bench.editor.getCropRects(), (QList<QRect> {first, {200, 100, 60, 60}}));
        QTest::mouseClick(
            &bench.editor, Qt::LeftButton, {}, bench.editor.closeButtonRect().center());
        QCOMPARE(bench.editor.activeCrop(), 0);
        QTest::keyClick(&bench.editor, Qt::Key_Delete);
        QCOMPARE(bench.taken(), QStringList({"created 1 200,100 60x60", "removed 1", "removed 0"}));
    }

    void carriesADragThroughARebuild()
    {
        Bench bench;
        bench.fill(7);
        bench.dragFrom({60, 50}, {70, 50});
        bench.taken();
        bench.editor.clearCropRects();
        zk::test::drag(&bench.editor, {71, 50});
        // The picture was zoomed to twice its size meanwhile.
        bench.editor.setCanvasRect({0, 0, 400, 400});
        bench.editor.setCropRectsWithIds({second, {40, 30, 160, 120}}, {9, 7}, 7);
        QCOMPARE(bench.editor.getCropRects().last(), QRect(31, 10, 160, 120));
        zk::test::drag(&bench.editor, {90, 80});
        QTest::mouseRelease(&bench.editor, Qt::LeftButton, {}, {90, 80});
        QCOMPARE(bench.taken(), QStringList {"finished 1 0 50,40 160x120"});

        bench.dragFrom(second.center(), second.center() + QPoint(5, 5));
        bench.editor.setCropRectsWithIds({first}, {9}, -1); // the dragged one is gone
        QVERIFY(!bench.editor.isDragging());
    }

    void cancelsADragWhenItIsHiddenOrDisabled()
    {
        Bench bench;
        bench.fill(7);
        bench.dragFrom(first.center(), {100, 100});
        bench.editor.hide();
        bench.editor.show();
        bench.dragFrom(first.center(), {100, 100});
        bench.editor.setEnabled(false);
        const QString put = QStringLiteral("finished 0 0 40,30 80x60");
        QCOMPARE(bench.taken(), QStringList({"started 0 0", put, "started 0 0", put}));
    }
};

ZK_TEST_MAIN(ZkMultiCropWidgetTest)
#include "ZkMultiCropWidgetTest.moc"
