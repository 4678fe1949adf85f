// A disk that fails on request. While one lives, the program's write, pwrite, fsync, fdatasync and rename go
// through it; what a file was given after a flush of it failed is lost in a crash, whatever later flushes
// said.
#pragma once

#include <string>

namespace qrn::test {

class FailingDisk {
 public:
  enum class Call { write, flush, rename };
  FailingDisk();
  ~FailingDisk();
  FailingDisk(const FailingDisk&) = delete;
  FailingDisk& operator=(const FailingDisk&) = delete;
  // Of the writes and flushes from now on, `count` fail from the `first` (1: the next): flushes with EIO,
  // writes with ENOSPC after half of their bytes.
  void fail(int first, int count);
  // Every call of the kind fails from now on.
  void failAll(Call call);
  int calls() const;
  bool hasFailed() const;
  // What a power cut leaves of this file.
  void crash(const std::string& file);
};

}  // namespace qrn::test
