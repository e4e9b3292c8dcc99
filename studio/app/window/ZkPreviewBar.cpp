#include "ZkPreviewBar.h"

#include "ZkMediaPlayer.h"
#include "ZkTimelineRuler.h"

#include <QGridLayout>
#include <QSlider>

namespace zk::app {

namespace {

constexpr int levels[] = {25, 50, 100, 200, 400, 800}; // percent
constexpr int fitLevel = 0;
constexpr int positionWidth = 116; // widget pixels
constexpr int widthForLength = 520; // below it there is no room for the clip's length

QString percentText(int level)
{
    return QStringLiteral("%1%").arg(level);
}

} // namespace

PreviewBar::PreviewBar(ZkMediaPlayerZoomerPresenter *zoomer, QWidget *parent)
    : ZkPlayerToolBarBase(parent)
    , m_zoomer(zoomer)
    , m_position(ZkTimeEditWidget::CreateTimeEditWidget(this, ZkTimeEditWidget::PlayheadTime))
    , m_length(new QLabel(this))
    , m_zoomBox(new ZkComboBox(this))
{
    setObjectName(QStringLiteral("PreviewBar"));
    m_position->setObjectName(QStringLiteral("PreviewBar_Position"));
    m_position->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    m_position->setFixedWidth(positionWidth);
    m_length->setObjectName(QStringLiteral("PreviewBar_Length"));
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    for (const int id : {PreviousFrameButton, PlayPauseButton, StopButton, NextFrameButton})
        buttons->addWidget(baseButton(id));
    auto *times = new QHBoxLayout;
    times->setSpacing(6);
    times->addWidget(m_position);
    times->addWidget(m_length);
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(12, 4, 12, 8);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(2);
    grid->addWidget(playbackSlider(), 0, 0, 1, 3);
    grid->addLayout(times, 1, 0, Qt::AlignLeft);
    grid->addLayout(buttons, 1, 1, Qt::AlignCenter);
    grid->addWidget(m_zoomBox, 1, 2, Qt::AlignRight);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(2, 1);
    setUpZoomBox();
    connect(m_position, &ZkTimeEditWidget::sigValueChanged, this, [this](int frame) {
        if (playerPresenter())
            playerPresenter()->seek(frame);
    });
    updateToolTip();
    durationChanged(0);
}

void PreviewBar::setUpZoomBox()
{
    m_zoomBox->setObjectName(QStringLiteral("PreviewBar_Zoom"));
    m_zoomBox->addItem(QString(), fitLevel);
    for (const int level : levels)
        m_zoomBox->addItem(percentText(level), level);
    // Shows levels that are in between, which the wheel reaches.
    m_zoomBox->addItem(QString(), -1);
    m_zoomBox->setRowHidden(m_zoomBox->count() - 1, true);
    m_zoomBox->setMinimumContentsLength(5);
    connect(m_zoomBox, QOverload<int>::of(&QComboBox::activated), this, &PreviewBar::chooseZoom);
    connect(
        m_zoomer, &ZkMediaPlayerZoomerPresenter::sigPropertyChanged, this, &PreviewBar::showZoom);
}

void PreviewBar::showZoom()
{
    const int percent = qRound(m_zoomer->zoomLevel(false) * 100);
    int row = m_zoomBox->findData(percent);
    if (row < 0) {
        row = m_zoomBox->count() - 1;
        m_zoomBox->setItemText(row, percentText(percent));
    }
    m_zoomBox->setCurrentIndex(row);
}

void PreviewBar::chooseZoom(int row)
{
    const int level = m_zoomBox->itemData(row).toInt();
    if (level >= 0)
        m_zoomer->zoom(float(level) / 100, QPointF());
}

QString PreviewBar::shortcutText(int id) const
{
    const auto native = [](const char *key) {
        return QKeySequence(QLatin1String(key), QKeySequence::PortableText)
            .toString(QKeySequence::NativeText);
    };
    switch (id) {
    case PlayPauseShortcut:
        return native("Space");
    case StopShortcut:
        return native("Ctrl+/");
    case PreviousFrameShortcut:
        return native("Left");
    case NextFrameShortcut:
        return native("Right");
    default:
        return QString();
    }
}

void PreviewBar::durationChanged(int duration)
{
    const float rate = playerPresenter() ? playerPresenter()->mediaFrameRate() : 0;
    m_position->setEnabled(duration > 0);
    m_zoomBox->setEnabled(duration > 0);
    if (duration > 0)
        m_position->setFrameRate(rate);
    m_position->setMaximum(qMax(0, duration - 1));
    m_length->setText(duration > 0
                          ? QStringLiteral("/  %1").arg(timeline::timeCode(duration, double(rate)))
                          : QString());
}

void PreviewBar::frameChanged(int frame)
{
    m_position->setValue(qMax(0, frame));
}

void PreviewBar::resizeEvent(QResizeEvent *event)
{
    ZkPlayerToolBarBase::resizeEvent(event);
    m_length->setVisible(width() >= widthForLength);
}

void PreviewBar::updateToolTip()
{
    m_position->setToolTip(tr("Position"));
    m_position->setAccessibleName(tr("Position"));
    m_length->setToolTip(tr("Length"));
    m_zoomBox->setItemText(0, tr("Fit"));
    m_zoomBox->setAccessibleName(tr("Zoom"));
    setToolTipWithShortcut(
        m_zoomBox,
        tr("Zoom"),
        QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_F).toString(QKeySequence::NativeText));
}

} // namespace zk::app
