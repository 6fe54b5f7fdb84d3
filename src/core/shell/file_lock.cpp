#include "shell/file_lock.h"

#include <sys/file.h>

#include <cerrno>

namespace tavlorin {

bool TryLockFile(int fd, FileLockMode mode) {
  int op = (mode == FileLockMode::kShared ? LOCK_SH : LOCK_EX) | LOCK_NB;
  int rc;
  do {
    rc = ::flock(fd, op);
  } while (rc != 0 && errno == EINTR);
  return rc == 0;
}

FileLock::FileLock(int fd, FileLockMode mode) : fd_(fd) {
  int op = mode == FileLockMode::kShared ? LOCK_SH : LOCK_EX;
  int rc;
  do {
    rc = ::flock(fd, op);
  } while (rc != 0 && errno == EINTR);
  held_ = rc == 0;
}

void FileLock::Release() {
  if (held_) {
    ::flock(fd_, LOCK_UN);
    held_ = false;
  }
}

}  // namespace tavlorin
