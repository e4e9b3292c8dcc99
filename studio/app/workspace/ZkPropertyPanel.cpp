#include "ZkPropertyPanel.h"

#include "ZkBrushSection.h"
#include "ZkOwnKeys.h"
#include "ZkPresetPicker.h"

#include "ZkDataModel.h"
#include "ZkSmartKeyingPresenter.h"
#include "ZkWidgets.h"

#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>

namespace zk::app {

namespace {

constexpr int panelMargin = 12; // widget pixels
constexpr int opaque = 255;

int toPercent(int alpha)
{
    return qRound(alpha * 100.0 / opaque);
}

int toAlpha(int percent)
{
    return qRound(percent * opaque / 100.0);
}

} // namespace

PropertyPanel::PropertyPanel(ZkSmartKeyingPresenter *presenter,
                             ZkStudioMediaLibrary *library,
                             QWidget *parent)
    : QWidget(parent)
    , m_presenter(presenter)
{
    setObjectName(QStringLiteral("WorkspacePropertyPanel"));
    setAttribute(Qt::WA_StyledBackground);
    ZkSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Workspace/PropertyPanel"));
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(panelMargin, panelMargin, panelMargin, panelMargin);
    column->setSpacing(8);
    m_brushTitle = addTitle(column);
    m_brush = new BrushSection(presenter, this);
    column->addWidget(m_brush);
    addOpacity(column);
    column->addSpacing(8);
    addEffect(column);
    m_picker = new PresetPicker(presenter, library, this);
    column->addWidget(m_picker, 1);
    column->addWidget(m_effectHint); // at the end: what the mouse is on stays when it appears
    connectPresenter();
    retranslate();
    followOpacity();
    followEffect();
}

QLabel *PropertyPanel::addTitle(QVBoxLayout *column)
{
    auto *const title = new QLabel(this);
    title->setProperty("PanelTitle", true); // for the skin
    column->addWidget(title);
    return title;
}

void PropertyPanel::addOpacity(QVBoxLayout *column)
{
    m_opacityName = new QLabel(this);
    m_opacityText = new QLabel(this);
    m_opacity = new QSlider(Qt::Horizontal, this);
    m_opacity->setObjectName(QStringLiteral("WorkspaceOverlayOpacity"));
    m_opacity->setRange(0, 100);
    m_opacity->setSingleStep(5);
    m_opacity->setFocusPolicy(Qt::TabFocus); // a click leaves the keys to the window's shortcuts
    new OwnKeys(m_opacity, OwnKeys::navigation());
    m_opacityName->setBuddy(m_opacity);
    auto *const grid = new QGridLayout;
    grid->addWidget(m_opacityName, 0, 0);
    grid->addWidget(m_opacityText, 0, 1, Qt::AlignRight);
    grid->addWidget(m_opacity, 1, 0, 1, 2);
    column->addLayout(grid);
    connect(m_opacity, &QSlider::valueChanged, this, &PropertyPanel::setOpacity);
}

void PropertyPanel::addEffect(QVBoxLayout *column)
{
    m_effectTitle = addTitle(column);
    m_effectSwitch = new QCheckBox(this);
    m_effectSwitch->setObjectName(QStringLiteral("WorkspaceEffectEnabled"));
    m_effectSwitch->setFocusPolicy(Qt::TabFocus);
    new OwnKeys(m_effectSwitch, {Qt::Key_Space});
    column->addWidget(m_effectSwitch);
    m_effectHint = new QLabel(this);
    m_effectHint->setObjectName(QStringLiteral("WorkspaceEffectHint"));
    m_effectHint->setWordWrap(true);
    connect(m_effectSwitch, &QCheckBox::clicked, this, [this](bool checked) {
        m_presenter->setEffectEnabled(checked);
        followEffect();
    });
}

void PropertyPanel::connectPresenter()
{
    using Presenter = ZkSmartKeyingPresenter;
    using Panel = PropertyPanel;
    connect(m_presenter, &Presenter::sigSmartKeyingSegmentChanged, this, &Panel::followOpacity);
    connect(m_presenter, &Presenter::sigSmartKeyingSegmentChanged, this, &Panel::followEffect);
    connect(m_presenter, &Presenter::sigEffectAdded, this, &Panel::followEffect);
    connect(m_presenter, &Presenter::sigEffectRemoved, this, &Panel::followEffect);
    connect(m_presenter, &Presenter::sigEffectPropertyChanged, this, &Panel::followEffect);
    connect(m_presenter, &Presenter::sigUndoRedoChanged, this, &Panel::followEffect);
    connect(m_presenter, &Presenter::sigReset, this, &Panel::followEffect);
}

void PropertyPanel::setOpacity(int percent)
{
    m_opacityText->setText(tr("%1%").arg(percent));
    if (IZkSmartKeyingService *const service = m_presenter->smartKeyingService())
        service->setMaskRegionAlpha(toAlpha(percent));
}

void PropertyPanel::followOpacity()
{
    const IZkSmartKeyingService *const service = m_presenter->smartKeyingService();
    if (!service || m_opacity->isSliderDown())
        return;
    const QSignalBlocker blocker(m_opacity);
    m_opacity->setValue(toPercent(service->maskRegionAlpha()));
    m_opacityText->setText(tr("%1%").arg(m_opacity->value()));
}

bool PropertyPanel::showsEffects() const
{
    const IZkSmartKeyingService *const service = m_presenter->smartKeyingService();
    const int type = service ? service->previewType() : ZKSMARTKEYING::ResultPreview;
    return type == ZKSMARTKEYING::ResultPreview || type == ZKSMARTKEYING::GridPreview;
}

void PropertyPanel::followEffect()
{
    m_effectSwitch->setEnabled(m_presenter->getEffect() != nullptr);
    m_effectSwitch->setChecked(m_presenter->isEffectEnabled());
    m_effectHint->setVisible(m_presenter->isEffectEnabled() && !showsEffects());
}

void PropertyPanel::retranslate()
{
    m_brushTitle->setText(tr("Painting"));
    m_opacityName->setText(tr("Overlay opacity"));
    m_opacity->setAccessibleName(tr("Overlay opacity"));
    m_opacity->setToolTip(tr("How strongly the overlay colours the object"));
    m_effectTitle->setText(tr("Cutout Effect"));
    m_effectSwitch->setText(tr("Show the effect"));
    m_effectSwitch->setToolTip(tr("Shows the frame with the effect of the preset, or without it"));
    m_effectHint->setText(tr("The preview modes black and transparency grid show the effect."));
    followOpacity();
}

void PropertyPanel::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}

} // namespace zk::app
