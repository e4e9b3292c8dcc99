#include "ZkWidgets.h"

#include <QButtonGroup>
#include <QHBoxLayout>

namespace {

constexpr int sideMargin = 16; // widget pixels
constexpr int gap = 16;

} // namespace

ZkToolBar::ZkToolBar(QWidget *parent)
    : ZkWidget(parent)
    , m_layout(new QHBoxLayout(this))
{
    m_layout->setContentsMargins(sideMargin, 0, sideMargin, 0);
    m_layout->setSpacing(gap);
    m_layout->setAlignment(Qt::AlignLeft); // or buttons would spread over a wide bar
}

ZkToolBar::~ZkToolBar() = default;

void ZkToolBar::addWidget(QWidget *widget)
{
    m_layout->addWidget(widget);
}

ZkToolButtonBar::ZkToolButtonBar(QWidget *parent)
    : ZkToolBar(parent)
    , m_group(new QButtonGroup(this))
{
    m_group->setExclusive(false);
    connect(m_group, &QButtonGroup::idClicked, this, &ZkToolButtonBar::sigButtonClick);
}

ZkToolButtonBar::~ZkToolButtonBar() = default;

QAbstractButton *ZkToolButtonBar::button(int id) const
{
    return m_group->button(id);
}

QAbstractButton *ZkToolButtonBar::addButton(int id,
                                            const QString &objectName,
                                            const QString &styleKey,
                                            bool checkable)
{
    QAbstractButton *button = createButton(id);
    button->setObjectName(objectName);
    button->setCheckable(checkable);
    ZkSkinManager::instance()->applyStyleSheet(button, styleKey);
    m_group->addButton(button, id);
    addWidget(button);
    return button;
}

QAbstractButton *ZkToolButtonBar::createButton(int)
{
    return new ZkToolButton(this);
}
