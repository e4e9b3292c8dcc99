// How the panel of tools is built.
#include "ZkAIErasingSettingView.h"

#include "ZkAIErasingListWidget.h"
#include "ZkErasingStyle.h"

#include "../ZkSmartKeyingLog.h"
#include "../presenters/ZkAIErasingPresenter.h"

#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

// Widget pixels.
const int PanelWidth = 378;
const int ToolBarHeight = 48;
const QMargins ToolBarMargins(16, 6, 16, 6);
const int ToolSpacing = 8;
const QSize ToolIconSize(24, 24);
const QMargins ToolMargins(10, 2, 10, 2);
const double ToolSpace = 4.0; // between icon and text
const double ToolRadius = 6.0;
const int SideMargin = 16;
const int SectionSpacing = 16;
const int SliderHeight = 32;
const int BrushSizeHeight = 56;
const QSize ResetButtonSize(24, 24);
const int ResetSpacing = 8; // before it
const int ListSpacing = 8;
const QSize EmptyImageSize(241, 76);
const int EmptyPageHeight = 484;
const int EmptyPageTop = 125;
const int LeastListHeight = 250; // all that is on the empty page, whose rest a low window cuts off
const int EmptySideMargin = 24;
const int HintSpacing = 12;

const struct
{
    const char *text;
    int width;
    const char *icons[4]; // normal, hovered, pressed, disabled
} Tools[] = {
    // by tool
    {QT_TRANSLATE_NOOP("ZkAIErasingSettingView", "Magic Box"),
     105,
     {":/Resource/icon16_crop_add-normal.png",
      ":/Resource/icon16_crop_add-normal.png",
      ":/Resource/icon16_crop_add-pressed.png",
      ":/Resource/icon16_crop_add-disabled.png"}},
    {QT_TRANSLATE_NOOP("ZkAIErasingSettingView", "Smart Brush"),
     123,
     {":/Resource/icon24_selectarea-normal.png",
      ":/Resource/icon24_selectarea-normal.png",
      ":/Resource/icon24_selectarea-pressed.png",
      ":/Resource/icon24_selectarea-disabled.png"}},
    {QT_TRANSLATE_NOOP("ZkAIErasingSettingView", "Eraser"),
     95,
     {":/Resource/icon24_erase_off-normal.png",
      ":/Resource/icon24_erase_off-normal.png",
      ":/Resource/icon24_erase_on-pressed.png",
      ":/Resource/icon24_erase_off-disabled.png"}},
};
const int ToolHeight = 24;

// The palette's numbers of a tool button.
const struct
{
    int role;
    int state;
    int color;
} Colors[] = {
    {ZkButton::TextRole, ZkButton::NormalState, 57},
    {ZkButton::TextRole, ZkButton::HoverState, 56},
    {ZkButton::TextRole, ZkButton::PressedState, 56},
    {ZkButton::TextRole, ZkButton::DisabledState, 60},
    {ZkButton::TextRole, ZkButton::OnState, 56},
    {ZkButton::TextRole, ZkButton::OnHoverState, 56},
    {ZkButton::TextRole, ZkButton::OnPressedState, 56},
    {ZkButton::BackgroundRole, ZkButton::HoverState, 26},
    {ZkButton::BackgroundRole, ZkButton::PressedState, 28},
    {ZkButton::BackgroundRole, ZkButton::DisabledState, 2},
    {ZkButton::BackgroundRole, ZkButton::OnState, 28},
    {ZkButton::BackgroundRole, ZkButton::OnHoverState, 26},
    {ZkButton::BackgroundRole, ZkButton::OnPressedState, 28},
};

// A column without margins and spacing.
QVBoxLayout *plainColumn(QWidget *parent)
{
    auto *const column = new QVBoxLayout(parent);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    return column;
}

} // namespace

ZkButton *ZkAIErasingSettingView::createButton(
    QWidget *parent, const QString &text, const QStringList &iconPaths, int width, int height)
{
    const int states[] = {ZkButton::NormalState,
                          ZkButton::HoverState,
                          ZkButton::PressedState,
                          ZkButton::DisabledState};
    if (iconPaths.size() != 4)
        ZK_LOG(ZKLOG::Error,
               "ZkAIErasingSettingView",
               "createButton",
               QStringLiteral("image path error"));
    ZkButton *const button =
        ZkButton::CreateButton(parent, text, iconPaths.value(0), ZkButton::TextBesideImage);
    for (int i = 0; i < 4; ++i)
        button->setImage(states[i], iconPaths.value(i));
    button->setAutoSize(false);
    button->setImageSize(ToolIconSize);
    button->setSpace(ToolSpace);
    button->setContentsMargins(ToolMargins);
    button->setFixedSize(width, height);
    button->setBorderRadius(ToolRadius);
    button->setBorderWidth(0);
    button->setElideMode(Qt::ElideRight);
    for (const auto &entry : Colors)
        button->setColor(entry.role, entry.state, entry.color);
    return button;
}

void ZkAIErasingSettingView::buildToolBar()
{
    m_toolBar = new QWidget(this);
    m_toolBar->setFixedHeight(ToolBarHeight);
    auto *const row = new QHBoxLayout(m_toolBar);
    row->setContentsMargins(ToolBarMargins);
    row->setSpacing(ToolSpacing);
    for (const auto &tool : Tools) {
        QStringList icons;
        for (const char *const icon : tool.icons)
            icons += QString::fromLatin1(icon);
        ZkButton *const button =
            createButton(m_toolBar, tr(tool.text), icons, tool.width, ToolHeight);
        button->setCheckable(true);
        const int number = m_toolButtons.size();
        connect(button, &QAbstractButton::clicked, this, [this, number] { setTool(number); });
        row->addWidget(button);
        m_toolButtons += button;
    }
    row->addStretch();
    m_toolButtons.at(MagicBoxTool)->setChecked(true);
}

void ZkAIErasingSettingView::buildBrushSize()
{
    m_brushSizeRow = new QWidget(this);
    m_brushSizeRow->setFixedHeight(BrushSizeHeight);
    m_brushSizeLabel = new QLabel(m_brushSizeRow);
    m_brushSizeLabel->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_brushSizeSlider = new ZkSpinBoxSlider(m_brushSizeRow);
    m_brushSizeSlider->setFixedHeight(SliderHeight);
    m_brushSizeSlider->setSpinBoxFocusPolicy(Qt::ClickFocus);
    m_brushSizeSlider->setDecimals(0);
    const ZkRange<int> range = m_presenter->penPixelWidthRange();
    m_brushSizeSlider->setRange(range.minimum, range.maximum);
    m_brushSizeSlider->setDefaultValue(m_presenter->defaultPenPixelWidth());
    m_brushSizeSlider->setValue(m_presenter->defaultPenPixelWidth());
    m_brushResetButton = new ZkToolButton(m_brushSizeRow);
    m_brushResetButton->setFixedSize(ResetButtonSize);
    zkApplyStyle(m_brushResetButton, QStringLiteral("PropertyView/ZkWidgets_ResetToolBtn"));
    // The slider keeps its length when the button comes and goes.
    QSizePolicy policy = m_brushResetButton->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_brushResetButton->setSizePolicy(policy);
    m_brushResetButton->setVisible(false);
    auto *const column = plainColumn(m_brushSizeRow);
    column->setContentsMargins(SideMargin, 0, SideMargin, 0);
    column->addWidget(m_brushSizeLabel);
    auto *const row = new QHBoxLayout;
    row->setSpacing(ResetSpacing);
    row->addWidget(m_brushSizeSlider);
    row->addWidget(m_brushResetButton);
    column->addLayout(row);
}

void ZkAIErasingSettingView::buildEmptyPage()
{
    m_emptyPage = new QWidget(this);
    m_emptyPage->setFixedSize(PanelWidth, EmptyPageHeight);
    auto *const block = new QWidget(m_emptyPage);
    block->setFixedWidth(PanelWidth);
    m_emptyImage = new QLabel(block);
    m_emptyImage->setFixedSize(EmptyImageSize);
    zkApplyStyle(m_emptyImage, QStringLiteral("SmartKeying/ZDefaultListImage"));
    m_hintLabel = new QLabel(block);
    m_hintLabel->setAlignment(Qt::AlignCenter);
    m_hintLabel->setWordWrap(true);
    auto *const image = new QHBoxLayout;
    image->addStretch();
    image->addWidget(m_emptyImage);
    image->addStretch();
    auto *const column = plainColumn(block);
    column->setContentsMargins(EmptySideMargin, 0, EmptySideMargin, 0);
    column->addLayout(image);
    column->addSpacing(HintSpacing);
    column->addWidget(m_hintLabel);
    auto *const page = plainColumn(m_emptyPage);
    page->addSpacing(EmptyPageTop);
    page->addWidget(block);
    page->addStretch();
}

void ZkAIErasingSettingView::buildContentPage()
{
    m_selectedObjectsLabel = new QLabel(this);
    m_selectedObjectsLabel->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_objectList = new ZkAIErasingListWidget(m_presenter, this);
    m_objectList->setContentsMargins(0, 0, 0, 0);
    m_objectsStack = new QStackedWidget(this);
    m_objectsStack->addWidget(m_emptyPage);
    m_objectsStack->addWidget(m_objectList);
    m_objectsStack->setMinimumHeight(LeastListHeight);
    m_contentPage = new QWidget(this);
    auto *const title = new QHBoxLayout;
    title->setContentsMargins(SideMargin, 0, 0, 0);
    title->addWidget(m_selectedObjectsLabel);
    auto *const column = plainColumn(m_contentPage);
    column->setContentsMargins(0, SectionSpacing, 0, 0);
    column->addWidget(m_brushSizeRow);
    column->addSpacing(SectionSpacing);
    column->addLayout(title);
    column->addSpacing(ListSpacing);
    column->addWidget(m_objectsStack);
}

void ZkAIErasingSettingView::layOut()
{
    m_blankPage = new QWidget(this);
    m_toolStack = new QStackedWidget(this);
    m_toolStack->addWidget(m_contentPage);
    m_toolStack->addWidget(m_blankPage);
    auto *const column = plainColumn(this);
    column->setContentsMargins(0, SectionSpacing, 0, 0);
    column->addWidget(m_toolBar);
    column->addSpacing(SectionSpacing);
    column->addWidget(m_toolStack);
}

void ZkAIErasingSettingView::translate()
{
    for (int tool = 0; tool < m_toolButtons.size(); ++tool) {
        const QString text = tr(Tools[tool].text);
        m_toolButtons.at(tool)->setText(text);
        m_toolButtons.at(tool)->setToolTip(text);
        m_toolButtons.at(tool)->setAccessibleName(text);
    }
    m_brushSizeLabel->setText(tr("Brush Size"));
    m_brushSizeSlider->setFieldName(tr("Brush Size"));
    m_brushResetButton->setToolTip(tr("Reset"));
    m_selectedObjectsLabel->setText(tr("Selected Objects"));
    m_hintLabel->setText(
        m_presenter && m_presenter->isImageClip()
            ? tr("You can select the object you want to remove from the picture")
            : tr("You can navigate to different times and select the objects you want to remove "
                 "from the video."));
}
