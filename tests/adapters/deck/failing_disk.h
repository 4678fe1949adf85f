// A disk that fails on request. While one lives, the program's write, pwrite, fsync and fdatasync go through
// it; what a file was given after a flush of it failed is lost in a crash, whatever later flushes said.
#pragma once

#include <string>

namespace qrn::test {

class FailingDisk {
 public:
  FailingDisk();
  ~FailingDisk();
  FailingDisk(const FailingDisk&) = delete;
  FailingDisk& operator=(const FailingDisk&) = delete;
  // Of the calls from now on, `count` fail from the `first` (1: the next): flushes with EIO, writes with
  // ENOSPC after half of their bytes.
  void fail(int first, int count);
  int calls() const;
  bool hasFailed() const;
  // What a power cut leaves of this file.
  void crash(const std::string& file);
};

}  // namespace qrn::test
