#pragma once

#include "ZkDataModel.h"

#include <QCoreApplication>
#include <QVector>

class ZkStudioEffect;
class ZkStudioTimeline;

// The effects of a clip. An effect that was removed stays alive in the undo history. GUI thread only.
class ZKDATAMODEL_EXPORT ZkStudioEffectList : public IZkEffectList
{
    Q_DECLARE_TR_FUNCTIONS(ZkStudioEffectList)

public:
    explicit ZkStudioEffectList(ZkStudioTimeline *timeline);
    ~ZkStudioEffectList() override;

    // The first cutout effect (type 55); null: none.
    ZkStudioEffect *cutoutEffect() const;
    // Copies of the effects of an unused list, without undo steps and reports.
    void copyFrom(const ZkStudioEffectList &other);
    // Puts an effect of no clip at the end, without an undo step and a report.
    void restore(const ZkEffectPtr &effect);
    // Enables or disables the effect as an undo step.
    void changeEnabled(ZkStudioEffect *effect, bool enabled);

    int count() const override { return m_effects.size(); }
    IZkEffect *effectAt(int index) const override;
    // False for a null effect, one that belongs to a clip, or one that is not of this data model.
    bool add(const ZkEffectPtr &effect) override;
    bool removeById(qint64 id) override;

private:
    Q_DISABLE_COPY(ZkStudioEffectList)
    class PlaceItem;
    class EnableItem;

    void insertAt(int index, const ZkEffectPtr &effect);
    void takeOut(const ZkEffectPtr &effect);
    void report(int subKind);

    ZkStudioTimeline *const m_timeline;
    QVector<ZkEffectPtr> m_effects;
};
