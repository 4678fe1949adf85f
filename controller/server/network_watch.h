#pragma once

#include <optional>

namespace qrn::controller {

// A socket that can be read when a card, an address or a route has changed, where the system gives one.
std::optional<int> networkWatch();

}  // namespace qrn::controller
