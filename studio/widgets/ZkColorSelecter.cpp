#include "ZkColorField_p.h"
#include "ZkWidgets.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QRegularExpressionValidator>
#include <QScreen>
#include <QVBoxLayout>

namespace {

constexpr int margin = 12; // widget pixels
constexpr int swatchSide = 28;
constexpr int swatchGap = 4;
constexpr int swatchColumns = 8;
constexpr int fieldWidth = swatchColumns * (swatchSide + swatchGap) - swatchGap;
constexpr int fieldHeight = 160;
constexpr int bandHeight = 22;

// Colours that stand out from most pictures come first: the dialog chooses those of overlays and strokes.
const char *const swatchColors[] = {"#c9727b",
                                    "#f0476b",
                                    "#ff8a3d",
                                    "#ffd23f",
                                    "#5ad469",
                                    "#18b7d9",
                                    "#4c7dff",
                                    "#b36bff",
                                    "#ffffff",
                                    "#c8ccd2",
                                    "#9aa0a9",
                                    "#62676f",
                                    "#3f434a",
                                    "#26282c",
                                    "#8c4a2f",
                                    "#000000"};

// Of the window, within the screen that it is on.
QPoint placeOnScreen(const QRect &window)
{
    const QScreen *screen = QGuiApplication::screenAt(window.center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen)
        return window.topLeft();
    const QRect area = screen->availableGeometry();
    return {qMax(area.left(), qMin(window.left(), area.right() + 1 - window.width())),
            qMax(area.top(), qMin(window.top(), area.bottom() + 1 - window.height()))};
}

} // namespace

class ZkColorSelecter::Private
{
public:
    explicit Private(ZkColorSelecter *owner);

    void addSwatches(QVBoxLayout *column);
    QHBoxLayout *makeHexRow();
    void show(const QColor &color);
    void take(const QColor &color);
    void takeFields();
    void takeHex();

    ZkColorSelecter *q;
    QColor color = Qt::white;
    QColor atOpening;
    ZkSaturationValueField *field;
    ZkHueBand *band;
    QLineEdit *hex;
    ZkColorToolButton *sample;
};

ZkColorSelecter::Private::Private(ZkColorSelecter *owner)
    : q(owner)
    , field(new ZkSaturationValueField(q))
    , band(new ZkHueBand(q))
    , hex(new QLineEdit(q))
    , sample(new ZkColorToolButton(color, q))
{
    field->setFixedSize(fieldWidth, fieldHeight);
    field->setAccessibleName(ZkColorSelecter::tr("Saturation and brightness"));
    band->setFixedSize(fieldWidth, bandHeight);
    band->setAccessibleName(ZkColorSelecter::tr("Hue"));
    auto *column = new QVBoxLayout(q);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(margin / 2);
    column->setSizeConstraint(QLayout::SetFixedSize);
    column->addWidget(field);
    column->addWidget(band);
    column->addLayout(makeHexRow());
    addSwatches(column);
    QObject::connect(field, &ZkColorField::sigMoved, q, [this] { takeFields(); });
    QObject::connect(band, &ZkColorField::sigMoved, q, [this] { takeFields(); });
    show(color);
}

QHBoxLayout *ZkColorSelecter::Private::makeHexRow()
{
    static const QRegularExpression digits(QStringLiteral("#?[0-9A-Fa-f]{0,6}"));
    hex->setValidator(new QRegularExpressionValidator(digits, hex));
    hex->setAccessibleName(ZkColorSelecter::tr("Hexadecimal value"));
    sample->setFocusPolicy(Qt::NoFocus);
    sample->setAttribute(Qt::WA_TransparentForMouseEvents);
    sample->setAccessibleName(ZkColorSelecter::tr("Current colour"));
    QObject::connect(hex, &QLineEdit::editingFinished, q, [this] { takeHex(); });
    QObject::connect(hex, &QLineEdit::textEdited, q, [this] {
        if (QColor(hex->text()).isValid() && hex->text().size() == 7)
            takeHex();
    });
    auto *row = new QHBoxLayout;
    row->addWidget(sample);
    row->addWidget(hex, 1);
    return row;
}

void ZkColorSelecter::Private::addSwatches(QVBoxLayout *column)
{
    auto *grid = new QGridLayout;
    grid->setSpacing(swatchGap);
    int count = 0;
    for (const char *name : swatchColors) {
        const QColor swatch(QLatin1String {name});
        auto *button = new ZkColorToolButton(swatch, q);
        button->setFixedSize(swatchSide, swatchSide);
        button->setToolTip(swatch.name());
        QObject::connect(button, &QAbstractButton::clicked, q, [this, swatch] { take(swatch); });
        grid->addWidget(button, count / swatchColumns, count % swatchColumns);
        ++count;
    }
    column->addLayout(grid);
}

// A grey has no hue and black no saturation either: the fields stay where they were.
void ZkColorSelecter::Private::show(const QColor &shown)
{
    color = shown;
    const QColor hsv = shown.toHsv();
    if (hsv.hsvHueF() >= 0)
        band->setPosition({hsv.hsvHueF(), 0});
    field->setHue(band->position().x());
    const double saturation = hsv.value() > 0 ? hsv.hsvSaturationF() : field->position().x();
    field->setPosition({saturation, hsv.valueF()});
    sample->setColor(shown);
    if (QColor(hex->text()) != shown)
        hex->setText(shown.name());
}

void ZkColorSelecter::Private::take(const QColor &taken)
{
    const QColor before = color;
    show(taken);
    if (taken != before)
        emit q->sigCurrentColorChanged(taken);
}

void ZkColorSelecter::Private::takeFields()
{
    const double hue = band->position().x();
    const QColor hsv = QColor::fromHsvF(hue, field->position().x(), field->position().y());
    const QPointF position = field->position();
    take(hsv.toRgb());
    // The way through 8 bits must not move what is being dragged.
    band->setPosition({hue, 0});
    field->setHue(hue);
    field->setPosition(position);
}

void ZkColorSelecter::Private::takeHex()
{
    QString text = hex->text();
    if (!text.startsWith(QLatin1Char('#')))
        text.prepend(QLatin1Char('#'));
    const QColor typed(text);
    if (typed.isValid())
        take(typed);
    hex->setText(color.name());
}

ZkColorSelecter::ZkColorSelecter(QWidget *parent)
    : QDialog(parent, Qt::Popup | Qt::FramelessWindowHint)
    , d(std::make_unique<Private>(this))
{
    setObjectName(QStringLiteral("ZkColorSelecter"));
    setAccessibleName(tr("Choose a colour"));
    setAttribute(Qt::WA_StyledBackground);
    ZkSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Widgets/ColorSelecter"));
    adjustSize(); // whoever places it needs the size before it is shown
}

ZkColorSelecter::~ZkColorSelecter() = default;

QColor ZkColorSelecter::currentColor() const
{
    return d->color;
}

void ZkColorSelecter::setCurrentColor(const QColor &color)
{
    if (color.isValid())
        d->show(QColor(color.rgb()));
}

void ZkColorSelecter::reject()
{
    if (isVisible() && d->atOpening.isValid())
        d->take(d->atOpening);
    QDialog::reject();
}

void ZkColorSelecter::showEvent(QShowEvent *event)
{
    d->atOpening = d->color;
    d->field->setFocus();
    move(placeOnScreen(geometry()));
    QDialog::showEvent(event);
}

void ZkColorSelecter::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        accept();
    else
        QDialog::keyPressEvent(event);
}

void ZkColorSelecter::mousePressEvent(QMouseEvent *event)
{
    if (rect().contains(event->pos()))
        QDialog::mousePressEvent(event);
    else
        accept();
}
