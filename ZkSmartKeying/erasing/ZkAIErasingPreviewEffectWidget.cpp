#include "ZkAIErasingPreviewEffectWidget.h"

#include "ZkErasingStyle.h"

#include <QHBoxLayout>
#include <QMouseEvent>

namespace {

// Widget pixels.
const QSize IconButtonSize(24, 24);
const QMargins Margins(4, 0, 8, 0);
const int Spacing = 4;
const int LabelSlack = 2;
const int FontSize = 12;
const qreal Radius = 6.0;

const qreal RestingOpacity = 0.6;

} // namespace

ZkAIErasingPreviewEffectWidget::ZkAIErasingPreviewEffectWidget(QWidget *parent)
    : ZkWidget(parent)
    , m_iconButton(new ZkToolButton(this))
    , m_label(new ZkLabel(QString(), this))
{
    zkApplyStyle(m_iconButton, QStringLiteral("BasicWidget/ZkAIErasingTrackingBtn"));
    m_iconButton->setFixedSize(IconButtonSize);
    m_label->setStyleSheet(QStringLiteral("color:#50E3C2;"));
    QFont font = m_label->font();
    font.setPixelSize(FontSize);
    m_label->setFont(font);
    m_label->setAlignment(Qt::AlignVCenter);
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(Margins);
    row->setSpacing(Spacing);
    row->addWidget(m_iconButton);
    row->addWidget(m_label);
    connect(m_iconButton,
            &QAbstractButton::clicked,
            this,
            &ZkAIErasingPreviewEffectWidget::sigPreviewEffectBtnClicked);
    ZkAIErasingPreviewEffectWidget::RetranslateUi();
}

ZkAIErasingPreviewEffectWidget::~ZkAIErasingPreviewEffectWidget() = default;

void ZkAIErasingPreviewEffectWidget::RetranslateUi()
{
    ZkWidget::RetranslateUi();
    const QString text = tr("Preview Effect");
    m_label->setText(text);
    m_label->setFixedWidth(zkTextWidth(m_label, text) + LabelSlack);
    m_iconButton->setAccessibleName(text);
    setFixedSize(sizeHint());
}

void ZkAIErasingPreviewEffectWidget::setHovered(bool hovered)
{
    m_isHovered = hovered;
    update();
}

void ZkAIErasingPreviewEffectWidget::enterEvent(QEvent *event)
{
    setHovered(true);
    ZkWidget::enterEvent(event);
}

void ZkAIErasingPreviewEffectWidget::leaveEvent(QEvent *event)
{
    setHovered(false);
    ZkWidget::leaveEvent(event);
}

void ZkAIErasingPreviewEffectWidget::mousePressEvent(QMouseEvent *event)
{
    setHovered(false);
    emit sigPreviewEffectBtnClicked();
    ZkWidget::mousePressEvent(event);
}

void ZkAIErasingPreviewEffectWidget::paintEvent(QPaintEvent *event)
{
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setOpacity(m_isHovered ? 1.0 : RestingOpacity);
        painter.setBrush(m_isHovered ? ZkSkinManager::instance()->color(QStringLiteral("333333"))
                                     : QColor(QStringLiteral("#000000")));
        painter.drawRoundedRect(rect(), Radius, Radius);
    }
    ZkWidget::paintEvent(event);
}
