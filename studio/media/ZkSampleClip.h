#pragma once

#include "ZkMediaGlobal.h"

#include <QImage>
#include <QJsonObject>
#include <QSize>

#include <memory>

namespace zk::media {

class MediaWriter;

struct SampleOptions
{
    QSize size {640, 360};
    int frames = 72;
    int frameRate = 24;
};

// A clip drawn by code: a hot-air balloon drifts over a panning landscape, sways, breathes a little and
// passes behind a post, with motion blur and camera noise. Its true matte is known at every pixel. The
// same options draw the same pictures. frame(), background() and matte() may be called from any thread.
class ZKMEDIA_EXPORT SampleClip
{
public:
    explicit SampleClip(const SampleOptions &options = {});
    ~SampleClip();

    const SampleOptions &options() const;

    // Format_RGBA8888, opaque. Null outside [0, options().frames).
    QImage frame(int index) const;
    // The frame as it would be without the object: the same camera, the same grain.
    QImage background(int index) const;
    // Format_Grayscale8: 255 where the object alone is seen, 0 where none of it is, in between at its
    // soft edge. What the post hides is 0.
    QImage matte(int index) const;
    // What a user would paint on frame 0: {"strokes":[{"frame","mode","width","points"}]}, in
    // pixels: keep strokes over the envelope and the basket, a remove stroke around them.
    QJsonObject strokes() const;
    // What a user would draw, {"boxes":[{"frame","rect"}]} in pixels: a box around the object on a late
    // frame, where it shows all its sides and nothing is before it, and one on frame 0 around the ropes and the
    // basket, which are lost behind the post on the way there.
    QJsonObject boxes() const;

    // The clip in the format of clipPath's suffix and, unless matteDir is empty, one %05d.png per frame
    // in that folder.
    bool write(const QString &clipPath,
               const QString &matteDir,
               QString *error,
               bool withAudioTone = false) const;
    // One %05d.png per frame in that folder.
    bool writeBackgrounds(const QString &folder, QString *error) const;

private:
    struct Scene;
    struct Layers;

    static QImage pictureOf(const Layers &layers, int index);
    static QImage matteOf(const Layers &layers);
    bool writeFrames(MediaWriter &writer, const QString &matteDir, QString *error) const;

    std::unique_ptr<Scene> m_scene;
};

} // namespace zk::media
