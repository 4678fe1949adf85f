// The open files of a deck as libzip reads and writes them, in large pieces.
#pragma once

#include <zip.h>

#include <cstdint>
#include <string>

namespace qrn::deck {

// Reads the deck from one open file and lets libzip write the changed deck to another. libzip owns it.
class ZipSource {
 public:
  // Both files must stay open as long as the source lives; `out` may be -1 for reading only.
  static zip_source_t* make(int in, int out);

 private:
  ZipSource(int in, int out);
  static zip_int64_t call(void* self, void* data, zip_uint64_t length, zip_source_cmd_t command);
  zip_int64_t run(void* data, zip_uint64_t length, zip_source_cmd_t command);
  zip_int64_t read(char* data, std::uint64_t length);
  bool readAhead(std::uint64_t atLeast);
  zip_int64_t beginWrite(std::uint64_t kept);
  zip_int64_t write(const char* data, std::uint64_t length);
  zip_int64_t writeOut();
  zip_int64_t seekWrite(void* data, zip_uint64_t length);
  zip_int64_t seek(std::uint64_t& place, std::uint64_t size, void* data, zip_uint64_t length);
  zip_int64_t status(void* data, zip_uint64_t length);
  zip_int64_t failed(int reason, int error);
  std::uint64_t outEnd() const { return outPlace_ + waiting_.size(); }

  int in_, out_;
  std::uint64_t inSize_, place_ = 0, aheadPlace_ = 0, outPlace_ = 0, outSize_ = 0;
  std::size_t piece_;
  std::string ahead_;    // read from aheadPlace_ on
  std::string waiting_;  // to be written at outPlace_
  zip_error_t error_{};
};

// Copies `length` bytes from the beginning of one open file to the beginning of another. False, with the
// reason in errno, when it cannot.
bool copyBytes(int in, int out, std::uint64_t length);

}  // namespace qrn::deck
