#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace runsieve {

/// The hash XXH64 (Y. Collet, xxHash fast digest algorithm, format description 0.1.1) of some bytes. Words
/// are read as a little-endian machine does.
class Xxh64
{
public:
  [[nodiscard]] static std::uint64_t of(void const* data, std::size_t size, std::uint64_t seed = 0)
  {
    auto const* at = static_cast<unsigned char const*>(data);
    auto const* const end = at + size;
    std::uint64_t hash = seed + prime5;
    if (size >= 32) hash = ofStripes(at, end, seed);
    hash += size;
    for (; end - at >= 8; at += 8)
      hash = rotated(hash ^ round(0, word<std::uint64_t>(at)), 27) * prime1 + prime4;
    if (end - at >= 4) {
      hash = rotated(hash ^ word<std::uint32_t>(at) * prime1, 23) * prime2 + prime3;
      at += 4;
    }
    for (; at != end; ++at) hash = rotated(hash ^ *at * prime5, 11) * prime1;
    return avalanche(hash);
  }

private:
  static constexpr std::uint64_t prime1 = 0x9E3779B185EBCA87;
  static constexpr std::uint64_t prime2 = 0xC2B2AE3D27D4EB4F;
  static constexpr std::uint64_t prime3 = 0x165667B19E3779F9;
  static constexpr std::uint64_t prime4 = 0x85EBCA77C2B2AE63;
  static constexpr std::uint64_t prime5 = 0x27D4EB2F165667C5;

  static constexpr std::uint64_t rotated(std::uint64_t value, int bits)
  {
    return (value << bits) | (value >> (64 - bits));
  }

  static constexpr std::uint64_t round(std::uint64_t lane, std::uint64_t input)
  {
    return rotated(lane + input * prime2, 31) * prime1;
  }

  template <class Word> static std::uint64_t word(unsigned char const* at)
  {
    Word value;
    std::memcpy(&value, at, sizeof value);
    return value;
  }

  /// Takes all whole stripes of 32 bytes.
  static std::uint64_t ofStripes(unsigned char const*& at, unsigned char const* end, std::uint64_t seed)
  {
    std::array<std::uint64_t, 4> lanes{seed + prime1 + prime2, seed + prime2, seed, seed - prime1};
    for (; end - at >= 32; at += 32)
      for (std::size_t i = 0; i < 4; ++i) lanes[i] = round(lanes[i], word<std::uint64_t>(at + 8 * i));
    std::uint64_t hash =
        rotated(lanes[0], 1) + rotated(lanes[1], 7) + rotated(lanes[2], 12) + rotated(lanes[3], 18);
    for (std::uint64_t lane : lanes) hash = (hash ^ round(0, lane)) * prime1 + prime4;
    return hash;
  }

  static constexpr std::uint64_t avalanche(std::uint64_t hash)
  {
    hash = (hash ^ (hash >> 33)) * prime2;
    hash = (hash ^ (hash >> 29)) * prime3;
    return hash ^ (hash >> 32);
  }
};

} // namespace runsieve
