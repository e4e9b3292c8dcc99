// A controller of the AI erasing workspace, and what is heard of its edits in one list.
#pragma once

#include "EditBench.h"

namespace zk::test {

// "88", "89", "90" for areas, "13" for a plain change, "node 3" for the controller's observers.
class EditJournal : public IZkTimelineEventObserver, public IZkSmartKeyingEditControllerObserver
{
public:
    // What has been noted since it was taken last.
    QStringList take() { return std::exchange(m_notes, {}); }

    void onTimelineChangedEvent(const ZkTimelineChanges &changes) override
    {
        for (int kind : {1, 88, 89, 90}) {
            if (changes.contains(ZKTIMELINE::SegmentChange, kind))
                m_notes.append(QString::number(kind == 1 ? 13 : kind));
        }
    }
    void onSavingProgressEvent(int) override { }
    void onSaveFinishedEvent(int) override { }
    void onNodeChangedEvent(qint64 frame) override
    {
        m_notes.append(QStringLiteral("node %1").arg(frame));
    }

private:
    QStringList m_notes;
};

class ErasingBench : public EditBench
{
public:
    explicit ErasingBench(const QString &path = EditClip::instance().path())
        : EditBench(path, ZKSMARTKEYING::AIErasing)
    {
        service()->setOptionFlag(false);
        controller->addObserver(&journal);
        timeline()->addEventObserver(&journal);
        journal.take();
    }
    ~ErasingBench()
    {
        controller->removeObserver(&journal);
        timeline()->removeEventObserver(&journal);
    }

    EditJournal journal;

    void show(qint64 frame) { timeline()->playhead()->setPosition(frame); }
    bool hasArea(int index, const QRectF &rect) const
    {
        return service()->areaCount() == index + 1 && service()->areaRectAt(index) == rect;
    }
    // As it is found by its centre.
    qint64 idOf(int index) const
    {
        const QPointF centre = service()->areaRectAt(index).center();
        return service()->findAreaIdAt(centre.x(), centre.y());
    }
    QImage maskAt(qint64 frame) const { return service()->eraseMasks().at(frame).decoded(); }
};

inline QRect boxOf(const QImage &mask)
{
    return datamodel::EncodedMatte(mask).box();
}

// In fractions of the frame.
inline QRectF fractions(const QRect &box)
{
    const QSizeF size = EditClip::size;
    return {box.x() / size.width(),
            box.y() / size.height(),
            box.width() / size.width(),
            box.height() / size.height()};
}

} // namespace zk::test
