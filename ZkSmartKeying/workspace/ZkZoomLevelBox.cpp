#include "ZkZoomLevelBox.h"

#include <QEvent>
#include <QSignalBlocker>

ZkZoomLevelBox::ZkZoomLevelBox(const QVector<int> &levels, QWidget *parent)
    : ZkComboBox(parent)
    , m_levels(QVector<int> {0} + levels)
{
    for (const int level : qAsConst(m_levels))
        addItem(levelText(level), level);
    setCurrentIndex(0);
    connect(this,
            QOverload<int>::of(&QComboBox::currentIndexChanged),
            this,
            &ZkZoomLevelBox::reportChange);
    connect(
        this, QOverload<int>::of(&QComboBox::activated), this, &ZkZoomLevelBox::reportActivation);
}

ZkZoomLevelBox::~ZkZoomLevelBox() = default;

QString ZkZoomLevelBox::levelText(int percent)
{
    return percent == 0 ? tr("Fit") : tr("%1%").arg(percent);
}

void ZkZoomLevelBox::showPopup()
{
    m_isReported = false;
    ZkComboBox::showPopup();
}

void ZkZoomLevelBox::reportChange(int row)
{
    m_isReported = true;
    report(row);
}

// Keys step to other entries only; the list is where the shown one can be chosen again.
void ZkZoomLevelBox::reportActivation(int row)
{
    if (!m_isReported)
        report(row);
}

void ZkZoomLevelBox::report(int row)
{
    if (row >= 0 && row < m_levels.size())
        emit sigLevelChosen(m_levels.at(row));
}

void ZkZoomLevelBox::showLevel(int percent)
{
    // What the frame has become is not a wish to zoom it.
    const QSignalBlocker quiet(this);
    const int row = m_levels.indexOf(percent);
    if (row >= 0)
        setCurrentIndex(row);
    else
        showOtherLevel(percent);
}

void ZkZoomLevelBox::showOtherLevel(int percent)
{
    setCurrentIndex(-1);
    const int row = m_levels.size();
    if (count() == row)
        addItem(QString(), QStringLiteral("hidden"));
    setItemText(row, levelText(percent));
    setRowHidden(row, true);
    setCurrentIndex(row);
}

void ZkZoomLevelBox::changeEvent(QEvent *event)
{
    ZkComboBox::changeEvent(event);
    // The entry behind the levels has its text from the next zoom; percentages hardly differ.
    if (event->type() == QEvent::LanguageChange) {
        for (int row = 0; row < m_levels.size(); ++row)
            setItemText(row, levelText(m_levels.at(row)));
    }
}
