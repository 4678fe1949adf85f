#include "adapters/deck/zip_source.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace qrn::deck {

namespace {

constexpr std::size_t kPiece = std::size_t{1} << 20;         // libzip itself copies 8 KB at a time
constexpr std::size_t kReadingPiece = std::size_t{1} << 16;  // a few small parts here and there

std::uint64_t sizeOf(int fd) {
  struct stat info {};
  return ::fstat(fd, &info) == 0 ? static_cast<std::uint64_t>(info.st_size) : 0;
}

ssize_t readAt(int fd, char* to, std::size_t length, std::uint64_t place) {
  ssize_t got = -1;
  do got = ::pread(fd, to, length, static_cast<off_t>(place));
  while (got < 0 && errno == EINTR);
  return got;
}

bool writeAt(int fd, const char* from, std::size_t length, std::uint64_t place) {
  while (length > 0) {
    const ssize_t done = ::pwrite(fd, from, length, static_cast<off_t>(place));
    if (done < 0 && errno == EINTR)
      continue;
    if (done == 0)
      errno = ENOSPC;
    if (done <= 0)
      return false;
    from += done;
    length -= static_cast<std::size_t>(done);
    place += static_cast<std::uint64_t>(done);
  }
  return true;
}

// Gives how much the file system copied by itself; some cannot, then the rest goes through memory.
std::uint64_t copiedBySystem(int in, int out, std::uint64_t length) {
  off_t from = 0, to = 0;
  while (static_cast<std::uint64_t>(from) < length)
    if (::copy_file_range(in, &from, out, &to, length - static_cast<std::uint64_t>(from), 0) <= 0)
      break;
  return static_cast<std::uint64_t>(to);
}

}  // namespace

bool copyBytes(int in, int out, std::uint64_t length) {
  std::uint64_t place = copiedBySystem(in, out, length);
  std::string piece(place < length ? kPiece : 0, '\0');
  while (place < length) {
    const ssize_t got =
        readAt(in, piece.data(), std::min<std::uint64_t>(piece.size(), length - place), place);
    if (got == 0)
      errno = EIO;  // shorter than it was
    if (got <= 0 || !writeAt(out, piece.data(), static_cast<std::size_t>(got), place))
      return false;
    place += static_cast<std::uint64_t>(got);
  }
  return true;
}

ZipSource::ZipSource(int in, int out)
    : in_(in), out_(out), inSize_(sizeOf(in)), piece_(out < 0 ? kReadingPiece : kPiece) {}

zip_source_t* ZipSource::make(int in, int out) {
  return zip_source_function_create(&ZipSource::call, new ZipSource(in, out), nullptr);
}

zip_int64_t ZipSource::call(void* self, void* data, zip_uint64_t length, zip_source_cmd_t command) {
  auto* source = static_cast<ZipSource*>(self);
  if (command == ZIP_SOURCE_FREE) {
    delete source;
    return 0;
  }
  return source->run(data, length, command);
}

zip_int64_t ZipSource::run(void* data, zip_uint64_t length, zip_source_cmd_t command) {
  switch (command) {
    case ZIP_SOURCE_OPEN:
      place_ = 0;
      return 0;
    case ZIP_SOURCE_READ:
      return read(static_cast<char*>(data), length);
    case ZIP_SOURCE_SEEK:
      return seek(place_, inSize_, data, length);
    case ZIP_SOURCE_TELL:
      return static_cast<zip_int64_t>(place_);
    case ZIP_SOURCE_STAT:
      return status(data, length);
    case ZIP_SOURCE_ERROR:
      return zip_error_to_data(&error_, data, length);
    case ZIP_SOURCE_BEGIN_WRITE:
      return beginWrite(0);
    case ZIP_SOURCE_BEGIN_WRITE_CLONING:
      return beginWrite(length);
    case ZIP_SOURCE_WRITE:
      return write(static_cast<const char*>(data), length);
    case ZIP_SOURCE_SEEK_WRITE:
      return seekWrite(data, length);
    case ZIP_SOURCE_TELL_WRITE:
      return static_cast<zip_int64_t>(outEnd());
    case ZIP_SOURCE_COMMIT_WRITE:  // flushing and renaming are the caller's
      return writeOut();
    case ZIP_SOURCE_CLOSE:
    case ZIP_SOURCE_ROLLBACK_WRITE:
      return 0;
    case ZIP_SOURCE_SUPPORTS:
      return out_ < 0 ? zip_int64_t{ZIP_SOURCE_SUPPORTS_SEEKABLE}
                      : ZIP_SOURCE_SUPPORTS_WRITABLE |
                            zip_source_make_command_bitmap(ZIP_SOURCE_BEGIN_WRITE_CLONING, -1);
    default:
      return failed(ZIP_ER_OPNOTSUPP, 0);
  }
}

zip_int64_t ZipSource::failed(int reason, int error) {
  zip_error_set(&error_, reason, error);
  return -1;
}

zip_int64_t ZipSource::read(char* data, std::uint64_t length) {
  if (!readAhead(length))
    return failed(ZIP_ER_READ, errno);
  const std::size_t from = place_ - aheadPlace_, count = std::min<std::size_t>(length, ahead_.size() - from);
  std::copy_n(ahead_.data() + from, count, data);
  place_ += count;
  return static_cast<zip_int64_t>(count);
}

// Sees to it that what stands at place_ is in memory, as far as the file goes.
bool ZipSource::readAhead(std::uint64_t atLeast) {
  const bool here = place_ >= aheadPlace_ && place_ + atLeast <= aheadPlace_ + ahead_.size();
  if (here)
    return true;
  ahead_.resize(std::max<std::size_t>(atLeast, piece_));
  const ssize_t got = readAt(in_, ahead_.data(), ahead_.size(), place_);
  ahead_.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
  aheadPlace_ = place_;
  return got >= 0;
}

zip_int64_t ZipSource::beginWrite(std::uint64_t kept) {
  waiting_.clear();
  outPlace_ = outSize_ = kept;
  return copyBytes(in_, out_, kept) ? 0 : failed(ZIP_ER_WRITE, errno);
}

zip_int64_t ZipSource::write(const char* data, std::uint64_t length) {
  if (waiting_.size() + length > piece_ && writeOut() < 0)
    return -1;
  waiting_.append(data, length);
  return waiting_.size() > piece_ && writeOut() < 0 ? -1 : static_cast<zip_int64_t>(length);
}

zip_int64_t ZipSource::writeOut() {
  if (!writeAt(out_, waiting_.data(), waiting_.size(), outPlace_))
    return failed(ZIP_ER_WRITE, errno);
  outPlace_ = outEnd();
  outSize_ = std::max(outSize_, outPlace_);
  waiting_.clear();
  return 0;
}

zip_int64_t ZipSource::seekWrite(void* data, zip_uint64_t length) {
  return writeOut() < 0 ? -1 : seek(outPlace_, outSize_, data, length);
}

zip_int64_t ZipSource::seek(std::uint64_t& place, std::uint64_t size, void* data, zip_uint64_t length) {
  const zip_int64_t to = zip_source_seek_compute_offset(place, size, data, length, &error_);
  if (to < 0)
    return -1;
  place = static_cast<std::uint64_t>(to);
  return 0;
}

zip_int64_t ZipSource::status(void* data, zip_uint64_t length) {
  if (length < sizeof(zip_stat_t))
    return failed(ZIP_ER_INVAL, 0);
  auto* info = static_cast<zip_stat_t*>(data);
  zip_stat_init(info);
  info->size = inSize_;
  info->valid = ZIP_STAT_SIZE;
  return sizeof(zip_stat_t);
}

}  // namespace qrn::deck
