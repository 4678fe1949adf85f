// A deck on the disk for the benchmarks, in a folder of its own that goes with it. TMPDIR chooses the disk.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace qrn::bench {

class BenchDeck {
 public:
  // Slides with a line of text each, and `megabytes` of media that do not pack.
  BenchDeck(int slides, std::int64_t megabytes);
  ~BenchDeck();
  BenchDeck(const BenchDeck&) = delete;
  BenchDeck& operator=(const BenchDeck&) = delete;
  const std::string& folder() const { return folder_; }
  std::string file() const { return folder_ + "/talk.pptx"; }
  std::string plainFile() const { return folder_ + "/plain"; }

 private:
  std::string folder_;
};

}  // namespace qrn::bench
