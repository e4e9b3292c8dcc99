// What the tests of projects share: a workspace on a clip, and everything that a clip holds as a text.
#pragma once

#include "EditBench.h"
#include "segmentation/ZkMatteTrack.h"
#include "timeline/ZkStudioEffect.h"
#include "timeline/ZkStudioEffectList.h"

#include "project/ZkProject.h"

namespace zk::test {

constexpr char borderLook[] =
    R"({"slug":"edge","name":"Edge","category":"Test","version":2,"matte":{"shift":3},
        "layers":[{"type":"outline","width":6}]})";

// The workspace of a clip of a project, as it is when it is opened again and again.
class ClipWorkspace
{
public:
    explicit ClipWorkspace(
        const datamodel::ProjectClip *clip,
        ZKSMARTKEYING::ZkSmartKeyingBusinessType type = ZKSMARTKEYING::SmartCutout)
        : controller(createSmartKeyingEditController())
    {
        qint64 frame = 0;
        isOpen = controller->initialise(clip->clip(), &player, &frame, type);
        if (!isOpen)
            return;
        player.service = service();
        service()->setEnabled(true);
        controller->addObserver(&observer);
    }
    ~ClipWorkspace() { releaseSmartKeyingEditController(controller); }

    ZkStudioSmartKeyingService *service() const
    {
        return static_cast<ZkStudioTimeline *>(controller->editTimeline())->shownService();
    }
    bool track() const
    {
        controller->startTracking(0, ZKSMARTKEYING::TrackForward, ZKSMARTKEYING::TrackToClipEnd);
        return QTest::qWaitFor(
            [this] { return service()->workMode() != ZKSMARTKEYING::TrackingMode; }, 100000);
    }
    bool apply()
    {
        controller->apply();
        return QTest::qWaitFor([this] { return !observer.results.isEmpty(); }, 100000)
            && observer.results.last() == ZKSMARTKEYING::SaveSucceeded;
    }

    bool isOpen = false;
    NotingPlayer player;
    NotingControllerObserver observer;
    IZkSmartKeyingEditController *const controller;

private:
    Q_DISABLE_COPY(ClipWorkspace)
};

inline QByteArray contentOf(const datamodel::ProjectClip *projectClip)
{
    const ZkStudioClip *clip = projectClip->clip();
    QByteArray text = "from " + QByteArray::number(clip->inFrame()) + " for "
        + QByteArray::number(clip->frameCount()) + " at "
        + QByteArray::number(projectClip->timeline()->playhead()->position());
    for (int i = 0; i < clip->effects()->count(); ++i) {
        const auto *effect = static_cast<ZkStudioEffect *>(clip->effects()->effectAt(i));
        text += " effect " + effect->descriptor()->slug().toUtf8() + effect->lookJson()
            + QByteArray::number(effect->isEnabled());
    }
    for (auto type : {ZKSMARTKEYING::SmartCutout, ZKSMARTKEYING::AIErasing})
        text += clip->studioService(type)->serialised().toHex() + ' ';
    return text + (clip->matteTrack() ? clip->matteTrack()->serialised().toHex() : "no track");
}

} // namespace zk::test
