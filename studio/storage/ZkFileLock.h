// Locks between programs, which a program that is gone does not keep.
#pragma once

#include "ZkStorageGlobal.h"

#include <QLockFile>
#include <QString>

#include <memory>

namespace zk::storage {

// Locks the file of that name, which exists as long as the lock does; it is waited for at most so long.
// Null, and *error (may be null) says why.
ZKSTORAGE_EXPORT std::unique_ptr<QLockFile>
takeFileLock(const QString &path, int waitMs, QLockFile::LockError *error = nullptr);

} // namespace zk::storage
