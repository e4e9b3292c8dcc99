#include "ZkTaskCard.h"

#include "ZkToolTipText.h"

#include "ZkWidgets.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace zk::app {

namespace {

// Widget pixels.
constexpr QSize pictureSize(64, 36);
constexpr int textWidth = 170;
constexpr int cancelSide = 24;

QString elided(const QLabel *label, const QString &text)
{
    return label->fontMetrics().elidedText(text, Qt::ElideMiddle, textWidth);
}

bool isUnderWay(EraseTasks::State state)
{
    return state != EraseTasks::State::Done && state != EraseTasks::State::Failed;
}

QPixmap fitted(const QImage &picture, double ratio)
{
    QPixmap pixmap = QPixmap::fromImage(
        picture.scaled(pictureSize * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

} // namespace

TaskCard::TaskCard(int id, QWidget *parent)
    : QFrame(parent)
    , m_id(id)
    , m_picture(new QLabel(this))
    , m_name(new QLabel(this))
    , m_stage(new QLabel(this))
    , m_progress(ZkProgressBar::CreateMiniProgressBar(this))
    , m_open(new QPushButton(this))
    , m_cancel(new ZkToolButton(this))
{
    setObjectName(QStringLiteral("TaskCard"));
    m_picture->setObjectName(QStringLiteral("TaskCard_Picture"));
    m_name->setObjectName(QStringLiteral("TaskCard_Name"));
    m_stage->setObjectName(QStringLiteral("TaskCard_Stage"));
    m_progress->setObjectName(QStringLiteral("TaskCard_Progress"));
    m_open->setObjectName(QStringLiteral("TaskCard_Open"));
    m_cancel->setObjectName(QStringLiteral("TaskCard_Cancel"));
    layOut();
    connect(m_open, &QPushButton::clicked, this, [this] {
        if (m_state == EraseTasks::State::Done)
            emit resultClicked(m_id);
        else
            emit reasonClicked(m_id);
    });
    connect(m_cancel, &QAbstractButton::clicked, this, [this] {
        if (isUnderWay(m_state))
            emit cancelClicked(m_id);
        else
            emit dismissClicked(m_id);
    });
}

void TaskCard::layOut()
{
    m_picture->setFixedSize(pictureSize);
    m_picture->setAlignment(Qt::AlignCenter);
    m_name->setFixedWidth(textWidth);
    m_stage->setFixedWidth(textWidth);
    m_progress->setRange(0, 100);
    m_progress->setFixedWidth(textWidth);
    m_cancel->setIconName(QStringLiteral("close"));
    m_cancel->setFixedSize(cancelSide, cancelSide);
    m_cancel->setFocusPolicy(Qt::TabFocus);
    m_open->setFocusPolicy(Qt::TabFocus);
    auto *const texts = new QVBoxLayout;
    texts->setContentsMargins(0, 0, 0, 0);
    texts->setSpacing(2);
    texts->addWidget(m_name);
    texts->addWidget(m_stage);
    texts->addWidget(m_progress);
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(8, 6, 6, 6);
    row->setSpacing(8);
    row->addWidget(m_picture);
    row->addLayout(texts);
    row->addWidget(m_open);
    row->addWidget(m_cancel);
}

void TaskCard::show(const EraseTasks::Item &item, bool canOpen)
{
    using State = EraseTasks::State;
    m_state = item.state;
    const QString name = QFileInfo(item.request.media.path).fileName();
    const bool isFailed = item.state == State::Failed;
    const bool isErasing = item.state == State::Erasing;
    const QString stage = isErasing ? tr("%1: %2%").arg(item.stage).arg(item.percent) : item.stage;
    if (!item.picture.isNull())
        m_picture->setPixmap(fitted(item.picture, devicePixelRatioF()));
    m_name->setText(elided(m_name, name));
    m_name->setToolTip(name);
    m_stage->setText(elided(m_stage, stage));
    m_stage->setProperty("isProblem", isFailed);
    m_stage->setToolTip(item.reason);
    m_stage->style()->unpolish(m_stage);
    m_stage->style()->polish(m_stage);
    m_progress->setVisible(isUnderWay(item.state));
    m_progress->setValue(item.percent);
    m_progress->setAccessibleName(tr("Erasing from %1").arg(name));
    m_open->setVisible(!isUnderWay(item.state));
    m_open->setEnabled(isFailed || canOpen);
    m_open->setText(isFailed ? tr("Why?") : tr("Show Result"));
    m_open->setToolTip(m_open->isEnabled() ? QString() : tr("Close the workspace first"));
    m_cancel->setVisible(item.state != State::Done);
    setToolTipWithKey(m_cancel, isFailed ? tr("Take off the list") : tr("Cancel Erasing"), {});
    setAccessibleName(QStringLiteral("%1, %2").arg(name, stage));
}

} // namespace zk::app
