// Members of `glo` by name, for case files: "runByOption", "risks.1.average.0", "assessmentInfo.0.active".
#pragma once

#include <string>
#include <string_view>

namespace qrn::test {

// Numbers as short as they can be told, flags as yes and no, lists with blanks between their elements.
std::string memberText(std::string_view path);
void setMember(std::string_view path, const std::string& text);

}  // namespace qrn::test
