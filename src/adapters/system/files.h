// The file system as the logic sees it. A write or append that fails leaves the file as it was.
#pragma once

#include "host/system.h"

namespace qrn::system {

class DiskFiles : public host::Files {
 public:
  bool fileExists(const std::string& path) const override;
  bool folderExists(const std::string& path) const override;
  void makeFolder(const std::string& path) override;
  std::string read(const std::string& path) const override;
  void write(const std::string& path, std::string_view text) override;
  void append(const std::string& path, std::string_view text) override;
  void Kill(const std::string& path) override;
  std::vector<std::string> list(const std::string& folder) const override;
};

}  // namespace qrn::system
