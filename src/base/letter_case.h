// Letters without regard to their case.
#pragma once

#include <string>
#include <string_view>

namespace qrn {

// The UTF-8 text in capitals, of any script, so that texts which differ in case alone become equal. Letters
// are turned one by one: none becomes two. Bytes that are not UTF-8 are read as Windows-1252.
std::string foldCase(std::string_view text);

}  // namespace qrn
