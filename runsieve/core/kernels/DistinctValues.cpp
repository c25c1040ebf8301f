#include <runsieve/core/kernels/DistinctValues.h>

#include <algorithm>
#include <cstring>

namespace runsieve {

namespace {

constexpr std::uint64_t noKey = ~std::uint64_t{0}; ///< the bits of a NaN

/// The bits of a value, those of 0.0 for either zero.
std::uint64_t keyOf(double value)
{
  const double unsignedZero = value + 0.0;
  std::uint64_t key;
  std::memcpy(&key, &unsignedZero, sizeof key);
  return key;
}

/// A position in a table of 2^n places.
std::size_t hash(std::uint64_t key, std::size_t places)
{
  // Fibonacci hashing (Knuth, The Art of Computer Programming 3, 6.4). Values on a lattice end in many zero
  // bits; their upper half enters twice.
  const std::uint64_t mixed = (key ^ (key >> 32)) * 0x9E3779B97F4A7C15u;
  return static_cast<std::size_t>(mixed >> 32) & (places - 1);
}

/// The least power of two that leaves at least half of the places free.
std::size_t placesFor(std::size_t size)
{
  std::size_t places = 2;
  while (places < 2 * size) places *= 2;
  return places;
}

} // namespace

DistinctValues::DistinctValues(std::size_t mostEntries) : most(mostEntries), places(placesFor(mostEntries)) {}

std::size_t DistinctValues::count(double const* values, std::size_t size)
{
  entries.clear();
  std::fill(places.begin(), places.end(), 0);
  for (std::size_t i = 0; i < size; ++i)
    if (!countFew(values[i])) return countMany(values, size);
  return entries.size();
}

std::vector<DistinctValues::Entry> const& DistinctValues::sortedEntries()
{
  std::sort(entries.begin(), entries.end(), [](Entry a, Entry b) { return a.value < b.value; });
  return entries;
}

/// False if the value is one too many.
bool DistinctValues::countFew(double value)
{
  std::size_t place = hash(keyOf(value), places.size());
  while (places[place] != 0) {
    Entry& entry = entries[places[place] - 1];
    if (entry.value == value) {
      ++entry.count;
      return true;
    }
    place = (place + 1) & (places.size() - 1);
  }
  if (entries.size() == most) return false;
  entries.push_back({value, 1});
  places[place] = static_cast<std::uint32_t>(entries.size());
  return true;
}

std::size_t DistinctValues::countMany(double const* values, std::size_t size)
{
  keys.assign(placesFor(size), noKey);
  std::size_t distinct = 0;
  for (std::size_t i = 0; i < size; ++i) distinct += insert(keyOf(values[i])) ? 1 : 0;
  return distinct;
}

/// False if the key is there.
bool DistinctValues::insert(std::uint64_t key)
{
  std::size_t place = hash(key, keys.size());
  while (keys[place] != noKey) {
    if (keys[place] == key) return false;
    place = (place + 1) & (keys.size() - 1);
  }
  keys[place] = key;
  return true;
}

} // namespace runsieve
