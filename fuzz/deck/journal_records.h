// Any bytes as the records of a journal, with right lengths and checksums around whatever they say.
#pragma once

#include <string>
#include <string_view>

namespace qrn::fuzz {

// A journal for the deck of that fingerprint. A record is, in bytes of the input: kind (by its place in
// kKinds), slide and name (by their place in lists of good and bad ones), number, length of value, value.
inline constexpr std::string_view kKinds = "A+~DTNSZ!";  // 'Z' is no kind, '!' a payload as it stands
std::string journalFrom(std::string_view input, const std::string& fingerprint);

}  // namespace qrn::fuzz
