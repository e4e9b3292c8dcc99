#include "widgets/ZkFunctionTips.h"
#include "ZkFunctionTipBubble_p.h"

#include <QCoreApplication>
#include <QHash>
#include <QPointer>

namespace {

struct KnownTip
{
    int number;
    const char *text;
    int times; // that it may be shown
};

constexpr KnownTip knownTips[] = {
    {ZkFunctionTips::EraseByBox,
     QT_TRANSLATE_NOOP("ZkFunctionTips", "Drag a box around the object that you want to remove."),
     3},
};

class CountsInMemory : public IZkFunctionTipCounts
{
public:
    int shownTimes(int tip) const override { return m_times.value(tip); }
    void setShownTimes(int tip, int times) override { m_times.insert(tip, times); }

private:
    QHash<int, int> m_times;
};

struct State
{
    CountsInMemory inMemory;
    IZkFunctionTipCounts *counts = &inMemory;
    QHash<int, QPointer<ZkFunctionTipBubble>> visible;
};

State &state()
{
    static State tipState;
    return tipState;
}

const KnownTip *find(int number)
{
    for (const KnownTip &tip : knownTips) {
        if (tip.number == number)
            return &tip;
    }
    return nullptr;
}

} // namespace

bool ZkFunctionTips::canShowTip(int tip)
{
    const KnownTip *found = find(tip);
    return found && state().counts->shownTimes(tip) < found->times;
}

bool ZkFunctionTips::showTip(int tip, const QPoint &globalPosition, QWidget *parent)
{
    if (!parent || visibleTip(tip) || !canShowTip(tip))
        return false;
    auto *bubble = new ZkFunctionTipBubble(tip, text(tip), parent);
    state().visible.insert(tip, bubble);
    bubble->pointAt(globalPosition);
    state().counts->setShownTimes(tip, state().counts->shownTimes(tip) + 1);
    return true;
}

void ZkFunctionTips::hideVisibleTip(int tip)
{
    if (ZkFunctionTipBubble *bubble = state().visible.take(tip)) {
        bubble->hide();
        bubble->deleteLater();
    }
}

QWidget *ZkFunctionTips::visibleTip(int tip)
{
    ZkFunctionTipBubble *bubble = state().visible.value(tip);
    return bubble && !bubble->isHidden() ? bubble : nullptr;
}

QString ZkFunctionTips::text(int tip)
{
    const KnownTip *found = find(tip);
    return found ? QCoreApplication::translate("ZkFunctionTips", found->text) : QString();
}

void ZkFunctionTips::setCounts(IZkFunctionTipCounts *counts)
{
    state().counts = counts ? counts : &state().inMemory;
}
