// Numbers as bytes, little-endian, and the checksum over them.
#pragma once

#include <zlib.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace qrn::deck {

template <class T>
void put(std::string& out, T number) {
  for (std::size_t i = 0; i < sizeof(T); ++i)
    out.push_back(static_cast<char>(static_cast<std::uint64_t>(number) >> (8 * i) & 0xFF));
}

template <class T>
T get(std::string_view bytes, std::size_t at) {
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < sizeof(T); ++i)
    number |= std::uint64_t{static_cast<unsigned char>(bytes[at + i])} << (8 * i);
  return static_cast<T>(number);
}

// CRC-32; `start` is that of what stands before.
inline std::uint32_t checksum(std::string_view bytes, std::uint32_t start = 0) {
  return static_cast<std::uint32_t>(
      ::crc32_z(start, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
}

}  // namespace qrn::deck
