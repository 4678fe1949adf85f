// Writing the changed deck through libzip.
#include <sys/stat.h>

#include "adapters/deck/package.h"
#include "adapters/deck/packed_part.h"
#include "adapters/deck/zip_source.h"

namespace qrn::deck {

namespace {

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
  zip_source_t* source = packedPart(zip, text);
  zip_stat_t info;
  if (source == nullptr || zip_source_stat(source, &info) != 0)
    throwZip(name, zip_get_error(zip));
  zip_int64_t index = zip_name_locate(zip, part.c_str(), ZIP_FL_NOCASE | ZIP_FL_ENC_RAW);
  const bool known = index >= 0;
  if (known ? zip_file_replace(zip, static_cast<zip_uint64_t>(index), source, 0) != 0
            : (index = zip_file_add(zip, part.c_str(), source, ZIP_FL_ENC_UTF_8)) < 0) {
    zip_source_free(source);
    throwZip(name, zip_get_error(zip));
  }
  const auto place = static_cast<zip_uint64_t>(index);
  if (zip_set_file_compression(zip, place, info.comp_method, 0) != 0 ||
      zip_file_set_dostime(zip, place, 0, 0x21, 0) != 0)  // 1 January 1980, as office programs write it
    throwZip(name, zip_get_error(zip));
}

void copyPackage(const Package& package, int out, const std::string& name) {
  struct stat info {};
  if (::fstat(package.fd(), &info) != 0 ||
      !copyBytes(package.fd(), out, static_cast<std::uint64_t>(info.st_size)))
    throwDisk("Cannot write", name);
}

}  // namespace

void writePackage(const Parts& parts, int out, const std::string& name) {
  if (parts.changed().empty()) {  // libzip would write nothing at all
    copyPackage(parts.package(), out, name);
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

}  // namespace qrn::deck
