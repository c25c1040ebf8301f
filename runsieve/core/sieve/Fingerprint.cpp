#include <runsieve/core/sieve/Fingerprint.h>

#include <runsieve/core/kernels/Xxh64.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace runsieve {

namespace {

/// Starts of the hashes of what means different things.
enum Seed : std::uint64_t
{
  times,
  keys,
  output,
  parameter,
  textParameter,
  all
};

std::uint64_t hashOf(std::string const& text, std::uint64_t seed)
{
  return Xxh64::of(text.data(), text.size(), seed);
}

std::uint64_t hashOf(double const* values, std::size_t count, std::uint64_t seed)
{
  std::array<double, 4096> block;
  while (count > 0) {
    std::size_t const size = std::min(count, block.size());
    for (std::size_t i = 0; i < size; ++i) {
      double const value = values[i] + 0.0; // -0 becomes 0
      block[i] = std::isnan(value) ? std::numeric_limits<double>::quiet_NaN() : value;
    }
    seed = Xxh64::of(block.data(), size * sizeof(double), seed);
    values += size;
    count -= size;
  }
  return seed;
}

std::uint64_t hashOf(std::vector<std::uint64_t> const& words, std::uint64_t seed)
{
  return Xxh64::of(words.data(), words.size() * sizeof(std::uint64_t), seed);
}

std::uint64_t hashOfKeys(Scan const& scan)
{
  std::vector<std::uint64_t> hashes;
  hashes.reserve(scan.runs.size());
  for (ScanRun const& run : scan.runs) hashes.push_back(hashOf(run.key, keys));
  return hashOf(hashes, keys);
}

/// Of the texts of the runs; a missing one is unlike any text.
std::uint64_t hashOfTexts(ScanParameter const& column, std::uint64_t seed)
{
  std::vector<std::uint64_t> texts;
  texts.reserve(column.texts.size());
  for (std::string const& text : column.texts) texts.push_back(hashOf(text, textParameter));
  std::vector<std::uint64_t> hashes;
  hashes.reserve(column.values.size());
  for (double value : column.values)
    hashes.push_back(std::isnan(value) ? 0 : texts[static_cast<std::size_t>(value)]);
  return hashOf(hashes, seed);
}

std::uint64_t hashOfColumn(ScanParameter const& column)
{
  if (column.isText()) return hashOfTexts(column, hashOf(column.label.name, textParameter));
  return hashOf(column.values.data(), column.values.size(), hashOf(column.label.name, parameter));
}

std::string hexadecimal(std::uint64_t value)
{
  constexpr char digits[] = "0123456789abcdef";
  std::string text(16, '0');
  for (auto digit = text.rbegin(); digit != text.rend(); ++digit, value >>= 4U) *digit = digits[value & 15U];
  return text;
}

} // namespace

std::string fingerprintOf(Scan const& scan)
{
  std::uint64_t columns = 0; // a sum, since files may have them in any order
  for (ScanOutput const& column : scan.outputs)
    columns += hashOf(column.values.get(), scan.rows(), hashOf(column.label.name, output));
  for (ScanParameter const& column : scan.parameters) columns += hashOfColumn(column);
  std::vector<std::uint64_t> const parts = {hashOf(scan.times.data(), scan.times.size(), times),
                                            hashOfKeys(scan), columns, scan.outputs.size(),
                                            scan.parameters.size()};
  return hexadecimal(hashOf(parts, all));
}

} // namespace runsieve
