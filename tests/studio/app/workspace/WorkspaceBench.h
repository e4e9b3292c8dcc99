// A workspace that is open on the sample clip, in a window, with real events for everything that a user
// can reach.
#pragma once

#include "ZkWorkspacePage.h"

#include "ZkCutClip.h"
#include "ZkMediaPlayer.h"
#include "ZkSampleClip.h"
#include "ZkSmartKeyingPresenter.h"
#include "ZkTestMain.h"
#include "ZkWidgets.h"
#include "library/ZkStudioProjectManager.h"
#include "timeline/ZkStudioEffect.h"
#include "timeline/ZkStudioTimeline.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QPointer>
#include <QTemporaryDir>
#include <QVBoxLayout>
#include <QWindow>

namespace zk::test {

// Written once per program: a clip, and a picture of its first frame.
class WorkspaceClip
{
public:
    static constexpr int frames = 10;
    static const WorkspaceClip &instance()
    {
        static const WorkspaceClip clip;
        return clip;
    }
    QString path() const { return m_folder.filePath(QStringLiteral("clip.mkv")); }
    QString stillPath() const { return m_folder.filePath(QStringLiteral("still.png")); }
    // Another scene begins at frame 6.
    QString cutPath() const { return m_folder.filePath(QStringLiteral("cut.mkv")); }
    QString libraryPath() const { return m_folder.filePath(QStringLiteral("library")); }

private:
    WorkspaceClip()
    {
        const media::SampleClip sample({QSize(320, 180), frames, 24});
        QString error;
        if (!sample.write(path(), QString(), &error) || !sample.frame(0).save(stillPath()))
            qFatal("The test clip cannot be written: %s", qPrintable(error));
        CutClip(QSize(320, 180), frames, 6).write(cutPath());
    }
    QTemporaryDir m_folder;
};

class WorkspaceBench
{
public:
    explicit WorkspaceBench(const QString &path = WorkspaceClip::instance().path(),
                            const QUrl &server = QUrl())
        : manager(settings(server))
    {
        QString error;
        timeline = ZkStudioTimeline::fromMediaFile(path, &error);
        if (!timeline)
            qFatal("The test clip cannot be read: %s", qPrintable(error));
        ZkSkinManager::instance()->applyStyleSheet(&window,
                                                   QStringLiteral("Application/MainWindow"));
    }
    virtual ~WorkspaceBench() { delete page; }

    bool open()
    {
        page = createPage();
        auto *const column = new QVBoxLayout(&window);
        column->setContentsMargins(0, 0, 0, 0);
        column->addWidget(page);
        window.resize(1280, 760);
        window.show();
        QObject::connect(page, &app::EditingPage::closed, &window, [this](bool applied) {
            ++closedCount;
            wasApplied = applied;
        });
        return QTest::qWaitForWindowActive(&window) && page->isOpen()
            && QTest::qWaitFor([this] { return presenter()->currentFrame() >= 0; }, 10000)
            && QTest::qWaitFor([this] { return paper()->isVisible(); }, 10000)
            && QTest::qWaitFor([this] { return presenter()->canvasRect().width() > 300; }, 10000);
    }
    virtual app::EditingPage *createPage()
    {
        return new app::WorkspacePage(timeline->clip(), &manager);
    }
    // What is drawn on when the workspace has opened.
    virtual QWidget *paper() const { return canvas(); }
    // Whether events of the user would be delivered now.
    virtual bool takesInput() const { return true; }

    ZkSmartKeyingPresenter *presenter() const { return page->presenter(); }
    IZkSmartKeyingService *service() const { return presenter()->smartKeyingService(); }
    ZkDrawingWidget *canvas() const { return page->findChild<ZkDrawingWidget *>(); }
    template<typename Widget>
    Widget *find(const char *name) const
    {
        return page->findChild<Widget *>(QString::fromLatin1(name));
    }
    void click(const char *button) const
    {
        QTest::mouseClick(find<QAbstractButton>(button), Qt::LeftButton);
    }
    // The other one hands the click straight to the widget, outside of all event loops.
    static void clickThroughWindow(QWidget *widget) { drag(widget, {widget->rect().center()}); }
    bool isEnabled(const char *button) const { return find<QAbstractButton>(button)->isEnabled(); }
    void key(int code, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&window, Qt::Key(code), modifiers);
    }

    // Through the window, as the system delivers it; points of the widget, which may go away meanwhile.
    static void drag(QWidget *widget, const QVector<QPoint> &points)
    {
        const QPointer<QWidget> alive(widget);
        const QPointer<QWindow> target(widget->window()->windowHandle());
        const auto deliver = [&](auto event, const QPoint &point) {
            if (alive && target)
                event(widget->mapTo(widget->window(), point));
        };
        const auto move = [&](const QPoint &at) { QTest::mouseMove(target, at); };
        deliver([&](const QPoint &at) { QTest::mousePress(target, Qt::LeftButton, {}, at); },
                points.first());
        for (const QPoint &point : points)
            deliver(move, point);
        deliver([&](const QPoint &at) { QTest::mouseRelease(target, Qt::LeftButton, {}, at); },
                points.last());
    }
    // A stroke over the balloon, whose mask comes later.
    void dragOverObject()
    {
        const QRect frame = canvas()->canvasRect();
        const auto at = [&frame](double x, double y) {
            return frame.topLeft() + QPoint(int(frame.width() * x), int(frame.height() * y));
        };
        drag(canvas(), {at(0.28, 0.3), at(0.3, 0.38), at(0.32, 0.45)});
    }
    bool hasMask() const { return service()->isEraseEnabled(presenter()->currentFrame()); }
    bool isIdle() const { return !page->isBusy() && presenter()->isUIControlsEnabled(); }
    bool paint()
    {
        dragOverObject();
        return QTest::qWaitFor([this] { return hasMask() && isIdle(); }, 10000);
    }

    QMessageBox *question() const { return page->findChild<QMessageBox *>(); }
    bool answer(QMessageBox::StandardButton button)
    {
        if (!QTest::qWaitFor([this] { return question() && question()->isVisible(); }, 10000))
            return false;
        QTest::mouseClick(question()->button(button), Qt::LeftButton);
        return true;
    }
    bool waitForClosed() const
    {
        return QTest::qWaitFor([this] { return closedCount > 0; }, 10000);
    }

    test::ExpectedMessage offscreen {QStringLiteral("^This plugin does not support")};
    ZkStudioProjectManager manager;
    std::unique_ptr<ZkStudioTimeline> timeline;
    QWidget window;
    app::EditingPage *page = nullptr;
    int closedCount = 0;
    bool wasApplied = false;

private:
    Q_DISABLE_COPY(WorkspaceBench)
    static datamodel::LibrarySettings settings(const QUrl &server)
    {
        datamodel::LibrarySettings settings;
        settings.directory = WorkspaceClip::instance().libraryPath();
        settings.server = server;
        settings.effectFactory = &ZkStudioEffect::fromLookJson;
        return settings;
    }
};

} // namespace zk::test
