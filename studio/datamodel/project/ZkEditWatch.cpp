#include "ZkEditWatch.h"

#include "../timeline/ZkStudioEffect.h"
#include "../timeline/ZkStudioEffectList.h"
#include "../timeline/ZkStudioTimeline.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDataStream>
#include <QIODevice>

#include <utility>

namespace zk::datamodel {

namespace {

using Draft = ProjectSnapshot::Draft;
using Type = ZKSMARTKEYING::ZkSmartKeyingBusinessType;

Type workspaceOf(const ZkStudioTimeline &edit)
{
    const bool isErasing =
        edit.shownService() == edit.clip()->studioService(ZKSMARTKEYING::AIErasing);
    return isErasing ? ZKSMARTKEYING::AIErasing : ZKSMARTKEYING::SmartCutout;
}

// Replaces all that was painted and tracked.
class SegmentationItem : public IZkUndoRedoItem
{
public:
    SegmentationItem(ZkStudioSmartKeyingService *service, const Draft &draft)
        : m_service(service)
        , m_before {draft.type, service->segments(), service->settings()}
        , m_after {draft.type, draft.segments, draft.settings}
    { }

    // The first time it is not news of nodes, which would show their frames: the workspace is being opened.
    void redo() override { restore(m_after, std::exchange(m_isFirst, false)); }
    void undo() override { restore(m_before, false); }

private:
    void restore(const ProjectSnapshot::Segmentation &state, bool isQuiet)
    {
        m_service->replaceState(state.segments, state.settings, isQuiet);
    }

    ZkStudioSmartKeyingService *const m_service;
    const ProjectSnapshot::Segmentation m_before;
    const ProjectSnapshot::Segmentation m_after;
    bool m_isFirst = true;
};

void write(QDataStream &stream, const TrackedSide &side)
{
    stream << side.matte.isNull() << side.serial << side.seed << side.seedRevision;
}

void write(QDataStream &stream, const Segments &segments)
{
    const auto &nodes = segments.nodes();
    for (auto node = nodes.begin(); node != nodes.end(); ++node)
        stream << node.key() << (*node)->revision;
    const auto &tracked = segments.tracked();
    for (auto mattes = tracked.begin(); mattes != tracked.end(); ++mattes) {
        stream << mattes.key();
        write(stream, mattes->forward);
        write(stream, mattes->backward);
    }
    for (const auto &saved : segments.saved()) {
        stream << QByteArrayLiteral("saved");
        write(stream, *saved);
    }
}

void replaceEffects(ZkStudioEffectList *list, const QVector<ProjectSnapshot::Effect> &effects)
{
    while (list->count() > 0)
        list->removeById(list->effectAt(0)->id());
    for (const ProjectSnapshot::Effect &from : effects) {
        const auto effect = QSharedPointer<ZkStudioEffect>::create(from.look, from.slug);
        effect->restoreEnabled(from.isEnabled);
        list->add(effect);
    }
}

} // namespace

QVector<ProjectSnapshot::Effect> effectsOf(const ZkStudioClip &clip)
{
    QVector<ProjectSnapshot::Effect> effects;
    for (int i = 0; i < clip.studioEffects()->count(); ++i) {
        const auto *effect = static_cast<ZkStudioEffect *>(clip.studioEffects()->effectAt(i));
        effects.append({effect->look(), effect->descriptor()->slug(), effect->isEnabled()});
    }
    return effects;
}

ProjectSnapshot::Segmentation segmentationOf(const ZkStudioClip &clip, Type type)
{
    const ZkStudioSmartKeyingService *service = clip.studioService(type);
    return {type, service->segments(), service->settings()};
}

// Revisions and serials name what a node or a run has made, in all programs that open the file.
QByteArray fingerprintOf(const Draft &draft)
{
    QByteArray fingerprint;
    QDataStream stream(&fingerprint, QIODevice::WriteOnly);
    stream << int(draft.type) << draft.settings.invert;
    write(stream, draft.segments);
    for (const ProjectSnapshot::Effect &effect : draft.effects)
        stream << effect.slug << (effect.slug.isEmpty() ? QByteArray() : effect.look.toJson());
    return QCryptographicHash::hash(fingerprint, QCryptographicHash::Sha1);
}

EditWatch::EditWatch(const ProjectClipPtr &clip, ZkStudioTimeline *edit, const Listener &listener)
    : m_clip(clip)
    , m_edit(edit)
    , m_type(workspaceOf(*edit))
    , m_listener(listener)
{
    for (const Draft &draft : clip->drafts()) {
        if (draft.type == m_type)
            restore(draft);
    }
    m_edit->addEventObserver(this);
    m_edit->shownService()->addTrackedObserver(this);
}

EditWatch::~EditWatch()
{
    m_edit->shownService()->removeTrackedObserver(this);
    m_edit->removeEventObserver(this);
}

void EditWatch::restore(const Draft &draft)
{
    ZkStudioUndoRedoService *undo = m_edit->undoRedoService();
    // The step is closed before the changes are reported.
    const ZkPauseEventCommander pause(undo);
    const ZkUndoRedoCommander step(
        undo,
        QCoreApplication::translate("zk::datamodel::Project", "Restore unfinished work"),
        QStringLiteral("EditWatch"));
    undo->push(new SegmentationItem(m_edit->shownService(), draft));
    if (m_type == ZKSMARTKEYING::SmartCutout)
        replaceEffects(m_edit->clip()->studioEffects(), draft.effects);
}

Draft EditWatch::draftOf(const ZkStudioClip &clip) const
{
    Draft draft;
    static_cast<ProjectSnapshot::Segmentation &>(draft) = segmentationOf(clip, m_type);
    if (m_type == ZKSMARTKEYING::SmartCutout)
        draft.effects = effectsOf(clip);
    return draft;
}

QVector<Draft> EditWatch::otherDrafts() const
{
    QVector<Draft> drafts;
    for (const Draft &draft : m_clip->drafts()) {
        if (draft.type != m_type)
            drafts.append(draft);
    }
    return drafts;
}

QVector<Draft> EditWatch::drafts() const
{
    QVector<Draft> drafts = otherDrafts();
    const Draft draft = draftOf(*m_edit->clip());
    if (fingerprintOf(draft) != fingerprintOf(draftOf(*m_clip->clip())))
        drafts.append(draft);
    return drafts;
}

} // namespace zk::datamodel
