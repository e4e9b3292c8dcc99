#pragma once

#include "ZkObserverList.h"

#include "ZkDataModel.h"

#include <memory>

// A playhead whose range is given by hand; initially only frame 0. GUI thread only.
class ZKDATAMODEL_EXPORT ZkStudioPlayhead : public IZkPlayhead
{
public:
    ZkStudioPlayhead() = default;

    qint64 position() const override { return m_position; }
    void setPosition(qint64 frame) override;
    ZkRange<qint64> frameRange() const override { return m_range; }
    // A range that ends before it begins counts as its first frame alone. Moves the playhead into it.
    void setFrameRange(const ZkRange<qint64> &range) override;
    void addObserver(IZkPlayheadObserver *observer) override;
    void removeObserver(IZkPlayheadObserver *observer) override;

private:
    Q_DISABLE_COPY(ZkStudioPlayhead)

    qint64 m_position = 0;
    ZkRange<qint64> m_range;
    std::shared_ptr<quint64> m_moves = std::make_shared<quint64>(0);
    zk::datamodel::ObserverList<IZkPlayheadObserver> m_observers;
};
