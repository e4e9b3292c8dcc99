// A file in the media bin of a project.
#pragma once

#include "ZkGlobal.h"
#include "ZkMediaInfo.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace zk::datamodel {

struct MediaEntry
{
    enum class State {
        Present, // the file that was imported
        Changed, // another file of that name, which still fits the clips; problem says what is new
        Missing, // not there, not readable or of another shape; problem says which. Its clips are offline
    };

    qint64 id = 0; // positive, unique in the project, kept in its file
    // As it was imported; info.path is absolute and says where the file is looked for now. A still
    // picture has one frame.
    zk::media::MediaInfo info;
    qint64 fileSize = 0; // bytes
    QDateTime modified; // UTC
    State state = State::Present;
    QString problem; // a sentence for the user; empty while Present

    bool isMissing() const { return state == State::Missing; }
};

// Opens the file and notes what it is. False, with a sentence for the user, when it is no picture or
// video. Slow (it decodes); any thread may call it.
ZKDATAMODEL_EXPORT bool probeMedia(const QString &path, MediaEntry *entry, QString *error);

// Whether clips of `old` show the same frames of `other`: same size, same rate, at least as long.
// Otherwise *reason (may be null) says what differs.
ZKDATAMODEL_EXPORT bool
fitsInPlaceOf(const MediaEntry &old, const MediaEntry &other, QString *reason);

// The entry as its file is now, which is looked for at these places in turn.
MediaEntry lookedUp(const MediaEntry &known, const QStringList &places);

} // namespace zk::datamodel
