#include "ZkFileLock.h"

namespace zk::storage {

namespace {

// A program that is killed just after it has made the file has not written its number into it yet.
// Such a lock ends after this time; one whose owner runs does not, because the owner holds the file.
constexpr int namelessLockMs = 1000;

} // namespace

std::unique_ptr<QLockFile>
takeFileLock(const QString &path, int waitMs, QLockFile::LockError *error)
{
    auto lock = std::make_unique<QLockFile>(path);
    lock->setStaleLockTime(namelessLockMs);
    const bool isLocked = lock->tryLock(waitMs);
    if (error)
        *error = lock->error();
    return isLocked ? std::move(lock) : nullptr;
}

} // namespace zk::storage
