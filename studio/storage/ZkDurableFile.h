// Files that are complete on disk or not there, even when the power fails.
#pragma once

#include "ZkStorageGlobal.h"

#include <QByteArray>
#include <QString>

class QFileDevice;

namespace zk::storage {

// All of these are pure file operations: any thread may call them. *error may be null and gets a
// readable text when the result is false.

// Empties the file's buffers down to the disk itself.
ZKSTORAGE_EXPORT bool flushToDisk(QFileDevice &file, QString *error = nullptr);

// Flushes the file `from` and gives it the name `to` in one step, replacing a file of that name.
// Both must be on one file system; the folder of `to` is made when it is missing. False: `to` is as
// it was, `from` still exists.
ZKSTORAGE_EXPORT bool
moveIntoPlace(const QString &from, const QString &to, QString *error = nullptr);

// Writes `bytes` beside `path`, then moves them into place.
ZKSTORAGE_EXPORT bool
writeDurably(const QString &path, const QByteArray &bytes, QString *error = nullptr);

// Lower-case hex; empty when the file cannot be read.
ZKSTORAGE_EXPORT QByteArray sha256OfFile(const QString &path);
ZKSTORAGE_EXPORT QByteArray sha256Of(const QByteArray &bytes);

} // namespace zk::storage
