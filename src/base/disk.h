// Files on the disk: errors with the file's name, flushing, and the one way to save: a new file that is
// renamed over the old one.
#pragma once

#include <cerrno>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/errors.h"

namespace qrn {

// An open file that closes itself. Never inherited by started programs.
class File {
 public:
  File() = default;
  explicit File(int fd) : fd_(fd) {}
  File(File&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  File& operator=(File&& other) noexcept;
  ~File();
  static File open(const std::string& path, int flags, unsigned mode = 0666);  // throws
  int fd() const { return fd_; }
  bool isOpen() const { return fd_ >= 0; }
  void close();

 private:
  int fd_ = -1;
};

// Throws HostError(world) "<doing> <file>: <reason>" with the classic number of the reason.
[[noreturn]] void throwDisk(const std::string& doing, const std::string& file, int error = errno);
[[noreturn]] void throwBad(const std::string& file, const std::string& reason);  // HostError(badData)

void writeAll(int fd, std::string_view bytes, const std::string& name);
std::string readWhole(const std::string& path);
void flushFile(int fd, const std::string& name);
void flushFolderOf(const std::string& file);
bool exists(const std::string& path);
bool folderWritable(const std::string& file);  // of the folder that holds `file`
// The file that a path leads to, also where the link's file is not there yet.
std::string behindLinks(const std::string& path);
// False in a sticky folder when neither it nor the file is this user's.
bool mayReplace(const std::string& file);
std::string folderOf(const std::string& file);
std::string nameOf(const std::string& file);
// Path of the neighbour of `file` with `suffix` behind its name and `prefix` before it. A name that the file
// system would not take is cut; a checksum of the whole name then tells it from others that begin alike.
std::string beside(const std::string& file, const std::string& suffix, const std::string& prefix = "");
std::string freeBeside(const std::string& file,
                       const std::string& suffix);  // `suffix`.N, the first not there
// Where an open file stands now, whatever it was opened as; "" when it was deleted.
std::string placeOf(int fd);
bool sameFile(int fd, const std::string& path);
// Gives an open file the mode of `model`, with `more` bits, and as far as this user may its owner and group.
// What stands beside a deck stays writable for its owner also when the deck is not.
inline constexpr unsigned kOwnerWrites = 0600;
void takeAfter(int fd, const std::string& model, unsigned more = kOwnerWrites);

// Who may use a saved file: `model` is a file that it takes after; `mode` is a mode for it and no other.
// Without either it takes after the file that it replaces and has that one's extended attributes too.
struct Kept {
  std::string model = {};
  std::optional<unsigned> mode = {};
};

// A new file that takes the place of `target` in one step, or leaves no trace. It stands in the same folder
// under a hidden name, which is its own while it lives, also against other programs.
class NewFile {
 public:
  explicit NewFile(const std::string& target, const Kept& kept = {});
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  int fd() const { return file_.fd(); }
  const std::string& path() const { return path_; }
  void flush();   // bytes are on the disk, still under the hidden name
  void rename();  // over the target; the folder is still to be flushed

 private:
  void create(unsigned mode);
  bool take(unsigned mode);
  std::string target_, path_;
  File file_;
  bool done_ = false;
};

// The whole of `NewFile` for a text.
void saveText(const std::string& target, std::string_view text, const Kept& kept = {});

}  // namespace qrn
