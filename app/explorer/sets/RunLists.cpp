#include "app/explorer/sets/RunLists.h"

#include <runsieve/core/gate/GateRuns.h>
#include <runsieve/core/gate/GateText.h>
#include <runsieve/core/text/FieldText.h>
#include <runsieve/core/text/Utf16.h>
#include <runsieve/core/text/Utf8.h>

#include <algorithm>
#include <charconv>
#include <unordered_map>

namespace runsieve::app {

namespace {

std::optional<long long> wholeNumber(std::string const& key)
{
  long long value = 0;
  auto const [end, error] = std::from_chars(key.data(), key.data() + key.size(), value);
  if (error != std::errc() || end != key.data() + key.size() || std::to_string(value) != key)
    return std::nullopt;
  return value;
}

/// Whether a key is read as a number, also one with leading zeros, which a span takes in as well.
bool readsAsNumber(std::string const& key)
{
  long long value = 0;
  auto const [end, error] = std::from_chars(key.data(), key.data() + key.size(), value);
  return error == std::errc() && end == key.data() + key.size();
}

/// The first field of a line of comma-separated text.
std::string firstField(std::string_view line)
{
  if (line.empty() || line.front() != '"') return std::string(trimmed(line.substr(0, line.find(','))));
  std::string field;
  for (std::size_t i = 1; i < line.size(); ++i) {
    if (line[i] != '"') {
      field += line[i];
    } else if (i + 1 < line.size() && line[i + 1] == '"') {
      field += '"';
      ++i;
    } else {
      break;
    }
  }
  return field;
}

std::vector<std::string_view> linesOf(std::string_view text)
{
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = text.find_first_of("\r\n");
    lines.push_back(trimmed(text.substr(0, end)));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines;
}

} // namespace

RunSet typedRuns(std::string const& list, Scan const& scan)
{
  if (trimmed(list).empty()) throw GateError("write keys of runs, and spans of numbers: 3,5,10-15");
  const Gate gate = parseGate("runs " + list);
  if (gate.kind != GateKind::Runs) throw GateError(quoted(list) + " is no list of runs; write 3,5,10-15");
  return runsThrough(resolveGate(gate, scan), scan);
}

ListedRuns listedRuns(std::string_view bytes, Scan const& scan)
{
  std::string text = isUtf16(bytes) ? fromUtf16(bytes) : asUtf8(bytes);
  constexpr std::string_view mark = "\xef\xbb\xbf";
  if (text.compare(0, mark.size(), mark) == 0) text.erase(0, mark.size());
  std::unordered_map<std::string_view, std::size_t> positions;
  for (std::size_t run = 0; run < scan.runs.size(); ++run) positions.emplace(scan.runs[run].key, run);
  ListedRuns listed{RunSet(scan.runs.size()), {}};
  bool isFirst = true;
  for (std::string_view line : linesOf(text)) {
    if (line.empty()) continue;
    auto found = positions.find(line);
    const std::string field = firstField(line);
    if (found == positions.end()) found = positions.find(field);
    if (found != positions.end())
      listed.runs.set(found->second);
    else if (!isFirst || field != "run")
      listed.unknown.push_back(field);
    isFirst = false;
  }
  return listed;
}

std::optional<Gate> gateOnRuns(RunSet const& runs, Scan const& scan)
{
  Gate gate;
  gate.kind = GateKind::Runs;
  std::vector<std::pair<long long, std::size_t>> numbered;
  // A number that a key with leading zeros shares is in no span: it would take in both.
  bool const plain = std::all_of(scan.runs.begin(), scan.runs.end(), [](ScanRun const& run) {
    return !readsAsNumber(run.key) || wholeNumber(run.key);
  });
  for (std::size_t run = 0; run < scan.runs.size(); ++run) {
    auto const number = plain ? wholeNumber(scan.runs[run].key) : std::nullopt;
    if (number)
      numbered.emplace_back(*number, run);
    else if (runs.contains(run))
      gate.runs.emplace_back(scan.runs[run].key);
  }
  std::sort(numbered.begin(), numbered.end());
  for (std::size_t i = 0; i < numbered.size();) {
    std::size_t end = i;
    while (end < numbered.size() && runs.contains(numbered[end].second)) ++end;
    if (end - i == 1) gate.runs.emplace_back(scan.runs[numbered[i].second].key);
    if (end - i > 1) gate.runs.emplace_back(RunNumbers{numbered[i].first, numbered[end - 1].first});
    i = end == i ? i + 1 : end;
  }
  if (gate.runs.empty() || gate.runs.size() > mostListed) return std::nullopt;
  return gate;
}

} // namespace runsieve::app
