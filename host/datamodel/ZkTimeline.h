// Clips, their effects, the timeline with its change records, and playheads.
#pragma once

#include "../ZkCore.h"
#include "ZkSmartKeyingTypes.h"

#include <QSharedPointer>
#include <QString>
#include <QVector>

#include <memory>

class IZkSmartKeyingService;
class IZkTimeline;
class IZkUndoRedoService;

namespace ZKTIMELINE {

enum ZkClipType {
    VideoClip = 1, // an animated GIF too
    ImageClip = 4, // a still image
};

enum ZkEffectType {
    SmartKeyingEffect = 55,
};

enum ZkChangeKind {
    EffectChange = 5,
    SegmentChange = 13,
};

enum ZkEffectChange {
    EffectAdded = 2,
    EffectRemoved = 3,
    EffectPropertyChanged = 10,
};

enum ZkSegmentSubKind {
    SegmentData = 1, // strokes, masks, tracking results, preview settings
    SelectAreaAdded = 88,
    SelectAreaRemoved = 89,
    SelectAreaUpdated = 90,
};

} // namespace ZKTIMELINE

// Names a timeline to the media player; never 0 for a timeline that exists.
using ZkTimelineHandle = quint64;

// The media file behind a clip.
class ZK_INTERFACE IZkMediaSource
{
public:
    virtual ~IZkMediaSource() = default;
    virtual QString filePath() const = 0;
    virtual bool isAnimatedGif() const = 0;
};

class ZK_INTERFACE IZkEffectDescriptor
{
public:
    virtual ~IZkEffectDescriptor() = default;
    virtual int type() const = 0; // ZKTIMELINE::ZkEffectType
    // Key of the preset that the effect was made from; empty for an effect of no preset.
    virtual QString slug() const = 0;
};

class IZkEffect;
using ZkEffectPtr = QSharedPointer<IZkEffect>;

class ZK_INTERFACE IZkEffect
{
public:
    virtual ~IZkEffect() = default;
    virtual qint64 id() const = 0;
    // Null for an effect that is not described; owned by the effect.
    virtual const IZkEffectDescriptor *descriptor() const = 0;
    virtual bool isEnabled() const = 0;
    // On an effect of a clip this is an undoable change of kind 5, sub-kind 10.
    virtual void setEnabled(bool enabled) = 0;
    // A new effect like this one, of no clip and with an id of its own; null when it cannot be made.
    virtual ZkEffectPtr createInstance() const = 0;
};

// The effects of one clip in rendering order. Adding and removing are undoable changes of kind 5,
// sub-kinds 2 and 3, reported before the call returns unless events are paused.
class ZK_INTERFACE IZkEffectList
{
public:
    virtual ~IZkEffectList() = default;
    virtual int count() const = 0;
    // Null for an index out of range. Owned by the list.
    virtual IZkEffect *effectAt(int index) const = 0;
    virtual bool add(const ZkEffectPtr &effect) = 0;
    virtual bool removeById(qint64 id) = 0;
};

class ZK_INTERFACE IZkClip
{
public:
    virtual ~IZkClip() = default;
    virtual int type() const = 0; // ZKTIMELINE::ZkClipType
    // Null for a clip without a media file.
    virtual IZkMediaSource *source() const = 0;
    virtual IZkEffectList *effects() const = 0;
    // The timeline that the clip lies on.
    virtual IZkTimeline *timeline() const = 0;
    // The segmentation service of this clip for that workspace. Owned by the clip; null when the
    // clip cannot be segmented.
    virtual IZkSmartKeyingService *
    smartKeyingService(ZKSMARTKEYING::ZkSmartKeyingBusinessType type) const = 0;
};

// What has changed on a timeline, as pairs of kind and sub-kind.
class ZkTimelineChanges
{
public:
    ZkTimelineChanges() = default;
    ZkTimelineChanges(int kind, int subKind) { add(kind, subKind); }

    // A pair that is there already is not added again.
    void add(int kind, int subKind)
    {
        if (!contains(kind, subKind))
            m_records.append({kind, subKind});
    }
    void add(const ZkTimelineChanges &other)
    {
        for (const Record &record : other.m_records)
            add(record.kind, record.subKind);
    }
    bool isEmpty() const { return m_records.isEmpty(); }
    bool contains(int kind) const
    {
        for (const Record &record : m_records) {
            if (record.kind == kind)
                return true;
        }
        return false;
    }
    bool contains(int kind, int subKind) const
    {
        for (const Record &record : m_records) {
            if (record.kind == kind && record.subKind == subKind)
                return true;
        }
        return false;
    }

private:
    struct Record
    {
        int kind;
        int subKind;
    };
    QVector<Record> m_records;
};

class ZK_INTERFACE IZkTimelineEventObserver
{
public:
    virtual ~IZkTimelineEventObserver() = default;
    // On the GUI thread, from inside the call that made the change, after its undo step is closed;
    // changes that were held back come when events are resumed, which may be inside an open macro.
    virtual void onTimelineChangedEvent(const ZkTimelineChanges &changes) = 0;
};

class ZK_INTERFACE IZkPlayheadObserver
{
public:
    virtual ~IZkPlayheadObserver() = default;
    virtual void onPlayheadMoved(qint64 frame) = 0;
};

// A position in frames. Moving it to where it is notifies nobody.
class ZK_INTERFACE IZkPlayhead
{
public:
    virtual ~IZkPlayhead() = default;
    virtual qint64 position() const = 0;
    // Clamped to the frame range.
    virtual void setPosition(qint64 frame) = 0;
    virtual ZkRange<qint64> frameRange() const = 0;
    virtual void setFrameRange(const ZkRange<qint64> &range) = 0;
    virtual void addObserver(IZkPlayheadObserver *observer) = 0;
    virtual void removeObserver(IZkPlayheadObserver *observer) = 0;
};

// Keeps playheads at one position: when one moves, the others follow. GUI thread only.
class ZKDATAMODEL_EXPORT ZkPlayheadConnector
{
public:
    enum Role {
        EditTimelineRole = 1,
        PlayerRole = 2,
    };

    ZkPlayheadConnector();
    ~ZkPlayheadConnector();

    // Not owned; clear() must be called before a playhead dies. One playhead per role: a second one
    // replaces the first. The playhead that comes second takes the position of the first.
    void addPlayhead(IZkPlayhead *playhead, int role);
    void clear();

private:
    Q_DISABLE_COPY(ZkPlayheadConnector)
    class Private;
    std::unique_ptr<Private> d;
};

class ZK_INTERFACE IZkTimeline
{
public:
    virtual ~IZkTimeline() = default;
    virtual ZkTimelineHandle handle() const = 0;
    virtual IZkPlayhead *playhead() const = 0;
    // The frames that a playhead of this timeline may stand on.
    virtual ZkRange<qint64> playheadRange() const = 0;
    virtual IZkUndoRedoService *undoRedoService() const = 0;
    // Not owned; an observer must be removed before it dies.
    virtual void addEventObserver(IZkTimelineEventObserver *observer) = 0;
    virtual void removeEventObserver(IZkTimelineEventObserver *observer) = 0;
};
