// The description of a cutout's look: what is done to the matte, and layers around the object.
#pragma once

#include "ZkEffectsGlobal.h"
#include "ZkLayers.h"

#include <QByteArray>
#include <QString>
#include <QVector>

namespace zk::effects {

// Lengths are pixels of a frame that is 1080 high.
struct MatteSettings
{
    double featherPx = 0; // width of the added softness, from 10 % to 90 %; 0: as it is
    double shiftPx = 0; // > 0 grows the object, < 0 shrinks it; its softness stays
    double decontaminate = 0; // 0..1: how far colours of half-covered pixels become the object's
    bool isPlain() const { return featherPx <= 0 && shiftPx == 0 && decontaminate <= 0; }
};

// A default-constructed look is the plain cutout.
//
// Layers below the object are painted in their order, the first one lowest; then the object, after
// the layers that treat its own pixels; then the layers above it.
struct ZKEFFECTS_EXPORT Look
{
    QString slug; // lower-case letters, digits and '-'; names the look in files
    QString name; // for people, English
    QString category; // for people, English
    int version = 1; // of this look; a library prefers the higher one
    MatteSettings matte;
    QVector<Layer> layers;

    // Reads what toJson() writes. A field that is absent keeps its default; one that is unknown, of
    // the wrong type or out of range is an error, because a misspelt field would be a look that is
    // silently wrong. False: *look is as it was, and *error (may be null) names the field
    // ("layers[1].width: ...") or, where it is no JSON at all, the line.
    static bool fromJson(const QByteArray &json, Look *look, QString *error = nullptr);
    // Every field, the default ones too.
    QByteArray toJson() const;
};

} // namespace zk::effects
