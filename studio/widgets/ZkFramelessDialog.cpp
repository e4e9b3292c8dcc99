#include "ZkWidgets.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <QWindow>

namespace {

constexpr int normalTitleBarHeight = 36; // widget pixels, as all sizes here
constexpr int normalButtonBarHeight = 56;
constexpr int buttonSpacing = 12;
constexpr int titleMargin = 12;
constexpr int closeSide = 24;
constexpr int closeMargin = 4;
constexpr int buttonWidth = 88; // at least
constexpr int frameWidth = 1;

// A program cannot place its windows there, but can ask the system to move them.
bool placesWindowsItself()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

} // namespace

class ZkFramelessDialog::Private
{
public:
    explicit Private(ZkFramelessDialog *dialog)
        : q(dialog)
    { }

    void buildTitleBar();
    void buildButtonBar();
    void retranslate();
    void closeClicked();
    void mousePress(const QMouseEvent *event);

    ZkFramelessDialog *q;
    ZkWidget *titleBar = nullptr;
    QLabel *titleLabel = nullptr;
    ZkToolButton *closeButton = nullptr;
    QVBoxLayout *workArea = nullptr;
    QWidget *content = nullptr;
    ZkWidget *buttonBar = nullptr;
    QHBoxLayout *buttonRow = nullptr;
    QPoint grip; // of the mouse on the window
    bool isMoving = false;
};

void ZkFramelessDialog::Private::buildTitleBar()
{
    titleBar = new ZkWidget(q);
    titleBar->setFixedHeight(normalTitleBarHeight);
    titleBar->installEventFilter(q);
    titleLabel = new QLabel(titleBar);
    titleLabel->setAttribute(Qt::WA_TransparentForMouseEvents);
    closeButton = new ZkToolButton(titleBar);
    closeButton->setFixedSize(closeSide, closeSide);
    ZkSkinManager::instance()->applyStyleSheet(closeButton, QStringLiteral("Widgets/TitleClose"));
    auto *row = new QHBoxLayout(titleBar);
    row->setContentsMargins(titleMargin, 0, closeMargin, 0);
    row->addWidget(titleLabel, 1);
    row->addWidget(closeButton);
    connect(closeButton, &QAbstractButton::clicked, q, [this] { closeClicked(); });
}

void ZkFramelessDialog::Private::buildButtonBar()
{
    buttonBar = new ZkWidget(q);
    buttonBar->setFixedHeight(normalButtonBarHeight);
    buttonRow = new QHBoxLayout(buttonBar);
    buttonRow->setContentsMargins(0, 0, 16, 16);
    buttonRow->setSpacing(buttonSpacing);
    buttonRow->addStretch();
    buttonBar->hide();
}

void ZkFramelessDialog::Private::retranslate()
{
    closeButton->setToolTip(ZkFramelessDialog::tr("Close"));
}

void ZkFramelessDialog::Private::closeClicked()
{
    emit q->sigTitleButtonClicked(CloseButton);
    if (q->isVisible())
        q->reject();
}

void ZkFramelessDialog::Private::mousePress(const QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    if (placesWindowsItself() && q->windowHandle()->startSystemMove())
        return;
    isMoving = true;
    grip = event->globalPos() - q->pos();
}

ZkFramelessDialog::ZkFramelessDialog(QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint)
    , d(std::make_unique<Private>(this))
{
    ZkSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Widgets/FramelessDialog"));
    d->buildTitleBar();
    auto *work = new ZkWidget(this);
    d->workArea = new QVBoxLayout(work);
    d->workArea->setContentsMargins(24, 8, 24, 16);
    d->buildButtonBar();
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(frameWidth, frameWidth, frameWidth, frameWidth);
    column->setSpacing(0);
    column->addWidget(d->titleBar);
    column->addWidget(work, 1);
    column->addWidget(d->buttonBar);
    d->retranslate();
}

ZkFramelessDialog::~ZkFramelessDialog() = default;

void ZkFramelessDialog::setTitle(const QString &title)
{
    setWindowTitle(title);
    d->titleLabel->setText(title);
}

void ZkFramelessDialog::setTitleButtons(int flags)
{
    d->closeButton->setVisible(flags & CloseButton);
}

QAbstractButton *ZkFramelessDialog::titleButton(int flag) const
{
    return flag == CloseButton && !d->closeButton->isHidden() ? d->closeButton : nullptr;
}

void ZkFramelessDialog::setTitleBarHeight(int pixels)
{
    d->titleBar->setFixedHeight(pixels);
}

void ZkFramelessDialog::setButtonBarHeight(int pixels)
{
    d->buttonBar->setFixedHeight(pixels);
}

void ZkFramelessDialog::setButtonBarMargins(const QMargins &margins)
{
    d->buttonRow->setContentsMargins(margins);
}

ZkPushButton *ZkFramelessDialog::addPushButton(const QString &text, ZkPushButton::ZButtonType type)
{
    ZkPushButton *button = ZkPushButton::CreateButton(d->buttonBar, type, ZkPushButton::Size24);
    button->setText(text);
    button->setMinimumWidth(buttonWidth);
    d->buttonRow->addWidget(button);
    d->buttonBar->show();
    if (!focusWidget())
        button->setFocus(); // rather than the close button
    return button;
}

void ZkFramelessDialog::setWorkAreaMargins(const QMargins &margins)
{
    d->workArea->setContentsMargins(margins);
}

void ZkFramelessDialog::setContentWidget(QWidget *content)
{
    if (content == d->content)
        return;
    delete d->content;
    d->content = content;
    if (content)
        d->workArea->addWidget(content);
}

QWidget *ZkFramelessDialog::contentWidget() const
{
    return d->content;
}

// The title bar, by which the dialog is dragged.
bool ZkFramelessDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == d->titleBar && event->type() == QEvent::MouseButtonPress)
        d->mousePress(static_cast<QMouseEvent *>(event));
    else if (watched == d->titleBar && event->type() == QEvent::MouseButtonRelease)
        d->isMoving = false;
    else if (watched == d->titleBar && event->type() == QEvent::MouseMove && d->isMoving)
        move(static_cast<QMouseEvent *>(event)->globalPos() - d->grip);
    return QDialog::eventFilter(watched, event);
}

void ZkFramelessDialog::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        d->retranslate();
    QDialog::changeEvent(event);
}

// A frame that needs no compositor.
void ZkFramelessDialog::paintEvent(QPaintEvent *)
{
    const ZkSkinManager *skin = ZkSkinManager::instance();
    QPainter painter(this);
    painter.fillRect(rect(), skin->color(ZKSKIN::DisabledText));
    painter.fillRect(rect().adjusted(frameWidth, frameWidth, -frameWidth, -frameWidth),
                     skin->color(ZKSKIN::PanelBackground));
}
