// Fixed numbers of smart keying that module and host share.
#pragma once

namespace ZKSMARTKEYING {

// Which workspace an editing context serves; also the key of a clip's segmentation service.
enum ZkSmartKeyingBusinessType {
    SmartCutout = 1,
    AIErasing = 2,
};

enum ZkSegmentWorkMode {
    EditingMode = 1, // strokes may be drawn
    TrackingMode = 2,
    PlayingMode = 3, // while the player plays
};

enum ZkSegmentToTrackDirect {
    TrackForward = 1,
    TrackBackward = 2,
    TrackBoth = 3, // both ways from the current frame
};

enum ZkSegmentToTrackType {
    TrackWholeClip = 0, // the whole clip once, whatever the frame and the direction
    TrackToClipEnd = 1, // from the current frame to the clip's end or ends
};

// Results of IZkSmartKeyingEditController::startTracking.
enum ZkTrackingStart {
    TrackingStarted = 0,
    TrackingFailed = 1,
    NothingToTrack = 2, // there is no object, or no frame left, in that direction
};

// Results of a save, as the edit controller's observer hears them.
enum ZkSaveResult {
    SaveFailed = 0,
    SaveSucceeded = 1,
    SaveCancelled = 2,
};

// How the player shows the object.
enum ZkPreviewType {
    InteractivePreview = 1, // overlay colour over the object
    ResultPreview = 2, // the cutout on black
    AlphaPreview = 3, // the matte
    GridPreview = 4, // the cutout on a transparency grid
};

} // namespace ZKSMARTKEYING
