#include "ZkResultDialog.h"

#include "ZkCompareView.h"
#include "ZkEraseTasks.h"
#include "ZkErasedFrames.h"

#include "ZkOwnKeys.h"

#include "ZkWidgets.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

namespace zk::app {

namespace {

constexpr QSize usualSize(1080, 720); // widget pixels
constexpr int secondMs = 1000;

QString titleOf(const EraseTasks::Item &item)
{
    return ResultDialog::tr("Erased from %1").arg(QFileInfo(item.request.media.path).fileName());
}

} // namespace

ResultDialog::ResultDialog(EraseTasks *tasks, int id, QWidget *parent)
    : QDialog(parent)
    , m_tasks(tasks)
    , m_id(id)
    , m_view(new CompareView(this))
    , m_problem(new QLabel(this))
    , m_play(new ZkToolButton(this))
    , m_slider(new QSlider(Qt::Horizontal, this))
    , m_hint(new QLabel(this))
    , m_discard(new QPushButton(tr("Discard"), this))
    , m_later(new QPushButton(tr("Decide Later"), this))
    , m_save(new QPushButton(tr("Save"), this))
    , m_questions(this, titleOf(*tasks->find(id)))
{
    const EraseTasks::Item &item = *tasks->find(id);
    setObjectName(QStringLiteral("ResultDialog"));
    setWindowTitle(titleOf(item));
    m_frames =
        new ErasedFrames({item.job.mediaPath, item.job.inFrame}, {item.result.info.path, 0}, this);
    m_slider->setRange(0, int(qMax<qint64>(0, item.request.frameCount - 1)));
    m_clock.setInterval(qMax(1, int(secondMs / item.request.media.frameRate())));
    layOut();
    connectParts();
    show(0);
    resize(usualSize);
    m_view->setFocus();
}

ResultDialog::~ResultDialog() = default;

void ResultDialog::layOut()
{
    m_problem->setObjectName(QStringLiteral("ResultDialog_Problem"));
    m_problem->setAlignment(Qt::AlignCenter);
    m_problem->setWordWrap(true);
    m_problem->hide();
    m_play->setObjectName(QStringLiteral("ResultDialog_Play"));
    m_play->setCheckable(true);
    m_play->setIconName(QStringLiteral("play"));
    m_play->setFocusPolicy(Qt::TabFocus);
    m_play->setToolTip(tr("Play or pause"));
    m_play->setAccessibleName(m_play->toolTip());
    m_slider->setObjectName(QStringLiteral("ResultDialog_Frame"));
    m_slider->setAccessibleName(tr("Frame"));
    ZkSkinManager::instance()->applyStyleSheet(m_slider, QStringLiteral("Widgets/Slider"));
    m_hint->setObjectName(QStringLiteral("Hint"));
    m_hint->setText(tr("Drag the divider, or hold the space bar to see the original."));
    m_hint->setWordWrap(true);
    m_discard->setObjectName(QStringLiteral("ResultDialog_Discard"));
    m_later->setObjectName(QStringLiteral("ResultDialog_Later"));
    m_save->setObjectName(QStringLiteral("ResultDialog_Save"));
    m_save->setToolTip(tr("The clip shows the result from now on; Undo brings the original back"));
    ZkSkinManager::instance()->applyStyleSheet(m_save, QStringLiteral("Widgets/PrimaryButton"));
    auto *const frames = new QHBoxLayout;
    frames->addWidget(m_play);
    frames->addWidget(m_slider, 1);
    auto *const buttons = new QHBoxLayout;
    buttons->addWidget(m_hint, 1);
    for (QPushButton *const button : {m_discard, m_later, m_save}) {
        new EnterClicks(button);
        button->setAutoDefault(false);
        buttons->addWidget(button);
    }
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(16, 16, 16, 14);
    column->setSpacing(10);
    column->addWidget(m_view, 1);
    column->addWidget(m_problem, 1);
    column->addLayout(frames);
    column->addLayout(buttons);
    const bool isStill = m_slider->maximum() == 0;
    m_play->setVisible(!isStill);
    m_slider->setVisible(!isStill);
}

void ResultDialog::connectParts()
{
    connect(m_frames,
            &ErasedFrames::loaded,
            this,
            [this](qint64, const auto &before, const auto &after) { showFrame(before, after); });
    connect(
        m_slider, &QSlider::valueChanged, this, [this](int frame) { m_frames->request(frame); });
    connect(m_slider, &QSlider::sliderPressed, this, [this] { m_play->setChecked(false); });
    connect(m_play, &QAbstractButton::toggled, this, &ResultDialog::play);
    connect(&m_clock, &QTimer::timeout, this, &ResultDialog::advance);
    connect(m_save, &QPushButton::clicked, this, &ResultDialog::save);
    connect(m_discard, &QPushButton::clicked, this, &ResultDialog::discard);
    connect(m_later, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_tasks, &EraseTasks::removed, this, [this](int id) {
        if (id == m_id)
            reject();
    });
    // The space bar is the dialog's, whatever has the focus.
    for (QWidget *const widget : findChildren<QWidget *>())
        widget->installEventFilter(this);
}

void ResultDialog::show(qint64 frame)
{
    m_slider->setValue(int(frame));
    m_frames->request(frame);
}

void ResultDialog::showFrame(const QImage &before, const QImage &after)
{
    const bool isReadable = !before.isNull() && !after.isNull();
    m_problem->setText(before.isNull() ? tr("The original can no longer be read.")
                                       : tr("The result can no longer be read."));
    m_problem->setVisible(!isReadable);
    m_view->setVisible(isReadable);
    m_view->setPictures(before, after);
}

void ResultDialog::play(bool on)
{
    m_play->setIconName(on ? QStringLiteral("pause") : QStringLiteral("play"));
    if (on)
        m_clock.start();
    else
        m_clock.stop();
}

// A slow disk shows fewer frames a second.
void ResultDialog::advance()
{
    if (m_frames->isReading())
        return;
    m_slider->setValue(m_slider->value() < m_slider->maximum() ? m_slider->value() + 1 : 0);
}

bool ResultDialog::eventFilter(QObject *, QEvent *event)
{
    return (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease)
        && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Space && this->event(event);
}

bool ResultDialog::event(QEvent *event)
{
    if (event->type() == QEvent::WindowDeactivate)
        m_view->setShowsBeforeOnly(false); // the key is let go elsewhere
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
        return QDialog::event(event);
    const auto *const key = static_cast<QKeyEvent *>(event);
    if (key->key() != Qt::Key_Space)
        return QDialog::event(event);
    if (!key->isAutoRepeat())
        m_view->setShowsBeforeOnly(event->type() == QEvent::KeyPress);
    event->accept();
    return true;
}

void ResultDialog::save()
{
    m_play->setChecked(false);
    if (!m_tasks->isStale(m_id)) {
        saveNow();
        return;
    }
    m_questions.ask(
        tr("The clip was changed meanwhile. Show this result all the same?"),
        tr("It was made of another file than the clip shows now, so that what was saved since "
           "then is not in it. Undo brings it back."),
        {{QMessageBox::Save, tr("Save")}, {QMessageBox::Cancel, tr("Cancel")}},
        [this](QMessageBox::StandardButton answer) {
            if (answer == QMessageBox::Save)
                saveNow();
        });
}

void ResultDialog::saveNow()
{
    QString error;
    if (m_tasks->save(m_id, &error)) // which closes this
        emit saved();
    else
        m_questions.tell(tr("The result cannot be saved."), error);
}

void ResultDialog::discard()
{
    m_tasks->dismiss(m_id); // which closes this
}

} // namespace zk::app
