// FileLock: an advisory whole-file lock (flock) held for the life of the object.
//
// Our writers of shared files hold kExclusive while they write; readers take kShared without
// waiting (TryLockFile) and retry on their own schedule. The lock belongs to the open file
// description, so closing the descriptor also drops it. Does not own the descriptor.
// Thread: one owner; the lock itself is between processes.
#pragma once

namespace tavlorin {

enum class FileLockMode { kShared, kExclusive };

// Takes the lock without waiting; false (errno EWOULDBLOCK) when another holder has it.
bool TryLockFile(int fd, FileLockMode mode);

class FileLock {
 public:
  // Waits until the lock is granted. REQUIRES: fd is open.
  FileLock(int fd, FileLockMode mode);
  ~FileLock() { Release(); }
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

  bool held() const { return held_; }
  void Release();

 private:
  int fd_;
  bool held_ = false;
};

}  // namespace tavlorin
