// What a host does with the seven classes that the module exports, through nothing else of it. Every function
// says what came of it, for the caller to compare.
#pragma once

#include "ErasingWorkspace.h"

#include "erasing/ZkAIErasingView.h"
#include "workspace/ZkSmartKeyingPlayerView.h"

#include <QVBoxLayout>

// A window of a host for one of the module's views.
class HostWindow : public ZkUIView
{
public:
    HostWindow() { setViewPresenter(&m_scene); }
    QWidget *widget() override { return &m_window; }
    // What the view is made of after it has been on screen.
    QString show(QWidget *view)
    {
        (new QVBoxLayout(&m_window))->addWidget(view);
        m_window.resize(1200, 760);
        m_window.show();
        if (!QTest::qWaitForWindowExposed(&m_window))
            return QStringLiteral("not shown");
        const QImage picture = view->grab().toImage();
        QSet<QRgb> colours;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                colours.insert(picture.pixel(x, y));
        }
        return QStringLiteral("%1 with %2 buttons, %3")
            .arg(QString::fromLatin1(view->metaObject()->className()))
            .arg(view->findChildren<QAbstractButton *>().size())
            .arg(colours.size() > 10 ? QStringLiteral("painted") : QStringLiteral("blank"));
    }

private:
    class Scene : public ZkPresenter
    {
        bool dispatchMessage(ZkMessage *) override { return true; }
    };
    Scene m_scene;
    QWidget m_window;
};

inline QString usePresenter()
{
    Workspace workspace;
    QSignalSpy prompts(workspace.presenter.get(), &ZkSmartKeyingPresenter::sigPrompt);
    emit workspace.presenter->sigPrompt(ZkSmartKeyingPresenter::TrackingFailedPrompt);
    return QStringLiteral("presenter %1, prompt %2")
        .arg(workspace.presenter->isInitSuccessful())
        .arg(prompts.value(0).value(0).toInt());
}

inline QString usePresets()
{
    Workspace workspace;
    ZCutoutPresetItemManager manager(nullptr);
    manager.setCategory(ZKVBLMODEL::SmartCutoutCategory);
    manager.loadCutoutPresetFolder();
    QStringList names;
    for (const QModelIndex &index : manager.itemModel()->getAllIndexes())
        names += index.data(ZCutoutPresetItemModel::NameRole).toString();
    ZCutoutPresetItemModel none(nullptr);
    none.addVirtualNoneItem();
    const QImage icon(none.index(0, 0).data(ZCutoutPresetItemModel::ThumbnailPathRole).toString());
    return QStringLiteral("presets %1, icon %2")
        .arg(names.join(QLatin1Char(' ')))
        .arg(icon.width());
}

inline QString useErasing()
{
    ErasingWorkspace workspace;
    workspace.select();
    return QStringLiteral("areas %1, canvas %2")
        .arg(workspace.crops->hasCropRects())
        .arg(workspace.erasing->isInitSuccessful());
}

inline QString usePlayerView()
{
    zk::test::ExpectedMessage raised(QStringLiteral("^This plugin does not support"));
    Workspace workspace;
    HostWindow window;
    auto *const view = new ZkSmartKeyingPlayerView(workspace.presenter.get(), &window);
    const QString seen = window.show(view);
    workspace.presenter->clearView();
    return seen;
}

inline QString useErasingView()
{
    zk::test::ExpectedMessage raised(QStringLiteral("^This plugin does not support"));
    zk::test::ExpectedMessage moved(QStringLiteral("sigCanvasRectChanged received"));
    ErasingWorkspace workspace;
    HostWindow window;
    const auto view = std::make_unique<ZkAIErasingView>(workspace.erasing, &window);
    const QString seen = window.show(view.get());
    workspace.presenter->clearView();
    return seen;
}

// All of it, a line each; nothing is left of it in the event queue.
inline QStringList useModule()
{
    const QStringList seen {
        usePresenter(), usePresets(), useErasing(), usePlayerView(), useErasingView()};
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    takeJournal();
    return seen;
}
