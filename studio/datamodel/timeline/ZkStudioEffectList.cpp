#include "ZkStudioEffectList.h"

#include "ZkStudioEffect.h"
#include "ZkStudioTimeline.h"

#include <utility>

// Puts an effect in its place, or takes it from there.
class ZkStudioEffectList::PlaceItem : public IZkUndoRedoItem
{
public:
    PlaceItem(ZkStudioEffectList *list, const ZkEffectPtr &effect, int index, bool isAdded)
        : m_list(list)
        , m_effect(effect)
        , m_index(index)
        , m_isAdded(isAdded)
    { }

    void redo() override { place(m_isAdded); }
    void undo() override { place(!m_isAdded); }
    QString description() const override
    {
        return m_isAdded ? ZkStudioEffectList::tr("Add effect")
                         : ZkStudioEffectList::tr("Remove effect");
    }

private:
    void place(bool isIn)
    {
        if (isIn)
            m_list->insertAt(m_index, m_effect);
        else
            m_list->takeOut(m_effect);
    }

    ZkStudioEffectList *const m_list;
    const ZkEffectPtr m_effect;
    const int m_index;
    const bool m_isAdded;
};

class ZkStudioEffectList::EnableItem : public IZkUndoRedoItem
{
public:
    EnableItem(ZkStudioEffectList *list, const ZkEffectPtr &effect, bool isEnabled)
        : m_list(list)
        , m_effect(effect.staticCast<ZkStudioEffect>())
        , m_wasEnabled(effect->isEnabled())
        , m_isEnabled(isEnabled)
    { }

    void redo() override { enable(m_isEnabled); }
    void undo() override { enable(m_wasEnabled); }
    QString description() const override
    {
        return m_isEnabled ? ZkStudioEffectList::tr("Enable effect")
                           : ZkStudioEffectList::tr("Disable effect");
    }

private:
    void enable(bool isEnabled)
    {
        m_effect->restoreEnabled(isEnabled);
        m_list->report(ZKTIMELINE::EffectPropertyChanged);
    }

    ZkStudioEffectList *const m_list;
    const QSharedPointer<ZkStudioEffect> m_effect;
    const bool m_wasEnabled;
    const bool m_isEnabled;
};

ZkStudioEffectList::ZkStudioEffectList(ZkStudioTimeline *timeline)
    : m_timeline(timeline)
{ }

ZkStudioEffectList::~ZkStudioEffectList()
{
    // Whoever still holds an effect must not change the list through it.
    for (const ZkEffectPtr &effect : qAsConst(m_effects))
        effect.staticCast<ZkStudioEffect>()->setList(nullptr);
}

ZkStudioEffect *ZkStudioEffectList::cutoutEffect() const
{
    for (const ZkEffectPtr &effect : m_effects) {
        if (effect->descriptor()->type() == ZKTIMELINE::SmartKeyingEffect)
            return static_cast<ZkStudioEffect *>(effect.data());
    }
    return nullptr;
}

void ZkStudioEffectList::copyFrom(const ZkStudioEffectList &other)
{
    for (const ZkEffectPtr &effect : other.m_effects)
        restore(effect->createInstance());
}

void ZkStudioEffectList::restore(const ZkEffectPtr &effect)
{
    effect.staticCast<ZkStudioEffect>()->setList(this);
    m_effects.append(effect);
}

void ZkStudioEffectList::changeEnabled(ZkStudioEffect *effect, bool enabled)
{
    for (const ZkEffectPtr &own : qAsConst(m_effects)) {
        if (own == effect) {
            m_timeline->undoRedoService()->push(new EnableItem(this, own, enabled));
            return;
        }
    }
}

IZkEffect *ZkStudioEffectList::effectAt(int index) const
{
    return index >= 0 && index < m_effects.size() ? m_effects.at(index).data() : nullptr;
}

bool ZkStudioEffectList::add(const ZkEffectPtr &effect)
{
    const auto own = effect.dynamicCast<ZkStudioEffect>();
    if (!own || own->list())
        return false;
    m_timeline->undoRedoService()->push(new PlaceItem(this, effect, count(), true));
    return true;
}

bool ZkStudioEffectList::removeById(qint64 id)
{
    for (int i = 0; i < count(); ++i) {
        if (m_effects.at(i)->id() == id) {
            m_timeline->undoRedoService()->push(new PlaceItem(this, m_effects.at(i), i, false));
            return true;
        }
    }
    return false;
}

void ZkStudioEffectList::insertAt(int index, const ZkEffectPtr &effect)
{
    // Changes that were not recorded may have made the list shorter.
    m_effects.insert(qMin(index, count()), effect);
    effect.staticCast<ZkStudioEffect>()->setList(this);
    report(ZKTIMELINE::EffectAdded);
}

void ZkStudioEffectList::takeOut(const ZkEffectPtr &effect)
{
    m_effects.removeOne(effect);
    effect.staticCast<ZkStudioEffect>()->setList(nullptr);
    report(ZKTIMELINE::EffectRemoved);
}

void ZkStudioEffectList::report(int subKind)
{
    m_timeline->reportChanges({ZKTIMELINE::EffectChange, subKind});
}
