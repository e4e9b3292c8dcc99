#include "ZkAIErasingItemWidget.h"

#include "ZkAIErasingListWidget.h"
#include "ZkErasingStyle.h"

#include "../ZkSmartKeyingLog.h"
#include "../presenters/ZkAIErasingPresenter.h"

#include "ZkMediaPlayer.h"
#include "ZkUtility.h"
#include "datamodel/ZkSmartKeyingEditing.h"
#include "datamodel/ZkSmartMaskEvents.h"

#include <QHBoxLayout>
#include <QPainterPath>

namespace {

// Widget pixels.
const QSize DeleteButtonSize(24, 24);
const QMargins Margins(100, 0, 16, 0); // the thumbnail's place at the left
const int Spacing = 8;
const QRect ThumbnailRect(8, 8, 80, 60);
const int ThumbnailRadius = 6;

} // namespace

ZkAIErasingItemWidget::ZkAIErasingItemWidget(ZkAIErasingPresenter *presenter,
                                             ZkAIErasingListWidget *list)
    : ZkWidget(list)
    , m_timeLabel(new QLabel(this))
    , m_deleteButton(new QPushButton(this))
    , m_presenter(presenter)
{
    setObjectName(QStringLiteral("ZkAIErasingItemWidget"));
    m_timeLabel->setAlignment(Qt::AlignVCenter);
    m_deleteButton->setFixedSize(DeleteButtonSize);
    zkApplyStyle(m_deleteButton, QStringLiteral("SmartKeying/ZkAIErasingDeleteBtn"));
    connect(m_deleteButton,
            &QAbstractButton::clicked,
            this,
            &ZkAIErasingItemWidget::onDeleteButtonClicked);
    layOut();
    ZkAIErasingItemWidget::RetranslateUi();
}

ZkAIErasingItemWidget::~ZkAIErasingItemWidget()
{
    ZK_LOG(ZKLOG::Info,
           "ZkAIErasingItemWidget",
           "~ZkAIErasingItemWidget",
           QStringLiteral("ZkAIErasingItemWidget destory"));
}

void ZkAIErasingItemWidget::layOut()
{
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(Margins);
    row->setSpacing(Spacing);
    row->addWidget(m_timeLabel);
    if (m_presenter && m_presenter->isImageClip()) {
        m_timeLabel->hide();
        row->addStretch();
    }
    row->addWidget(m_deleteButton);
}

void ZkAIErasingItemWidget::RetranslateUi()
{
    ZkWidget::RetranslateUi();
    m_deleteButton->setToolTip(tr("Delete"));
    m_deleteButton->setAccessibleName(tr("Delete"));
}

QString ZkAIErasingItemWidget::timeText() const
{
    return m_timeLabel->text();
}

void ZkAIErasingItemWidget::setFrame(qint64 frame)
{
    m_frame = frame;
    m_timeLabel->setText(m_presenter->frame2Time(frame));
}

void ZkAIErasingItemWidget::setThumbnail(const QImage &thumbnail)
{
    m_thumbnail = thumbnail;
    update();
}

void ZkAIErasingItemWidget::select()
{
    IZkSmartKeyingService *const service = m_presenter->smartKeyingService();
    if (!service || !m_presenter->editTimeline())
        return;
    m_presenter->editTimeline()->playhead()->setPosition(m_frame);
    service->selectSegmentNode(m_frame);
}

void ZkAIErasingItemWidget::mousePressEvent(QMouseEvent *event)
{
    select();
    ZkWidget::mousePressEvent(event);
}

void ZkAIErasingItemWidget::paintEvent(QPaintEvent *event)
{
    {
        QPainter painter(this);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        QPainterPath corners;
        corners.addRoundedRect(ThumbnailRect, ThumbnailRadius, ThumbnailRadius);
        painter.setClipPath(corners);
        painter.fillRect(ThumbnailRect, Qt::black);
        if (!m_thumbnail.isNull()) {
            const double ratio = double(m_thumbnail.width()) / m_thumbnail.height();
            const QRectF place = ZkUtility::getFitCentralWindowRectByRatio(ThumbnailRect, ratio);
            const QSize pixels = (place.size() * ZkScreen::devicePixelRatio(this)).toSize();
            painter.drawImage(
                place, m_thumbnail.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        }
    }
    ZkWidget::paintEvent(event);
}

// The row goes when the node's change is reported.
void ZkAIErasingItemWidget::onDeleteButtonClicked()
{
    if (!m_presenter) {
        ZK_LOG(ZKLOG::Warning,
               "ZkAIErasingItemWidget",
               "onDeleteButtonClicked",
               QStringLiteral("ZkAIErasingItemWidget m_pPresenter is null"));
        return;
    }
    ZkMediaPlayerPresenter *const player = m_presenter->playerPresenter();
    player->stopPlay();
    player->mediaPlayer()->setMode(ZKPLAYER::PausedState, 0);
    ZkSmartMaskBarBtnClickEvent(QStringLiteral("delete"), m_presenter->getFileType()).sendEvent();
    m_presenter->editController()->deleteSegment(m_frame);
}
