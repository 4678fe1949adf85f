// A 64-bit digest of what something looks like: equal looks give equal digests, and unequal ones differ but
// for a chance that no run will meet.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>

#include "host/surface.h"

namespace qrn::render {

class Digest {
 public:
  Digest& add(std::uint64_t value) {
    const auto product = static_cast<unsigned __int128>(state_ ^ value) * 0x9e3779b97f4a7c15ULL;
    state_ = static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64) ^ 0x2545f491ULL;
    return *this;
  }
  Digest& add(std::int64_t value) { return add(static_cast<std::uint64_t>(value)); }
  Digest& add(int value) { return add(static_cast<std::int64_t>(value)); }
  Digest& add(double value) { return add(std::bit_cast<std::uint64_t>(value)); }
  Digest& add(const std::string& text);
  std::uint64_t value() const { return state_; }

 private:
  std::uint64_t state_ = 0x51ed270b7a1f4c35ULL;
};

// Of what a label writes, or of a shape, wherever it stands.
std::uint64_t textDigest(const host::Element& label);
std::uint64_t shapeDigest(const host::Element& shape);
// Of everything that is painted of an element; never 0.
std::uint64_t elementDigest(const host::Element& element);

}  // namespace qrn::render
