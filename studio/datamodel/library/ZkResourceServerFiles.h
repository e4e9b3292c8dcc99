// The files of a resource server: presets that other people's ZkStudio can fetch.
#pragma once

#include <ZkGlobal.h>

#include <QString>
#include <QVector>

namespace zk::effects {
struct Look;
}

namespace zk::datamodel {

// Writes what a resource server has to serve into a directory; any static HTTP server will do.
//   catalogue.json, packages/<slug>-<content>.json, thumbnails/<slug>-<content>.png
// A directory that holds a catalogue already is brought up to date while it is served: files are
// new or untouched, and the catalogue, with a version one higher, comes last and in one step. False,
// with the reason in *error (may be null): the catalogue is as it was.
ZKDATAMODEL_EXPORT bool writeResourceServerFiles(const QVector<zk::effects::Look> &looks,
                                                 const QString &directory,
                                                 QString *error = nullptr);

} // namespace zk::datamodel
