// The panel of tools beside the player of an AI erasing workspace; not public.
#pragma once

#include "widgets/ZkRoundRadiusWidget.h"

#include <QPointer>
#include <QVector>

class QLabel;
class QStackedWidget;
class ZkAIErasingListWidget;
class ZkAIErasingPresenter;
class ZkButton;
class ZkSpinBoxSlider;
class ZkToolButton;

// Tools, brush size and the selected objects. The tool and the presenter's edit mode are one thing: a
// click sets the mode, and a mode that is set elsewhere moves the tool without a signal.
//
// The presenter is not owned.
class ZkAIErasingSettingView : public ZkRoundRadiusWidgetView
{
    Q_OBJECT

public:
    enum Tool {
        MagicBoxTool = 0,
        SmartBrushTool = 1,
        EraserTool = 2,
        MoveFrameTool = 3, // without a button
    };

    // Starts with the box.
    ZkAIErasingSettingView(ZkAIErasingPresenter *presenter, ZkUIView *parent);
    ~ZkAIErasingSettingView() override;

    int currentTool() const { return m_currentTool; }
    // The box stands in for an eraser that has nothing to erase.
    void setTool(int tool);

Q_SIGNALS:
    void
    sigToolChanged(int toolType); // Tool; by the user, or when the eraser has nothing more to erase

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void buildToolBar();
    static ZkButton *createButton(
        QWidget *parent, const QString &text, const QStringList &iconPaths, int width, int height);
    void buildBrushSize();
    void buildEmptyPage();
    void buildContentPage();
    void layOut();
    void translate();
    void connectPresenter();
    void connectBrushSize();

    bool hasSegment() const;
    void toggleButtons();
    void syncToolFromMode();
    void updateBrushEnabled();
    void updateToolPage();
    void updateEraserEnabled();
    void followSegment();
    void followBrushSize(double size);
    void showTip();

    QWidget *m_toolBar = nullptr;
    QVector<ZkButton *> m_toolButtons; // by tool
    int m_currentTool = MagicBoxTool;
    QLabel *m_brushSizeLabel = nullptr;
    ZkSpinBoxSlider *m_brushSizeSlider = nullptr;
    ZkToolButton *m_brushResetButton = nullptr;
    QWidget *m_brushSizeRow = nullptr;
    QLabel *m_selectedObjectsLabel = nullptr;
    ZkAIErasingListWidget *m_objectList = nullptr;
    QLabel *m_emptyImage = nullptr;
    QLabel *m_hintLabel = nullptr;
    QPointer<ZkAIErasingPresenter> m_presenter; // clicks may come when it is gone
    QWidget *m_emptyPage = nullptr;
    QStackedWidget *m_objectsStack = nullptr;
    QWidget *m_contentPage = nullptr;
    QWidget *m_blankPage = nullptr;
    QStackedWidget *m_toolStack = nullptr;
};
