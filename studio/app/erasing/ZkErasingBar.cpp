#include "ZkErasingBar.h"

#include "ZkOwnKeys.h"
#include "ZkToolTipText.h"

#include "ZkWidgets.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>

namespace zk::app {

namespace {

constexpr int barHeight = 48; // widget pixels
constexpr int buttonSpacing = 8;

QString closeKey()
{
    return QStringLiteral("Ctrl+W");
}

} // namespace

ErasingBar::ErasingBar(QWidget *parent)
    : QWidget(parent)
    , m_title(new QLabel(this))
    , m_saved(new QWidget(this))
    , m_savedText(new QLabel(m_saved))
{
    setObjectName(QStringLiteral("ErasingBar"));
    setAttribute(Qt::WA_StyledBackground);
    ZkSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Erasing/ErasingBar"));
    setFixedHeight(barHeight);
    m_title->setProperty("PanelTitle", true); // for the skin
    m_title->setMinimumWidth(1); // gives way to everything else
    m_saved->setObjectName(QStringLiteral("ErasingSaved"));
    m_savedText->setObjectName(QStringLiteral("ErasingSavedText"));
    m_erase = addButton(QStringLiteral("ErasingSavedErase"));
    m_discard = addButton(QStringLiteral("ErasingSavedDiscard"));
    m_close = addButton(QStringLiteral("ErasingClose"));
    auto *const saved = new QHBoxLayout(m_saved);
    saved->setContentsMargins(0, 0, 0, 0);
    saved->setSpacing(buttonSpacing);
    for (QWidget *const widget : {static_cast<QWidget *>(m_savedText),
                                  static_cast<QWidget *>(m_erase),
                                  static_cast<QWidget *>(m_discard)})
        saved->addWidget(widget);
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(12, 0, 12, 0);
    row->setSpacing(buttonSpacing);
    row->addWidget(m_title, 1);
    row->addWidget(m_saved);
    row->addStretch(1);
    row->addWidget(m_close);
    connect(m_erase, &QPushButton::clicked, this, &ErasingBar::eraseClicked);
    connect(m_discard, &QPushButton::clicked, this, &ErasingBar::discardClicked);
    connect(m_close, &QPushButton::clicked, this, &ErasingBar::closeClicked);
    auto *const shortcut = new QShortcut(QKeySequence(closeKey()), this);
    connect(shortcut, &QShortcut::activated, m_close, &QPushButton::click);
    retranslate();
    setSavedSelections(0);
}

QPushButton *ErasingBar::addButton(const QString &name)
{
    auto *const button = new QPushButton(this);
    button->setObjectName(name);
    button->setFocusPolicy(Qt::TabFocus);
    new EnterClicks(button); // the space bar plays
    return button;
}

QVector<QPair<QString, QString>> ErasingBar::shortcuts()
{
    return {{closeKey(), tr("Close AI Erase")}};
}

void ErasingBar::setTitle(const QString &clipName)
{
    m_title->setText(clipName);
    m_title->setToolTip(clipName);
}

void ErasingBar::setSavedSelections(int count)
{
    m_savedCount = count;
    m_savedText->setText(tr("%n saved selection(s)", nullptr, count));
    m_saved->setVisible(count > 0);
}

void ErasingBar::setIdle(bool isIdle)
{
    m_erase->setEnabled(isIdle);
    m_discard->setEnabled(isIdle);
}

void ErasingBar::setClosable(bool isClosable)
{
    m_close->setEnabled(isClosable);
}

void ErasingBar::retranslate()
{
    m_erase->setText(tr("Erase"));
    m_erase->setToolTip(tr("Erase what the saved selections mark"));
    m_discard->setText(tr("Discard"));
    m_discard->setToolTip(tr("Give up the saved selections"));
    m_close->setText(tr("Close"));
    setToolTipWithKey(m_close, tr("Close AI Erase"), closeKey());
    setSavedSelections(m_savedCount);
}

void ErasingBar::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}

} // namespace zk::app
