#include <runsieve/core/scan/Scan.h>

#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <unordered_set>
#include <utility>

namespace runsieve {

namespace {

template <class Column>
std::optional<std::size_t> find(std::vector<Column> const& columns, std::string const& name, char const* what)
{
  std::optional<std::size_t> bare;
  std::string others;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].label.fullName() == name) return i;
    if (columns[i].label.name != name) continue;
    if (bare) others += ", " + quoted(columns[i].label.fullName());
    if (!bare) bare = i;
  }
  if (others.empty()) return bare;
  throw std::invalid_argument(std::string("the ") + what + ' ' + quoted(name) + " could be " +
                              quoted(columns[*bare].label.fullName()) + others + "; give the full name");
}

bool rises(std::vector<double> const& times)
{
  double last = -std::numeric_limits<double>::infinity();
  for (double const time : times) {
    if (!std::isfinite(time) || !(time > last)) return false;
    last = time;
  }
  return !times.empty();
}

void require(bool holds, char const* rule)
{
  if (!holds) throw std::invalid_argument(rule);
}

} // namespace

std::string ColumnLabel::fullName() const
{
  return type.empty() ? name : type + ": " + name;
}

char const* statusName(RunStatus status)
{
  switch (status) {
  case RunStatus::Complete:
    return "complete";
  case RunStatus::Short:
    return "short";
  case RunStatus::Failed:
    return "failed";
  }
  return "";
}

double* Scan::addOutput(ColumnLabel label)
{
  outputs.push_back({std::move(label), std::shared_ptr<double[]>(new double[rows()])});
  return outputs.back().values.get();
}

std::optional<std::size_t> Scan::findOutput(std::string const& name) const
{
  return find(outputs, name, "output");
}

std::optional<std::size_t> Scan::findParameter(std::string const& name) const
{
  return find(parameters, name, "parameter");
}

std::optional<std::size_t> Scan::findRun(std::string const& key) const
{
  auto const found =
      std::find_if(runs.begin(), runs.end(), [&](ScanRun const& run) { return run.key == key; });
  if (found == runs.end()) return std::nullopt;
  return static_cast<std::size_t>(found - runs.begin());
}

void Scan::findStatus()
{
  for (std::size_t run = 0; run < runs.size(); ++run) {
    std::size_t end = 0;
    for (std::size_t i = 0; i < outputs.size(); ++i) {
      double const* const values = valuesOf(i, run);
      for (std::size_t t = times.size(); t > end; --t)
        if (!std::isnan(values[t - 1])) end = t;
    }
    bool finite = true;
    for (std::size_t i = 0; i < outputs.size() && finite; ++i) {
      double const* const values = valuesOf(i, run);
      finite = std::all_of(values, values + end, [](double value) { return std::isfinite(value); });
    }
    ScanRun& what = runs[run];
    what.end = end;
    if (what.status == RunStatus::Failed) continue;
    what.status = !finite || end == 0 ? RunStatus::Failed
                                      : (end < times.size() ? RunStatus::Short : RunStatus::Complete);
  }
}

void Scan::check() const
{
  require(rises(times), "the times of a scan are finite and rise strictly, and there is one at least");
  require(!runs.empty(), "a scan has one run at least");
  require(!outputs.empty(), "a scan has one output at least");
  std::unordered_set<std::string> keys;
  for (ScanRun const& run : runs) {
    require(keys.insert(run.key).second, "the keys of runs are different");
    require(run.end <= times.size(), "no run has more times than the scan");
  }
  std::unordered_set<std::string> names;
  for (ScanOutput const& output : outputs) {
    require(names.insert(output.label.fullName()).second, "the names of outputs are different");
    require(output.values != nullptr, "each output has values");
  }
  names.clear();
  for (ScanParameter const& parameter : parameters) {
    require(names.insert(parameter.label.fullName()).second, "the names of parameters are different");
    require(parameter.values.size() == runs.size(), "each parameter has one value per run");
    for (double const value : parameter.values)
      require(!parameter.isText() || std::isnan(value) ||
                  (value >= 0 && value < static_cast<double>(parameter.texts.size()) &&
                   value == std::floor(value)),
              "a text parameter's values are numbers of its texts, or NaN");
  }
}

} // namespace runsieve
