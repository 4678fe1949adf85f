// What is not written over, whatever a person names as the place for an export, a picture or a copy.
#pragma once

#include <string>

namespace qrn::deck {

// Why `target` may not be written: it is `deck` or stands beside it, by whatever name or link, or it is
// another deck. "" when it may.
std::string whyNotOverwritten(const std::string& target, const std::string& deck);

}  // namespace qrn::deck
