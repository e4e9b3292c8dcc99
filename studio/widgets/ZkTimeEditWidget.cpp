#include "ZkTimeText_p.h"
#include "ZkWidgets.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>

namespace {

constexpr int wheelStep = 120; // eighths of a degree

} // namespace

class ZkTimeEditWidget::Private
{
public:
    explicit Private(ZkTimeEditWidget *owner);

    bool isTyping() const { return edit->hasFocus() && edit->isModified(); }
    void show() { edit->setText(zkTimeText(value, frameRate)); } // ends typing
    void refresh();
    void report(qint64 frame);
    void stepBy(int frames);
    bool handleKey(const QKeyEvent *event);
    void handleWheel(const QWheelEvent *event);
    void retranslate() { edit->setAccessibleName(ZkTimeEditWidget::tr("Time code")); }
    static bool isOwnKey(const QKeyEvent *event);

    ZkTimeEditWidget *q;
    QLineEdit *edit;
    float frameRate = 0;
    int maximum = 0;
    int value = 0;
    int wheelRest = 0;
};

ZkTimeEditWidget::Private::Private(ZkTimeEditWidget *owner)
    : q(owner)
    , edit(new QLineEdit(owner))
{
    edit->setAlignment(Qt::AlignCenter);
    auto *row = new QHBoxLayout(q);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(edit);
    q->setFocusProxy(edit);
    edit->installEventFilter(q);
    QObject::connect(edit, &QLineEdit::editingFinished, q, &ZkTimeEditWidget::commit);
    retranslate();
    show();
}

void ZkTimeEditWidget::Private::refresh()
{
    if (!isTyping())
        show();
}

void ZkTimeEditWidget::Private::report(qint64 frame)
{
    const int before = value;
    value = int(qBound<qint64>(0, frame, maximum));
    show();
    if (value != before)
        emit q->sigValueChanged(value);
}

// From what is typed, where that is a time.
void ZkTimeEditWidget::Private::stepBy(int frames)
{
    const qint64 typed = isTyping() ? zkFrameOfText(edit->text(), frameRate) : -1;
    report((typed >= 0 ? typed : value) + frames);
}

// Keys that have a meaning here though the window may have a shortcut for them.
bool ZkTimeEditWidget::Private::isOwnKey(const QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        return !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    default:
        return false;
    }
}

bool ZkTimeEditWidget::Private::handleKey(const QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Up:
        stepBy(1);
        return true;
    case Qt::Key_Down:
        stepBy(-1);
        return true;
    case Qt::Key_Escape:
        show();
        edit->clearFocus();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        q->commit();
        edit->clearFocus(); // gives the keys back to the window's shortcuts
        return true;
    default:
        return false;
    }
}

void ZkTimeEditWidget::Private::handleWheel(const QWheelEvent *event)
{
    wheelRest += event->angleDelta().y();
    const int steps = wheelRest / wheelStep;
    wheelRest -= steps * wheelStep;
    if (steps != 0)
        stepBy(steps);
}

ZkTimeEditWidget *ZkTimeEditWidget::CreateTimeEditWidget(QWidget *parent, int kind)
{
    return new ZkTimeEditWidget(parent, kind);
}

ZkTimeEditWidget::ZkTimeEditWidget(QWidget *parent, int kind)
    : ZkWidget(parent)
    , d(std::make_unique<Private>(this))
{
    setProperty("TimeKind", kind);
    ZkSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Widgets/TimeEdit"));
}

ZkTimeEditWidget::~ZkTimeEditWidget() = default;

float ZkTimeEditWidget::frameRate() const
{
    return d->frameRate;
}

void ZkTimeEditWidget::setFrameRate(float framesPerSecond)
{
    d->frameRate = framesPerSecond;
    d->refresh();
}

int ZkTimeEditWidget::maximum() const
{
    return d->maximum;
}

void ZkTimeEditWidget::setMaximum(int frame)
{
    d->maximum = qMax(0, frame);
    setValue(d->value);
}

int ZkTimeEditWidget::value() const
{
    return d->value;
}

void ZkTimeEditWidget::setValue(int frame)
{
    d->value = qBound(0, frame, d->maximum);
    d->refresh();
}

void ZkTimeEditWidget::commit()
{
    if (!d->edit->isModified())
        return;
    const qint64 typed = zkFrameOfText(d->edit->text(), d->frameRate);
    d->report(typed >= 0 ? typed : d->value);
}

bool ZkTimeEditWidget::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        if (!Private::isOwnKey(static_cast<QKeyEvent *>(event)))
            break;
        event->accept();
        return true;
    case QEvent::KeyPress:
        if (d->handleKey(static_cast<QKeyEvent *>(event)))
            return true;
        break;
    case QEvent::Wheel:
        d->handleWheel(static_cast<QWheelEvent *>(event));
        return true;
    default:
        break;
    }
    return ZkWidget::eventFilter(watched, event);
}

void ZkTimeEditWidget::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        d->retranslate();
    ZkWidget::changeEvent(event);
}
