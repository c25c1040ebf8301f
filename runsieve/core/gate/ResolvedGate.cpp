#include <runsieve/core/gate/ResolvedGate.h>

#include <runsieve/core/gate/GateText.h>
#include <runsieve/core/gate/GateWords.h>
#include <runsieve/core/gate/ParameterName.h>
#include <runsieve/core/gate/TimeGrid.h>
#include <runsieve/core/text/Decimal.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>
#include <unordered_map>

namespace runsieve {

namespace {

using Position = std::optional<std::size_t>;

// The texts for a message; of many the first ones.
std::string listed(std::vector<std::string> const& texts)
{
  constexpr std::size_t most = 20;
  std::string list;
  for (std::size_t i = 0; i < std::min(texts.size(), most); ++i)
    list += (i > 0 ? ", " : "") + quoted(texts[i]);
  if (texts.size() > most) list += " and " + std::to_string(texts.size() - most) + " more";
  return list;
}

template <class Column> std::vector<std::string> fullNames(std::vector<Column> const& columns)
{
  std::vector<std::string> names;
  names.reserve(columns.size());
  for (Column const& column : columns) names.push_back(column.label.fullName());
  return names;
}

std::string listedParameters(Scan const& scan)
{
  return scan.parameters.empty() ? "it has no parameters" : "there are " + listed(fullNames(scan.parameters));
}

template <class Find> auto findOrFail(Find const& find)
{
  try {
    return find();
  } catch (std::invalid_argument const& ambiguous) {
    throw GateError(ambiguous.what());
  }
}

Position findOutput(Scan const& scan, std::string const& name)
{
  return findOrFail([&] { return scan.findOutput(name); });
}

Position findParameter(Scan const& scan, std::string const& name)
{
  return findOrFail([&] {
    Position const found = scan.findParameter(name);
    bool const prefixed = name.compare(0, parameterPrefix.size(), parameterPrefix) == 0;
    return found || !prefixed ? found : scan.findParameter(name.substr(parameterPrefix.size()));
  });
}

/// If the words of the gate were part of a name: "; the output "never A" is written in quotes".
std::string quotesAdvice(Gate const& gate, Scan const& scan)
{
  std::string const word(wordOf(kindWords, gate.kind));
  std::string name = gate.column;
  if (isFunction(gate.kind))
    name = word + '(' + name + ')';
  else if (gate.kind != GateKind::Inside)
    name = word + ' ' + name;
  auto const isOutput = [&](std::string const& wanted) {
    return std::any_of(scan.outputs.begin(), scan.outputs.end(), [&](ScanOutput const& output) {
      return output.label.name == wanted || output.label.fullName() == wanted;
    });
  };
  if (gate.negated && isOutput("not " + name)) name.insert(0, "not ");
  if (name == gate.column || !isOutput(name)) return "";
  return "; the name " + quoted(name) + " is written in double quotes";
}

/// The words of kinds from one to another: "ever, never".
std::string wordsBetween(GateKind first, GateKind last)
{
  std::string words;
  for (auto kind = static_cast<std::size_t>(first); kind <= static_cast<std::size_t>(last); ++kind)
    words += (words.empty() ? "" : ", ") + std::string(kindWords.at(kind));
  return words;
}

/// If an unknown word stands before or around a name of the scan: what words there are.
std::string wordsAdvice(std::string const& column, Scan const& scan)
{
  auto const isName = [&](std::string const& name) {
    return findOutput(scan, name) || findParameter(scan, name);
  };
  std::size_t const bracket = column.find('(');
  if (bracket != std::string::npos && column.back() == ')' &&
      isName(column.substr(bracket + 1, column.size() - bracket - 2)))
    return "; functions are " + wordsBetween(GateKind::Max, GateKind::TimeOfMin);
  std::size_t const blank = column.find(' ');
  if (blank != std::string::npos && isName(column.substr(blank + 1)))
    return "; words before a name are not, " + wordsBetween(GateKind::Ever, GateKind::Crosses);
  return "";
}

[[noreturn]] void failWithoutOutput(Gate const& gate, Scan const& scan)
{
  std::string const start = "the scan has no output " + quoted(gate.column);
  if (findParameter(scan, gate.column))
    throw GateError(start + "; it is a parameter, which has no times: write " + quoted(gate.column) +
                    " in LOW..HIGH");
  throw GateError(start + "; there are " + listed(fullNames(scan.outputs)) + quotesAdvice(gate, scan) +
                  wordsAdvice(gate.column, scan));
}

void takeOutput(ResolvedGate& resolved, Scan const& scan, std::size_t output)
{
  resolved.target = GateTarget::Output;
  resolved.column = output;
  resolved.gate.column = scan.outputs[output].label.fullName();
}

void takeParameter(ResolvedGate& resolved, Scan const& scan, std::size_t parameter)
{
  resolved.target = GateTarget::Parameter;
  resolved.column = parameter;
  resolved.gate.column = nameOfParameter(scan, parameter);
}

void findOutputColumn(ResolvedGate& resolved, Scan const& scan)
{
  Position const output = findOutput(scan, resolved.gate.column);
  if (!output) failWithoutOutput(resolved.gate, scan);
  takeOutput(resolved, scan, *output);
}

/// The column of a gate that may look at an output or at a parameter.
void findColumn(ResolvedGate& resolved, Scan const& scan)
{
  std::string const name = resolved.gate.column;
  Position const output = findOutput(scan, name);
  Position const parameter = findParameter(scan, name);
  if (output && parameter)
    throw GateError(quoted(name) + " is an output and a parameter; write \"" + name +
                    " @ .. in LOW..HIGH\" for the output, \"" + std::string(parameterPrefix) + name +
                    " in LOW..HIGH\" for the parameter");
  if (output) return takeOutput(resolved, scan, *output);
  if (!parameter)
    throw GateError(
        "the scan has neither an output nor a parameter " + quoted(name) + "; outputs are " +
        listed(fullNames(scan.outputs)) +
        (scan.parameters.empty() ? std::string() : ", parameters " + listed(fullNames(scan.parameters))) +
        quotesAdvice(resolved.gate, scan) + wordsAdvice(name, scan));
  takeParameter(resolved, scan, *parameter);
  if (scan.parameters[*parameter].isText())
    throw GateError("the parameter " + quoted(name) + " holds texts, which lie in no range; write " +
                    quoted(name + " is " + scan.parameters[*parameter].texts.front()));
}

void checkRanges(Gate const& gate)
{
  std::string const start = "gate " + quoted(formatGate(gate)) + ": ";
  if (!(gate.range.low <= gate.range.high))
    throw GateError(start + "the value range is empty, since " + decimal(gate.range.low) + " lies above " +
                    decimal(gate.range.high));
  if (!gate.span) return;
  auto const& [first, last] = *gate.span;
  if ((first && !std::isfinite(*first)) || (last && !std::isfinite(*last)))
    throw GateError(start + "a time must be finite");
  if (first && last && !(*first <= *last))
    throw GateError(start + "the time span is empty, since " + decimal(*first) + " lies behind " +
                    decimal(*last));
}

void checkTimes(Gate const& gate, TimeGrid const& grid)
{
  for (auto const& time : {gate.span->first, gate.span->last})
    if (time && !grid.holds(*time))
      throw GateError("gate " + quoted(formatGate(gate)) + ": the time " + decimal(*time) +
                      " lies outside of the scan, whose times are " + decimal(grid.front()) + ".." +
                      decimal(grid.back()));
}

/// Puts the span on times of the grid and tells what that has changed.
void moveToGrid(ResolvedGate& resolved, GateSpan& span, Scan const& scan)
{
  TimeGrid const grid(scan.times);
  resolved.first = span.first ? grid.notBefore(*span.first) : 0;
  std::size_t const end = span.last ? grid.behind(*span.last) : scan.times.size();
  if (resolved.first < end) {
    resolved.last = end - 1;
  } else { // only a span of two ends holds no time
    resolved.first = grid.nearest(0.5 * *span.first + 0.5 * *span.last);
    resolved.last = resolved.first;
  }
  GateSpan const wanted = span;
  if (span.first) span.first = scan.times[resolved.first];
  if (span.last) span.last = scan.times[resolved.last];
  auto const moved = [&](std::optional<double> const& from, std::optional<double> const& to) {
    return from && std::abs(*from - *to) > grid.tolerance();
  };
  if (moved(wanted.first, span.first) || moved(wanted.last, span.last))
    resolved.note = "time " + formatSpan(wanted) + " -> " + formatSpan(span);
}

/// Share of the way from one grid time to the next.
double shareOf(std::vector<double> const& times, std::size_t from, double time)
{
  // Halves, since the step between huge times may be too large for a number.
  double const share = (0.5 * time - 0.5 * times[from]) / (0.5 * times[from + 1] - 0.5 * times[from]);
  return std::clamp(share, 0.0, 1.0);
}

/// Finds the grid times around the span and where the line begins and ends between them.
void enclose(ResolvedGate& resolved, GateSpan const& span, Scan const& scan)
{
  TimeGrid const grid(scan.times);
  resolved.last = scan.times.size() - 1;
  if (span.first) {
    resolved.first = grid.behind(*span.first) - 1;
    double const behind = *span.first - scan.times[resolved.first];
    if (resolved.first < resolved.last && behind > grid.tolerance())
      resolved.firstShare = shareOf(scan.times, resolved.first, *span.first);
  }
  if (span.last) {
    resolved.last = grid.notBefore(*span.last);
    if (resolved.last > 0 && scan.times[resolved.last] - *span.last > grid.tolerance())
      resolved.lastShare = shareOf(scan.times, resolved.last - 1, *span.last);
  }
  resolved.first = std::min(resolved.first, resolved.last); // times nearer than the tolerance
}

void findTimes(ResolvedGate& resolved, Scan const& scan)
{
  if (scan.times.empty()) throw GateError("the scan has no times");
  Gate& gate = resolved.gate;
  GateSpan whole;
  GateSpan& span = gate.span ? *gate.span : whole;
  if (gate.span) checkTimes(gate, TimeGrid(scan.times));
  if (gate.kind == GateKind::Crosses)
    enclose(resolved, span, scan);
  else
    moveToGrid(resolved, span, scan);
}

void resolveRange(ResolvedGate& resolved, Scan const& scan)
{
  Gate const& gate = resolved.gate;
  checkRanges(gate);
  bool const mayBeParameter = gate.kind == GateKind::Inside && !gate.span;
  if (mayBeParameter)
    findColumn(resolved, scan);
  else
    findOutputColumn(resolved, scan);
  if (resolved.target == GateTarget::Output) findTimes(resolved, scan);
  resolved.range = gate.range;
  if (gate.kind == GateKind::TimeOfMax || gate.kind == GateKind::TimeOfMin) {
    double const tolerance = TimeGrid(scan.times).tolerance();
    resolved.range.low -= tolerance;
    resolved.range.high += tolerance;
  }
}

double numberOf(ScanParameter const& parameter, std::string const& text)
{
  auto const number = parseNumber(text);
  if (number && !std::isnan(*number)) return *number;
  throw GateError("the parameter " + quoted(parameter.label.fullName()) + " holds numbers; " + quoted(text) +
                  " is none");
}

/// The listed values as the scan keeps them, ascending.
std::vector<double> wantedValues(ScanParameter const& parameter, std::vector<std::string> const& texts)
{
  std::unordered_map<std::string_view, std::size_t> positions;
  for (std::string const& text : parameter.texts) positions.emplace(text, positions.size());
  std::vector<double> values;
  for (std::string const& text : texts) {
    auto const found = positions.find(text);
    if (found == positions.end() && parameter.isText())
      throw GateError("the parameter " + quoted(parameter.label.fullName()) + " has no value " +
                      quoted(text) + "; there are " + listed(parameter.texts));
    values.push_back(parameter.isText() ? static_cast<double>(found->second) : numberOf(parameter, text));
  }
  std::sort(values.begin(), values.end());
  return values;
}

void resolveIs(ResolvedGate& resolved, Scan const& scan)
{
  std::string const name = resolved.gate.column;
  if (resolved.gate.texts.empty()) throw GateError("the gate on " + quoted(name) + " lists no values");
  Position const parameter = findParameter(scan, name);
  if (!parameter && findOutput(scan, name))
    throw GateError(quoted(name) + " is an output: write " + quoted(name) + " @ TIME in LOW..HIGH");
  if (!parameter)
    throw GateError("the scan has no parameter " + quoted(name) + "; " + listedParameters(scan));
  takeParameter(resolved, scan, *parameter);
  resolved.wanted = wantedValues(scan.parameters[*parameter], resolved.gate.texts);
}

std::optional<long long> wholeNumber(std::string const& key)
{
  long long value = 0;
  auto const [end, error] = std::from_chars(key.data(), key.data() + key.size(), value);
  if (error != std::errc() || end != key.data() + key.size()) return std::nullopt;
  return value;
}

/// The runs that a gate lists. Any number of keys and spans costs no more than their number.
class ListedRuns
{
public:
  explicit ListedRuns(Scan const& scan) : marks(scan.runs.size(), false)
  {
    for (std::size_t run = 0; run < scan.runs.size(); ++run) {
      positions.emplace(scan.runs[run].key, run);
      if (auto const number = wholeNumber(scan.runs[run].key)) numbered.emplace_back(*number, run);
    }
    std::sort(numbered.begin(), numbered.end());
    openings.resize(numbered.size() + 1, 0);
  }

  void add(std::string const& key)
  {
    auto const found = positions.find(key);
    if (found == positions.end()) throw GateError("the scan has no run " + quoted(key));
    marks[found->second] = true;
  }

  void add(RunNumbers const& numbers)
  {
    std::string const text = std::to_string(numbers.first) + '-' + std::to_string(numbers.last);
    if (numbers.first > numbers.last)
      throw GateError("the runs " + text + " are none: write the smaller number first");
    auto const first =
        std::lower_bound(numbered.begin(), numbered.end(), std::pair(numbers.first, std::size_t(0)));
    auto const end =
        std::upper_bound(numbered.begin(), numbered.end(), std::pair(numbers.last, ~std::size_t(0)));
    if (first == end)
      throw GateError("the scan has no run with a number in " + text +
                      "; a key that holds \"-\" is written in double quotes");
    ++openings[static_cast<std::size_t>(first - numbered.begin())];
    --openings[static_cast<std::size_t>(end - numbered.begin())];
  }

  /// Ascending.
  std::vector<std::size_t> all()
  {
    long long open = 0;
    for (std::size_t i = 0; i < numbered.size(); ++i) {
      open += openings[i];
      if (open > 0) marks[numbered[i].second] = true;
    }
    std::vector<std::size_t> runs;
    for (std::size_t run = 0; run < marks.size(); ++run)
      if (marks[run]) runs.push_back(run);
    return runs;
  }

private:
  std::vector<bool> marks;
  std::unordered_map<std::string_view, std::size_t> positions;
  std::vector<std::pair<long long, std::size_t>> numbered; ///< number and position, ascending
  std::vector<long long> openings; ///< spans that begin at each of them, less those that have ended there
};

void resolveRuns(ResolvedGate& resolved, Scan const& scan)
{
  resolved.target = GateTarget::Run;
  if (resolved.gate.runs.empty()) throw GateError("the gate on runs lists none");
  ListedRuns listed(scan);
  for (RunKey const& key : resolved.gate.runs)
    std::visit([&](auto const& wanted) { listed.add(wanted); }, key);
  resolved.runs = listed.all();
}

void resolveStatus(ResolvedGate& resolved)
{
  resolved.target = GateTarget::Run;
  if (resolved.gate.statuses.empty()) throw GateError("the gate on the status of runs lists none");
}

void resolveCluster(ResolvedGate& resolved, Scan const& scan)
{
  auto const [number, count] = std::pair(resolved.gate.cluster, resolved.gate.clusters);
  if (count < 1 || count > Gate::mostClusters)
    throw GateError("there may be 1 to " + std::to_string(Gate::mostClusters) + " clusters, not " +
                    std::to_string(count));
  if (number < 0 || number >= count)
    throw GateError("of " + std::to_string(count) + " clusters, which are counted from 0, there is no " +
                    std::to_string(number));
  findOutputColumn(resolved, scan);
}

} // namespace

std::string ResolvedGate::text() const
{
  return formatGate(gate);
}

ResolvedGate resolveGate(Gate const& gate, Scan const& scan)
{
  ResolvedGate resolved;
  resolved.gate = gate;
  switch (gate.kind) {
  case GateKind::Is:
    resolveIs(resolved, scan);
    break;
  case GateKind::Status:
    resolveStatus(resolved);
    break;
  case GateKind::Runs:
    resolveRuns(resolved, scan);
    break;
  case GateKind::Cluster:
    resolveCluster(resolved, scan);
    break;
  default:
    resolveRange(resolved, scan);
  }
  return resolved;
}

} // namespace runsieve
