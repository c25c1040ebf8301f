#include <runsieve/core/read/ParameterCopies.h>

#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>

namespace runsieve {

namespace {

using Ranks = std::vector<std::uint32_t>;

constexpr std::size_t fewest = 3; ///< runs; any two parameters of two runs are copies

/// Ranks from 1 of the different values of a parameter; 0 for none. Those that fall from the first value that
/// differs from the one before are turned round, so that copies of either direction have the same ranks.
/// Nothing for a constant.
std::optional<Ranks> ranksOf(ScanParameter const& parameter)
{
  std::vector<std::uint32_t> order;
  for (std::size_t run = 0; run < parameter.values.size(); ++run)
    if (!std::isnan(parameter.values[run])) order.push_back(static_cast<std::uint32_t>(run));
  if (order.size() < fewest) return std::nullopt;
  auto const value = [&](std::uint32_t run) { return parameter.values[run]; };
  std::sort(order.begin(), order.end(), [&](auto a, auto b) { return value(a) < value(b); });
  Ranks ranks(parameter.values.size(), 0);
  std::uint32_t rank = 0;
  for (std::size_t i = 0; i < order.size(); ++i) {
    if (i == 0 || value(order[i]) != value(order[i - 1])) ++rank;
    ranks[order[i]] = rank;
  }
  if (rank == 1) return std::nullopt;
  auto const first = std::find_if(ranks.begin(), ranks.end(), [](std::uint32_t r) { return r > 0; });
  auto const other = std::find_if(first, ranks.end(), [&](std::uint32_t r) { return r > 0 && r != *first; });
  if (*other < *first)
    for (std::uint32_t& r : ranks)
      if (r > 0) r = rank + 1 - r;
  return ranks;
}

std::uint64_t hashOf(Ranks const& ranks)
{
  std::uint64_t hash = 0xCBF2'9CE4'8422'2325; // FNV-1a
  for (std::uint32_t const rank : ranks) hash = (hash ^ rank) * 0x0000'0100'0000'01B3;
  return hash;
}

} // namespace

void tellCopies(Scan const& scan, std::vector<Finding>& findings)
{
  constexpr std::size_t most = 20;
  std::size_t copies = 0;
  std::unordered_map<std::uint64_t, std::vector<std::size_t>> known;
  for (std::size_t i = 0; i < scan.parameters.size(); ++i) {
    ScanParameter const& parameter = scan.parameters[i];
    auto const ranks = parameter.isText() ? std::nullopt : ranksOf(parameter);
    if (!ranks) continue;
    std::vector<std::size_t>& alike = known[hashOf(*ranks)];
    auto const original = std::find_if(alike.begin(), alike.end(), [&](std::size_t other) {
      return ranksOf(scan.parameters[other]) == ranks;
    });
    if (original == alike.end())
      alike.push_back(i);
    else if (++copies <= most)
      findings.push_back({parameter.label.name + " is a monotone copy of " +
                              scan.parameters[*original].label.name + ": both give the same test",
                          "their values put the runs in the same order", false});
  }
  if (copies > most)
    findings.push_back({std::to_string(copies - most) + " more monotone copies of parameters", "", false});
}

} // namespace runsieve
