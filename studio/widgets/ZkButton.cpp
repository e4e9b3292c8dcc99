#include "ZkFocusFrame_p.h"
#include "ZkWidgets.h"

#include <QFile>
#include <QHash>
#include <QImageReader>
#include <QKeyEvent>

#include <cmath>

namespace {

constexpr int flagCount = 7; // states
constexpr int lineMargin = 2; // widget pixels above and below a text without a picture

// The state whose look stands in for one that has none; 0: there is no plainer one.
int plainerState(int state)
{
    switch (state) {
    case ZkButton::OnHoverState:
    case ZkButton::OnPressedState:
        return ZkButton::OnState;
    case ZkButton::OnState:
        return ZkButton::PressedState;
    case ZkButton::NormalState:
        return 0;
    default:
        return ZkButton::NormalState;
    }
}

template<typename Value>
Value lookOf(const QHash<int, Value> &looks, int state)
{
    while (state && !looks.contains(state))
        state = plainerState(state);
    return looks.value(state);
}

// Somewhat narrower letters, when they make room for all of the text: fonts differ in width.
QFont fittedFont(const ZkButton *button, int room)
{
    QFont font = button->font();
    for (int stretch : {100, 95, 90, 85, 80}) {
        font.setStretch(stretch);
        if (QFontMetricsF(font).horizontalAdvance(button->text()) <= room)
            return font;
    }
    return button->font();
}

} // namespace

class ZkButton::Private
{
public:
    QColor color(int role, int state) const;
    QSize contentSize(const ZkButton *button, bool withText) const;
    void paintBackground(QPainter &painter, const QRectF &area, int state) const;
    void paintImage(QPainter &painter, const QRect &place, int state) const;
    void paintContent(QPainter &painter, const ZkButton *button) const;

    struct Image
    {
        QIcon icon;
        QSize size; // as it was drawn, in widget pixels
    };

    QHash<int, Image> images; // by state
    QHash<int, QHash<int, int>> colors; // palette numbers by role and state
    QSize imageSize {24, 24};
    double space = 4;
    double radius = 4;
    double borderWidth = 0;
    int style = TextBesideImage;
    Qt::TextElideMode elideMode = Qt::ElideNone;
};

QColor ZkButton::Private::color(int role, int state) const
{
    const int number = lookOf(colors.value(role), state);
    if (number)
        return ZkSkinManager::instance()->color(number);
    return role == TextRole ? ZkSkinManager::instance()->color(ZKSKIN::Text) : Qt::transparent;
}

QSize ZkButton::Private::contentSize(const ZkButton *button, bool withText) const
{
    const QFontMetrics metrics = button->fontMetrics();
    QSize size(0, metrics.height() + 2 * lineMargin);
    if (style != TextOnly)
        size = QSize(imageSize.width(), qMax(size.height(), imageSize.height()));
    if (style == ImageOnly)
        return imageSize;
    if (withText)
        size.rwidth() +=
            int(std::ceil(QFontMetricsF(button->font()).horizontalAdvance(button->text())))
            + (style == TextBesideImage ? int(std::ceil(space)) : 0);
    return size;
}

void ZkButton::Private::paintBackground(QPainter &painter, const QRectF &area, int state) const
{
    const QColor border = borderWidth > 0 ? color(BorderRole, state) : Qt::transparent;
    painter.setBrush(color(BackgroundRole, state));
    painter.setPen(border.alpha() ? QPen(border, borderWidth) : QPen(Qt::NoPen));
    const double inset = border.alpha() ? borderWidth / 2 : 0;
    painter.drawRoundedRect(area.adjusted(inset, inset, -inset, -inset), radius, radius);
}

// A small image stands in the middle of its place: made larger its lines would be thicker than others.
void ZkButton::Private::paintImage(QPainter &painter, const QRect &place, int state) const
{
    const Image image = lookOf(images, state);
    const QSize size = image.size.boundedTo(place.size());
    image.icon.paint(&painter,
                     QRect(place.topLeft()
                               + QPoint((place.width() - size.width()) / 2,
                                        (place.height() - size.height()) / 2),
                           size));
}

// Image and text stand in the middle together.
void ZkButton::Private::paintContent(QPainter &painter, const ZkButton *button) const
{
    const QRect area = button->contentsRect();
    const QSize content = contentSize(button, true);
    QRect place(area.left() + qMax(0, (area.width() - content.width()) / 2),
                area.top(),
                qMin(area.width(), content.width()),
                area.height());
    if (button->layoutDirection() == Qt::RightToLeft)
        painter.setLayoutDirection(Qt::RightToLeft);
    if (style != TextOnly) {
        const QRect image(
            QPoint(place.left(), area.top() + (area.height() - imageSize.height()) / 2), imageSize);
        paintImage(painter,
                   QStyle::visualRect(button->layoutDirection(), button->rect(), image),
                   button->state());
        place.setLeft(image.right() + 1 + int(std::ceil(space)));
    }
    if (style == ImageOnly)
        return;
    place.setRight(area.right());
    painter.setFont(fittedFont(button, place.width()));
    const QString text =
        painter.fontMetrics().elidedText(button->text(), elideMode, qMax(0, place.width()));
    painter.setPen(color(TextRole, button->state()));
    painter.drawText(QStyle::visualRect(button->layoutDirection(), button->rect(), place),
                     Qt::AlignVCenter | Qt::AlignLeading | Qt::TextSingleLine,
                     text);
}

ZkButton *
ZkButton::CreateButton(QWidget *parent, const QString &text, const QString &imagePath, int style)
{
    auto *button = new ZkButton(parent, style);
    button->setText(text);
    button->setImage(NormalState, imagePath);
    return button;
}

ZkButton::ZkButton(QWidget *parent, int style)
    : QAbstractButton(parent)
    , d(std::make_unique<Private>())
{
    d->style = style;
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::TabFocus); // a click leaves the keys to the window's shortcuts
    ZkSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Widgets/Button"));
    setAutoSize(true);
}

ZkButton::~ZkButton() = default;

void ZkButton::setImage(int states, const QString &path)
{
    for (int bit = 0; bit < flagCount; ++bit) {
        if (states & (1 << bit) && QFile::exists(path))
            d->images.insert(1 << bit, {QIcon(path), QImageReader(path).size()});
    }
    update();
}

void ZkButton::setColor(int roles, int states, int colorType)
{
    for (int role : {TextRole, BorderRole, BackgroundRole}) {
        for (int bit = 0; bit < flagCount; ++bit) {
            if (roles & role && states & (1 << bit))
                d->colors[role].insert(1 << bit, colorType);
        }
    }
    update();
}

void ZkButton::setAutoSize(bool on)
{
    const QSizePolicy::Policy policy = on ? QSizePolicy::Fixed : QSizePolicy::Preferred;
    setSizePolicy(policy, policy);
}

void ZkButton::setImageSize(const QSize &size)
{
    d->imageSize = size;
    updateGeometry();
    update();
}

void ZkButton::setSpace(double pixels)
{
    d->space = pixels;
    updateGeometry();
    update();
}

void ZkButton::setBorderRadius(double pixels)
{
    d->radius = pixels;
    update();
}

void ZkButton::setBorderWidth(double pixels)
{
    d->borderWidth = pixels;
    update();
}

void ZkButton::setElideMode(Qt::TextElideMode mode)
{
    d->elideMode = mode;
    updateGeometry();
    update();
}

int ZkButton::state() const
{
    if (!isEnabled())
        return DisabledState;
    if (isDown())
        return isChecked() ? OnPressedState : PressedState;
    if (underMouse())
        return isChecked() ? OnHoverState : HoverState;
    return isChecked() ? OnState : NormalState;
}

QSize ZkButton::sizeHint() const
{
    const QMargins margins = contentsMargins();
    return d->contentSize(this, true)
        + QSize(margins.left() + margins.right(), margins.top() + margins.bottom());
}

QSize ZkButton::minimumSizeHint() const
{
    if (d->elideMode == Qt::ElideNone)
        return sizeHint();
    const QMargins margins = contentsMargins();
    return d->contentSize(this, false)
        + QSize(margins.left() + margins.right(), margins.top() + margins.bottom());
}

bool ZkButton::event(QEvent *event)
{
    const bool handled = QAbstractButton::event(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        updateGeometry();
    return handled;
}

void ZkButton::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void ZkButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    d->paintBackground(painter, rect(), state());
    d->paintContent(painter, this);
    painter.end();
    zkPaintFocusFrame(this);
}
