// Random events to an open workspace. The seed chooses them; what they meet depends on time, too:
//   tst_workspace_monkey --events 20000 --seed 7
#pragma once

#include "WorkspaceBench.h"

#include "segmentation/ZkStudioSmartKeyingService.h"

#include <QRandomGenerator>
#include <QSlider>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <functional>

namespace zk::test {

// What undoing everything and redoing it must lead back to.
struct Outcome
{
    QList<qint64> nodes;
    QString preset;
    int penWidth = 0;

    bool operator==(const Outcome &other) const
    {
        return nodes == other.nodes && preset == other.preset && penWidth == other.penWidth;
    }
};

class WorkspaceMonkey : public QObject
{
    Q_OBJECT

public:
    using Opening = std::function<std::unique_ptr<WorkspaceBench>()>;

    WorkspaceMonkey(const Opening &bench, int eventCount, quint32 seed)
        : m_createBench(bench)
        , m_eventCount(eventCount)
        , m_seed(seed)
    { }

private:
    const Opening m_createBench;
    const int m_eventCount;
    const quint32 m_seed;
    QRandomGenerator m_random;
    std::unique_ptr<WorkspaceBench> m_bench;
    Qt::MouseButton m_button = Qt::NoButton; // that is held
    QPointer<QWidget> m_pressed;
    int m_events = 0;
    int m_openings = 0;
    bool m_isPaused = false;

    int upTo(int bound) { return int(m_random.bounded(bound)); }
    bool chance(int percent) { return upTo(100) < percent; }
    template<typename Container>
    auto any(const Container &container)
    {
        return *(std::begin(container) + upTo(int(std::size(container))));
    }

    bool open()
    {
        ++m_openings;
        m_isPaused = true;
        m_bench.reset();
        m_bench = m_createBench();
        m_isPaused = !m_bench->open();
        return !m_isPaused;
    }

    // The topmost window counts: a question, a dialog or a menu before the page.
    QWidget *anyTarget()
    {
        QWidget *const modal = QApplication::activePopupWidget()
            ? QApplication::activePopupWidget()
            : QApplication::activeModalWidget();
        for (QWidget *const paper : {m_bench->paper(), static_cast<QWidget *>(m_bench->canvas())}) {
            if (!modal && chance(50) && paper && paper->isVisible())
                return paper;
        }
        QWidget *const root = modal ? modal : m_bench->page;
        QVector<QWidget *> widgets {root};
        for (QWidget *const widget : root->findChildren<QWidget *>()) {
            if (widget->isVisible())
                widgets.append(widget);
        }
        return any(widgets);
    }
    Qt::KeyboardModifiers anyModifiers()
    {
        static constexpr Qt::KeyboardModifier modifiers[] = {
            Qt::NoModifier, Qt::NoModifier, Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier};
        return any(modifiers);
    }
    QPoint anyPoint(const QWidget *widget)
    {
        return {upTo(widget->width() + 1), upTo(widget->height() + 1)};
    }
    static QPoint inWindow(const QWidget *widget, const QPoint &point)
    {
        return widget->mapTo(widget->window(), point);
    }

    void pressOrRelease()
    {
        if (m_button != Qt::NoButton) {
            QWidget *const widget = m_pressed;
            const Qt::MouseButton button = std::exchange(m_button, Qt::NoButton);
            if (widget && widget->window()->windowHandle())
                QTest::mouseRelease(widget->window()->windowHandle(),
                                    button,
                                    Qt::NoModifier,
                                    inWindow(widget, anyPoint(widget)));
            return;
        }
        static constexpr Qt::MouseButton buttons[] = {
            Qt::LeftButton, Qt::LeftButton, Qt::LeftButton, Qt::MiddleButton, Qt::RightButton};
        m_pressed = anyTarget();
        m_button = any(buttons);
        const QPoint point = inWindow(m_pressed, anyPoint(m_pressed));
        if (QWindow *const window = m_pressed->window()->windowHandle())
            QTest::mousePress(window, m_button, anyModifiers(), point);
    }
    void move()
    {
        QWidget *const widget = m_pressed ? m_pressed.data() : anyTarget();
        const QPoint point = inWindow(widget, anyPoint(widget));
        if (QWindow *const window = widget->window()->windowHandle())
            QTest::mouseMove(window, point);
    }
    void turnWheel()
    {
        QWidget *const widget = anyTarget();
        const QPointF point = anyPoint(widget);
        QWheelEvent event(point,
                          widget->mapToGlobal(point.toPoint()),
                          QPoint(),
                          QPoint(0, chance(50) ? 120 : -120),
                          Qt::NoButton,
                          anyModifiers(),
                          Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(widget, &event);
    }
    void pressKey()
    {
        static constexpr Qt::Key keys[] = {
            Qt::Key_Z,     Qt::Key_Y,      Qt::Key_W,           Qt::Key_E,
            Qt::Key_H,     Qt::Key_M,      Qt::Key_T,           Qt::Key_R,
            Qt::Key_Tab,   Qt::Key_Left,   Qt::Key_Right,       Qt::Key_Up,
            Qt::Key_Down,  Qt::Key_Space,  Qt::Key_Slash,       Qt::Key_Equal,
            Qt::Key_Minus, Qt::Key_Delete, Qt::Key_BracketLeft, Qt::Key_BracketRight,
            Qt::Key_Home,  Qt::Key_Escape, Qt::Key_Return,      Qt::Key_F};
        QWidget *const modal = QApplication::activeModalWidget();
        const QPointer<QWindow> window = (modal ? modal : &m_bench->window)->windowHandle();
        const Qt::Key key = any(keys);
        const Qt::KeyboardModifiers modifiers = anyModifiers();
        // Not QTest's own, which go on using a window that the press has closed.
        const bool hasText = key >= Qt::Key_Space && key <= Qt::Key_AsciiTilde;
        const QString text = hasText ? QString(QChar(key)).toLower() : QString();
        if (window)
            qt_handleKeyEvent(window, QEvent::KeyPress, key, modifiers, text, false, 1);
        if (window)
            qt_handleKeyEvent(window, QEvent::KeyRelease, key, modifiers, text, false, 1);
    }
    void changeWindow()
    {
        if (chance(60)) {
            m_bench->window.resize(700 + upTo(900), 500 + upTo(500));
        } else {
            m_bench->window.hide();
            QCoreApplication::processEvents();
            m_bench->window.show();
        }
    }
    void act()
    {
        const int choice = upTo(100);
        if (choice < 30)
            pressOrRelease();
        else if (choice < 62)
            move();
        else if (choice < 72)
            turnWheel();
        else if (choice < 97)
            pressKey();
        else if (choice < 99)
            changeWindow();
        else if (chance(20))
            m_bench->page->requestClose();
    }

    // Also from inside the loops of dialogs. Nothing comes from the user while a stroke is segmented.
    void next()
    {
        QTimer::singleShot(1, this, &WorkspaceMonkey::next);
        if (m_isPaused || m_bench->closedCount > 0 || !m_bench->takesInput())
            return;
        if (m_bench->page->isSegmenting()) {
            if (chance(1))
                m_bench->page->closeWithoutAsking();
            return;
        }
        ++m_events;
        act();
    }

    Outcome outcome() const
    {
        const auto *service = static_cast<ZkStudioSmartKeyingService *>(m_bench->service());
        const IZkEffect *const effect = m_bench->presenter()->getEffect();
        return {service->segments().nodes().keys(),
                effect ? effect->descriptor()->slug() : QString(),
                m_bench->presenter()->penPixelWidth()};
    }
    // The history tells the same story in both directions.
    void checkHistory()
    {
        IZkUndoRedoService *const history = m_bench->presenter()->undoRedoService();
        m_bench->page->redo(); // commits what is under way
        const Outcome before = outcome();
        int undone = 0;
        while (history->undo())
            ++undone;
        while (undone-- > 0)
            QVERIFY(history->redo());
        QVERIFY(outcome() == before);
    }

private Q_SLOTS:
    void survives()
    {
        const zk::test::ExpectedMessage untracked(QStringLiteral("frames have no mask"));
        m_random.seed(m_seed);
        QVERIFY(open());
        next();
        while (m_events < m_eventCount) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
            if (m_bench->closedCount > 0)
                QVERIFY2(open(), "the workspace does not open again");
        }
        m_isPaused = true;
        qInfo("%d events, %d workspaces", m_events, m_openings);

        for (QMessageBox *box : m_bench->page->findChildren<QMessageBox *>())
            box->reject();
        if (m_bench->page->isOpen() && m_bench->closedCount == 0) {
            m_bench->presenter()->stopTrackingMode();
            m_bench->presenter()->cancelApply();
            QVERIFY(QTest::qWaitFor([this] { return !m_bench->page->isBusy(); }, 60000));
        }
        if (m_bench->page->isOpen() && m_bench->closedCount == 0)
            checkHistory();
        m_bench->page->closeWithoutAsking();
        QVERIFY(m_bench->waitForClosed());
    }
};

// Takes --events and --seed out of the arguments.
inline int runMonkey(int argc, char **argv, int eventCount, const WorkspaceMonkey::Opening &bench)
{
    return runMain(argc, argv, [eventCount, bench](int count, char **values) {
        int events = eventCount;
        quint32 seed = 1;
        QVector<char *> rest;
        for (int i = 0; i < count; ++i) {
            const QByteArray word = values[i];
            if (word == "--events" && i + 1 < count)
                events = QByteArray(values[++i]).toInt();
            else if (word == "--seed" && i + 1 < count)
                seed = QByteArray(values[++i]).toUInt();
            else
                rest.append(values[i]);
        }
        QApplication application(count, values);
        WorkspaceMonkey monkey(bench, events, seed);
        return QTest::qExec(&monkey, rest.size(), rest.data());
    });
}

} // namespace zk::test
