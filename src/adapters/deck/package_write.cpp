// Writing the changed deck through libzip, and the source that libzip reads and writes through.
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>

#include "adapters/deck/package.h"

namespace qrn::deck {

namespace {

// Some readers take a part that packs below 1 % for a bomb; such a part is stored unpacked instead.
bool packsSuspiciouslyWell(const std::string& text) {
  if (text.size() < 100000)
    return false;
  uLongf packed = compressBound(static_cast<uLong>(text.size()));
  std::string out(packed, '\0');
  const int result =
      compress2(reinterpret_cast<Bytef*>(out.data()), &packed, reinterpret_cast<const Bytef*>(text.data()),
                static_cast<uLong>(text.size()), 6);
  return result == Z_OK && packed < text.size() / 67;  // 1.5 %, to be clear of the limit
}

struct Discard {
  void operator()(zip_t* zip) const { zip_discard(zip); }
};
using Zip = std::unique_ptr<zip_t, Discard>;

[[noreturn]] void throwZip(const std::string& name, zip_error_t* error) {
  if (zip_error_system_type(error) == ZIP_ET_SYS && zip_error_code_system(error) != 0)
    throwDisk("Cannot write", name, zip_error_code_system(error));
  throw HostError(Fault::world, 57, "Cannot write " + name + ": " + zip_error_strerror(error));
}

void putPart(zip_t* zip, const std::string& part, const std::string& text, const std::string& name) {
  zip_source_t* source = zip_source_buffer(zip, text.data(), text.size(), 0);
  if (source == nullptr)
    throwZip(name, zip_get_error(zip));
  zip_int64_t index = zip_name_locate(zip, part.c_str(), ZIP_FL_NOCASE | ZIP_FL_ENC_RAW);
  const bool known = index >= 0;
  if (known ? zip_file_replace(zip, static_cast<zip_uint64_t>(index), source, 0) != 0
            : (index = zip_file_add(zip, part.c_str(), source, ZIP_FL_ENC_UTF_8)) < 0) {
    zip_source_free(source);
    throwZip(name, zip_get_error(zip));
  }
  const auto place = static_cast<zip_uint64_t>(index);
  const bool store = packsSuspiciouslyWell(text);
  if (zip_set_file_compression(zip, place, store ? ZIP_CM_STORE : ZIP_CM_DEFLATE, 0) != 0 ||
      zip_file_set_dostime(zip, place, 0, 0x21, 0) != 0)  // 1 January 1980, as office programs write it
    throwZip(name, zip_get_error(zip));
}

void copyFile(int in, int out, const std::string& name) {
  std::string block(std::size_t{1} << 20, '\0');
  off_t place = 0;
  ssize_t got = 0;
  while ((got = ::pread(in, block.data(), block.size(), place)) > 0) {
    writeAll(out, std::string_view(block).substr(0, static_cast<std::size_t>(got)), name);
    place += got;
  }
  if (got < 0)
    throwDisk("Cannot read", name);
}

}  // namespace

void writePackage(const Parts& parts, int out, const std::string& name) {
  if (parts.changed().empty()) {  // libzip would write nothing at all
    copyFile(parts.package().fd(), out, name);
    return;
  }
  zip_error_t error;
  zip_error_init(&error);
  zip_source_t* source = ZipSource::make(parts.package().fd(), out);
  Zip zip(zip_open_from_source(source, 0, &error));
  if (!zip) {
    zip_source_free(source);
    throwZip(name, &error);
  }
  for (const auto& [part, text] : parts.changed()) putPart(zip.get(), part, text, name);
  if (zip_close(zip.get()) != 0)
    throwZip(name, zip_get_error(zip.get()));
  (void)zip.release();
}

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
      return read(data, length);
    case ZIP_SOURCE_SEEK:
      return seek(place_, sizeOf(in_), data, length);
    case ZIP_SOURCE_TELL:
      return static_cast<zip_int64_t>(place_);
    case ZIP_SOURCE_STAT:
      return status(data, length);
    case ZIP_SOURCE_ERROR:
      return zip_error_to_data(&error_, data, length);
    case ZIP_SOURCE_BEGIN_WRITE:
      outPlace_ = outSize_ = 0;
      return 0;
    case ZIP_SOURCE_WRITE:
      return write(data, length);
    case ZIP_SOURCE_SEEK_WRITE:
      return seek(outPlace_, outSize_, data, length);
    case ZIP_SOURCE_TELL_WRITE:
      return static_cast<zip_int64_t>(outPlace_);
    case ZIP_SOURCE_CLOSE:
    case ZIP_SOURCE_COMMIT_WRITE:  // flushing and renaming are the caller's
    case ZIP_SOURCE_ROLLBACK_WRITE:
      return 0;
    case ZIP_SOURCE_SUPPORTS:
      return out_ < 0 ? zip_int64_t{ZIP_SOURCE_SUPPORTS_SEEKABLE} : zip_int64_t{ZIP_SOURCE_SUPPORTS_WRITABLE};
    default:
      zip_error_set(&error_, ZIP_ER_OPNOTSUPP, 0);
      return -1;
  }
}

zip_int64_t ZipSource::read(void* data, zip_uint64_t length) {
  const ssize_t got = ::pread(in_, data, length, static_cast<off_t>(place_));
  if (got < 0) {
    zip_error_set(&error_, ZIP_ER_READ, errno);
    return -1;
  }
  place_ += static_cast<std::uint64_t>(got);
  return got;
}

zip_int64_t ZipSource::write(const void* data, zip_uint64_t length) {
  const char* bytes = static_cast<const char*>(data);
  std::uint64_t left = length;
  while (left > 0) {
    const ssize_t done = ::pwrite(out_, bytes, left, static_cast<off_t>(outPlace_));
    if (done < 0 && errno == EINTR)
      continue;
    if (done <= 0) {
      zip_error_set(&error_, ZIP_ER_WRITE, done == 0 ? ENOSPC : errno);
      return -1;
    }
    bytes += done;
    left -= static_cast<std::uint64_t>(done);
    outPlace_ += static_cast<std::uint64_t>(done);
  }
  outSize_ = std::max(outSize_, outPlace_);
  return static_cast<zip_int64_t>(length);
}

zip_int64_t ZipSource::seek(std::uint64_t& place, std::uint64_t size, void* data, zip_uint64_t length) {
  const zip_int64_t to = zip_source_seek_compute_offset(place, size, data, length, &error_);
  if (to < 0)
    return -1;
  place = static_cast<std::uint64_t>(to);
  return 0;
}

zip_int64_t ZipSource::status(void* data, zip_uint64_t length) {
  if (length < sizeof(zip_stat_t)) {
    zip_error_set(&error_, ZIP_ER_INVAL, 0);
    return -1;
  }
  auto* info = static_cast<zip_stat_t*>(data);
  zip_stat_init(info);
  info->size = sizeOf(in_);
  info->valid = ZIP_STAT_SIZE;
  return sizeof(zip_stat_t);
}

std::uint64_t ZipSource::sizeOf(int fd) const {
  struct stat info {};
  return ::fstat(fd, &info) == 0 ? static_cast<std::uint64_t>(info.st_size) : 0;
}

}  // namespace qrn::deck
