#include "app/explorer/session/Session.h"

#include <charconv>
#include <limits>
#include <optional>
#include <unordered_map>

namespace runsieve::app {

namespace {

/// The number that is written exactly so.
std::optional<long long> numberOf(std::string const& key)
{
  long long number = 0;
  auto const [end, error] = std::from_chars(key.data(), key.data() + key.size(), number);
  if (error != std::errc() || end != key.data() + key.size() || std::to_string(number) != key)
    return std::nullopt;
  return number;
}

} // namespace

std::vector<RunKey> keysOf(RunSet const& runs, Scan const& scan)
{
  std::vector<RunKey> keys;
  for (std::size_t const run : runs.members()) {
    std::string const& key = scan.runs[run].key;
    const std::optional<long long> number = numberOf(key);
    if (!number) {
      keys.emplace_back(key);
      continue;
    }
    RunNumbers* last = keys.empty() ? nullptr : std::get_if<RunNumbers>(&keys.back());
    if (last && last->last < std::numeric_limits<long long>::max() && last->last + 1 == *number)
      last->last = *number;
    else
      keys.emplace_back(RunNumbers{*number, *number});
  }
  return keys;
}

std::vector<std::size_t> orderedRuns(std::vector<RunKey> const& keys, Scan const& scan,
                                     std::vector<RunKey>* absent)
{
  std::unordered_map<std::string, std::size_t> byKey;
  std::map<long long, std::size_t> byNumber;
  for (std::size_t run = 0; run < scan.runs.size(); ++run) {
    byKey[scan.runs[run].key] = run;
    if (auto const number = numberOf(scan.runs[run].key)) byNumber[*number] = run;
  }
  std::vector<std::size_t> runs;
  std::vector<RunKey> lost;
  for (RunKey const& key : keys) {
    if (auto const* text = std::get_if<std::string>(&key)) {
      auto const place = byKey.find(*text);
      if (place != byKey.end())
        runs.push_back(place->second);
      else
        lost.push_back(key);
      continue;
    }
    RunNumbers rest = std::get<RunNumbers>(key); // behind those that were found
    bool isDone = rest.first > rest.last;
    for (auto place = byNumber.lower_bound(rest.first); place != byNumber.end() && place->first <= rest.last;
         ++place) {
      runs.push_back(place->second);
      if (place->first > rest.first) lost.emplace_back(RunNumbers{rest.first, place->first - 1});
      isDone = place->first == rest.last;
      if (!isDone) rest.first = place->first + 1; // below the last, so that it does not overflow
    }
    if (!isDone) lost.emplace_back(rest);
  }
  if (absent) *absent = std::move(lost);
  return runs;
}

RunSet runsOf(std::vector<RunKey> const& keys, Scan const& scan, std::vector<RunKey>* absent)
{
  RunSet runs(scan.runs.size());
  for (std::size_t const run : orderedRuns(keys, scan, absent)) runs.set(run);
  return runs;
}

} // namespace runsieve::app
