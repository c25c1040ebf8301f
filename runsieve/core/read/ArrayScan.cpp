#include <runsieve/core/read/ArrayScan.h>

#include <runsieve/core/read/ArrayRoles.h>
#include <runsieve/core/read/Fields.h>
#include <runsieve/core/read/Rounding.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/Decimal.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>
#include <stdexcept>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace runsieve {

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// Numbers that are read at a time.
constexpr std::size_t atOnce = std::size_t(1) << 20;

bool contains(std::vector<std::string> const& names, ColumnLabel const& label)
{
  return std::any_of(names.begin(), names.end(),
                     [&](std::string const& name) { return name == label.name || name == label.fullName(); });
}

template <class Column> void requireDifferentNames(std::vector<Column> const& columns, char const* what)
{
  std::unordered_set<std::string> known;
  for (Column const& column : columns)
    if (!known.insert(column.label.fullName()).second)
      throw std::invalid_argument("two " + std::string(what) + "s are named " +
                                  quoted(column.label.fullName()) + "; names must differ");
}

/// Some places along one axis, and by how much one place moves in memory.
struct Walk
{
  std::size_t first = 0;
  std::size_t end = 1;
  std::size_t stride = 0;
};

/// Reads an array of two or three axes in pieces and puts its values in their place.
class ValuesIntoOutputs
{
public:
  /// \param outputs where the values of each output belong, runs x times
  ValuesIntoOutputs(NamedArray const& array, ValueAxes const& axes, std::vector<double*> outputs)
      : array(array), axes(axes), outputs(std::move(outputs)), strides(array.shape.size(), 1)
  {
    for (std::size_t axis = strides.size() - 1; axis > 0; --axis)
      strides[axis - 1] = strides[axis] * array.shape[axis];
  }

  /// \param told called with the share that is done
  template <class Told> void read(Told told)
  {
    std::size_t const places = array.shape.front();
    std::size_t const grain = std::clamp<std::size_t>(array.grain, 1, places);
    std::size_t const piece =
        std::min(places, std::max<std::size_t>(grain, atOnce / strides.front() / grain * grain));
    std::vector<double> values(piece * strides.front());
    for (std::size_t first = 0; first < places; first += piece) {
      std::size_t const end = std::min(first + piece, places);
      array.numbers(first, end - first, values.data());
      place(values.data(), first, end);
      told(static_cast<double>(end) / static_cast<double>(places));
    }
  }

private:
  /// The part of an axis that lies in the places of the first axis from `first` to `end`.
  [[nodiscard]] Walk walk(std::optional<std::size_t> axis, std::size_t first, std::size_t end) const
  {
    if (!axis) return {};
    if (*axis == 0) return {first, end, strides.front()};
    return {0, array.shape[*axis], strides[*axis]};
  }

  void place(double const* values, std::size_t first, std::size_t end)
  {
    Walk const runs = walk(axes.runs, first, end);
    Walk const times = walk(axes.times, first, end);
    Walk const names = walk(axes.outputs, first, end);
    std::size_t const length = ValueAxes::length(array.shape, axes.times);
    for (std::size_t output = names.first; output < names.end; ++output)
      for (std::size_t run = runs.first; run < runs.end; ++run) {
        double const* from =
            values + (output - names.first) * names.stride + (run - runs.first) * runs.stride;
        double* const to = outputs[output] + run * length;
        for (std::size_t t = times.first; t < times.end; ++t, from += times.stride) to[t] = *from;
      }
  }

  NamedArray const& array;
  ValueAxes axes;
  std::vector<double*> outputs;
  std::vector<std::size_t> strides;
};

class ArrayScan
{
public:
  ArrayScan(std::string const& file, std::vector<NamedArray> const& arrays, ReadOptions const& options,
            ReadReport report)
      : fileName(file), arrays(arrays), options(options), result{Scan(), std::move(report)}
  {}

  ScanFile read()
  {
    roles = findRoles(fileName, arrays, options, result.report);
    setRuns();
    setTimes();
    readOutputs();
    if (!roles.time) takeTimeOutOfOutputs();
    leaveOutIgnored();
    readParameterTable();
    for (std::size_t const i : roles.parameters) readParameter(arrays[i]);
    leaveOutMissing(options, result);
    finishScan(fileName, options, result.scan);
    return std::move(result);
  }

private:
  [[noreturn]] void fail(std::string const& message) const { throw ScanError(fileName, message); }

  [[nodiscard]] std::size_t length(std::optional<std::size_t> axis) const
  {
    return ValueAxes::length(arrays[roles.values.front()].shape, axis);
  }

  void setRuns()
  {
    std::size_t const number = length(roles.axes.runs);
    if (!roles.runKeys) {
      result.scan.runs = countedRuns(number, result.report);
      return;
    }
    std::vector<std::string> keys = textsOf(arrays[*roles.runKeys]);
    std::unordered_set<std::string> different;
    for (std::string const& key : keys) {
      if (different.insert(key).second) continue;
      if (!options.run.empty()) fail("two runs have the name " + quoted(key));
      result.report.findings.push_back(
          {"the names of runs in " + quoted(arrays[*roles.runKeys].name) + " are not used",
           "two runs have the name " + quoted(key), false});
      result.scan.runs = countedRuns(number, result.report);
      return;
    }
    for (std::string& key : keys) result.scan.runs.push_back({std::move(key), RunStatus::Complete, 0});
  }

  [[nodiscard]] static std::vector<std::string> textsOf(NamedArray const& array)
  {
    if (array.kind == NamedArray::Kind::Texts) return array.texts();
    std::vector<std::string> texts;
    for (double const value : allNumbers(array)) texts.push_back(decimal(value));
    return texts;
  }

  void setTimes()
  {
    std::size_t const number = length(roles.axes.times);
    result.scan.time.name = roles.time ? nameOfTime(bareName(arrays[*roles.time].name)) : "Time";
    if (roles.time)
      result.scan.times =
          commonTimes(fileName, arrays[*roles.time].name, allNumbers(arrays[*roles.time]), number);
    else
      result.scan.times.assign(number, 0.0); // until the outputs tell
  }

  /// Names of the outputs in one array, by the place along its axis.
  [[nodiscard]] std::vector<std::string> outputNames()
  {
    std::size_t const number = length(roles.axes.outputs);
    if (!options.names.empty()) return options.names;
    if (!roles.outputNames && number == 1) return {bareName(arrays[roles.values.front()].name)};
    std::vector<std::string> names(number);
    if (roles.outputNames)
      names = arrays[*roles.outputNames].texts();
    else
      result.report.findings.push_back(
          {"the outputs are called \"output 1\", \"output 2\" ...", "no array of texts names them", true});
    for (std::size_t i = 0; i < number; ++i)
      if (names[i].empty()) names[i] = "output " + std::to_string(i + 1);
    return names;
  }

  void readOutputs()
  {
    Scan& scan = result.scan;
    if (roles.values.size() == 1) {
      std::vector<double*> to;
      for (std::string& name : outputNames()) to.push_back(scan.addOutput({std::move(name), "", "", ""}));
      readValues(roles.values.front(), std::move(to), 0);
      return;
    }
    for (std::size_t i = 0; i < roles.values.size(); ++i) {
      std::string const name =
          options.names.empty() ? bareName(arrays[roles.values[i]].name) : options.names[i];
      readValues(roles.values[i], {scan.addOutput({name, "", "", ""})}, i);
    }
  }

  /// \param before arrays of values that are read already
  void readValues(std::size_t array, std::vector<double*> to, std::size_t before)
  {
    ValuesIntoOutputs(arrays[array], roles.axes, std::move(to)).read([&](double share) {
      tellProgress(options, (static_cast<double>(before) + share) / static_cast<double>(roles.values.size()));
    });
  }

  /// The time may be one of the columns that were taken for outputs.
  void takeTimeOutOfOutputs()
  {
    Scan& scan = result.scan;
    auto const isTime = [this](ScanOutput const& output) {
      return options.time.empty() ? isTimeName(output.label.name) : output.label.name == options.time;
    };
    auto const found = std::find_if(scan.outputs.begin(), scan.outputs.end(), isTime);
    if (found == scan.outputs.end()) {
      if (!options.time.empty()) fail("there is no time " + quoted(options.time));
      scan.times = countedTimes(scan.times.size(), result.report);
      return;
    }
    std::vector<double> const times(found->values.get(), found->values.get() + scan.rows());
    scan.times = commonTimes(fileName, found->label.name, times, scan.times.size());
    scan.time.name = nameOfTime(found->label.name);
    result.report.findings.push_back({"the output " + quoted(found->label.name) + " is the time",
                                      options.time.empty() ? "by its name" : "as asked for",
                                      options.time.empty()});
    scan.outputs.erase(found);
  }

  void leaveOutIgnored()
  {
    auto& outputs = result.scan.outputs;
    outputs.erase(
        std::remove_if(outputs.begin(), outputs.end(),
                       [this](ScanOutput const& output) { return contains(options.ignore, output.label); }),
        outputs.end());
  }

  void readParameterTable()
  {
    if (!roles.parameterTable) return;
    NamedArray const& table = arrays[*roles.parameterTable];
    std::size_t const columns = table.shape.back();
    std::vector<std::string> names(columns);
    if (roles.parameterNames)
      names = arrays[*roles.parameterNames].texts();
    else
      result.report.findings.push_back({"the parameters are called \"parameter 1\", \"parameter 2\" ...",
                                        "no array of texts names them", true});
    std::vector<double> const values = allNumbers(table);
    for (std::size_t column = 0; column < columns; ++column) {
      ScanParameter parameter;
      parameter.label.name =
          names[column].empty() ? "parameter " + std::to_string(column + 1) : names[column];
      if (contains(options.ignore, parameter.label)) continue;
      for (std::size_t run = 0; run < table.shape.front(); ++run)
        parameter.values.push_back(values[run * columns + column]);
      result.scan.parameters.push_back(std::move(parameter));
    }
  }

  void readParameter(NamedArray const& array)
  {
    ScanParameter parameter;
    parameter.label.name = bareName(array.name);
    if (array.kind == NamedArray::Kind::Numbers)
      parameter.values = allNumbers(array);
    else
      setTexts(parameter, array.texts());
    result.scan.parameters.push_back(std::move(parameter));
  }

  void setTexts(ScanParameter& parameter, std::vector<std::string> const& texts) const
  {
    std::unordered_map<std::string, std::size_t> numbers;
    for (std::string const& text : texts) {
      if (text.empty() ||
          std::find(options.missing.begin(), options.missing.end(), text) != options.missing.end()) {
        parameter.values.push_back(nan);
        continue;
      }
      auto const [place, isNew] = numbers.emplace(text, numbers.size());
      if (isNew) parameter.texts.push_back(text);
      parameter.values.push_back(static_cast<double>(place->second));
    }
  }

  std::string const& fileName;
  std::vector<NamedArray> const& arrays;
  ReadOptions const& options;
  ScanFile result;
  ArrayRoles roles;
};

} // namespace

ScanFile scanOfArrays(std::string const& file, std::vector<NamedArray> const& arrays,
                      ReadOptions const& options, ReadReport report)
{
  std::vector<NamedArray> const plain = withPlainVectors(arrays);
  return ArrayScan(file, plain, options, std::move(report)).read();
}

std::vector<double> commonTimes(std::string const& file, std::string const& name,
                                std::vector<double> const& times, std::size_t length)
{
  std::size_t const runs = times.size() / length;
  auto const endOf = [&](std::size_t run) {
    std::size_t end = length;
    while (end > 0 && std::isnan(times[run * length + end - 1])) --end;
    return end;
  };
  std::size_t longest = 0;
  for (std::size_t run = 1; run < runs; ++run)
    if (endOf(run) > endOf(longest)) longest = run;
  std::vector<double> const grid(times.begin() + static_cast<std::ptrdiff_t>(longest * length),
                                 times.begin() + static_cast<std::ptrdiff_t>((longest + 1) * length));
  for (std::size_t t = 0; t < length; ++t) {
    if (!std::isfinite(grid[t]))
      throw ScanError(file, "the time " + quoted(name) + " is missing or infinite at place " +
                                std::to_string(t + 1));
    if (t > 0 && !(grid[t] > grid[t - 1]))
      throw ScanError(file, "the time " + quoted(name) + " does not rise at place " + std::to_string(t + 1) +
                                ", from " + decimal(grid[t - 1]) + " to " + decimal(grid[t]));
  }
  for (std::size_t run = 0; run < runs; ++run)
    for (std::size_t t = 0; t < endOf(run); ++t)
      if (!equalButForRounding(times[run * length + t], grid[t]))
        throw ScanError(file, "the runs have different times: run " + std::to_string(run + 1) + " is at " +
                                  decimal(times[run * length + t]) + " where run " +
                                  std::to_string(longest + 1) + " is at " + decimal(grid[t]) +
                                  "; save all runs on one time grid, or as a table with a line per time");
  return grid;
}

std::vector<double> countedTimes(std::size_t length, ReadReport& report)
{
  report.findings.push_back({"the times are 0, 1, 2 ...", "nothing in the file tells them", true});
  std::vector<double> times(length);
  std::iota(times.begin(), times.end(), 0.0);
  return times;
}

std::vector<ScanRun> countedRuns(std::size_t number, ReadReport& report)
{
  report.findings.push_back({"the runs are numbered from 1", "nothing in the file names them", false});
  std::vector<ScanRun> runs(number);
  for (std::size_t run = 0; run < number; ++run) runs[run].key = std::to_string(run + 1);
  return runs;
}

void leaveOutMissing(ReadOptions const& options, ScanFile& file)
{
  std::vector<double> const none = missingNumbers(options.missing, '.');
  if (none.empty()) return;
  std::size_t left = 0;
  auto const leaveOut = [&](double& value) {
    if (std::find(none.begin(), none.end(), value) == none.end()) return;
    value = nan;
    ++left;
  };
  for (ScanOutput const& output : file.scan.outputs)
    std::for_each(output.values.get(), output.values.get() + file.scan.rows(), leaveOut);
  for (ScanParameter& parameter : file.scan.parameters)
    if (!parameter.isText()) std::for_each(parameter.values.begin(), parameter.values.end(), leaveOut);
  if (left > 0)
    file.report.findings.push_back(
        {std::to_string(left) + (left == 1 ? " value is missing" : " values are missing"),
         "an option says that these numbers mean no value", false});
}

void tellProgress(ReadOptions const& options, double share)
{
  if (options.progress && !options.progress(share)) throw ReadCancelled();
}

void finishScan(std::string const& file, ReadOptions const& options, Scan& scan)
{
  try {
    for (std::string const& name : options.outputs)
      if (!scan.findOutput(name)) throw std::invalid_argument("there is no output " + quoted(name));
    if (options.parameters) {
      for (std::string const& name : *options.parameters)
        if (!scan.findParameter(name)) throw std::invalid_argument("there is no parameter " + quoted(name));
      auto& all = scan.parameters;
      all.erase(std::remove_if(all.begin(), all.end(),
                               [&](ScanParameter const& parameter) {
                                 return !contains(*options.parameters, parameter.label);
                               }),
                all.end());
    }
    requireDifferentNames(scan.outputs, "output");
    requireDifferentNames(scan.parameters, "parameter");
    scan.findStatus();
    scan.check();
  } catch (std::invalid_argument const& error) {
    throw ScanError(file, error.what());
  }
}

} // namespace runsieve
