#include <runsieve/adapters/ScanTable.h>

#include <boost/make_shared.hpp>

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace runsieve {

namespace {

Kestrane::DataType typeOf(std::string const& name)
{
  constexpr std::array<std::pair<std::string_view, Kestrane::DataType>, 4> types = {
      {{"Complex", Kestrane::Complex},
       {"Complex With Molecule", Kestrane::ComplexWithMolecule},
       {"Pattern", Kestrane::Pattern},
       {"Undefined Type", Kestrane::UndefinedType}}};
  for (auto const& [known, type] : types)
    if (known == name) return type;
  return Kestrane::Molecule;
}

constexpr std::string_view joiner = "\xE2\x81\xA0"; ///< U+2060, drawn as nothing

// After the first letter of each word that plots look for.
std::string nameInPlots(std::string name)
{
  for (std::string_view const word : {"Time", "Value", "Period", "Index"})
    for (std::size_t at = name.find(word); at != std::string::npos; at = name.find(word, at + 1))
      name.insert(at + 1, joiner);
  return name;
}

// Plots know the time by that word.
std::string timeName(ColumnLabel const& time)
{
  std::string lower(time.name);
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  std::string const plain = lower == "time" ? "Time" : time.name;
  std::string const name = time.unit.empty() ? plain : plain + " [" + time.unit + ']';
  return name.find("Time") != std::string::npos ? name : "Time (" + name + ')';
}

ColumnLabel timeLabel(std::string const& name)
{
  std::size_t const bracket = name.rfind(" [");
  if (bracket == std::string::npos || name.back() != ']') return {name, "", "", ""};
  return {name.substr(0, bracket), name.substr(bracket + 2, name.size() - bracket - 3), "", ""};
}

std::string typeName(Kestrane::DataType type)
{
  switch (type) {
  case Kestrane::Complex:
    return "Complex";
  case Kestrane::ComplexWithMolecule:
    return "Complex With Molecule";
  case Kestrane::Pattern:
    return "Pattern";
  case Kestrane::UndefinedType:
    return "Undefined Type";
  default:
    return "Molecule";
  }
}

/// The keys as whole numbers, if they are and rise; else positions.
std::vector<int> runNumbers(Scan const& scan)
{
  std::vector<int> numbers;
  for (ScanRun const& run : scan.runs) {
    int number = 0;
    char const* const end = run.key.data() + run.key.size();
    auto const [last, error] = std::from_chars(run.key.data(), end, number);
    bool const rises = numbers.empty() || number > numbers.back();
    if (error != std::errc() || last != end || !rises) break;
    numbers.push_back(number);
  }
  if (numbers.size() == scan.runs.size()) return numbers;
  numbers.resize(scan.runs.size());
  for (std::size_t i = 0; i < numbers.size(); ++i) numbers[i] = static_cast<int>(i);
  return numbers;
}

/// Smallest and largest number; NaN twice if there is none.
std::pair<double, double> boundsOf(std::vector<double> const& values)
{
  double low = std::numeric_limits<double>::quiet_NaN();
  double high = low;
  for (double const value : values) {
    low = std::fmin(low, value);
    high = std::fmax(high, value);
  }
  return {low, high};
}

void fillRuns(double* column, std::size_t times, std::size_t runs, double const* values)
{
  for (std::size_t run = 0; run < runs; ++run) std::fill_n(column + run * times, times, values[run]);
}

} // namespace

boost::shared_ptr<LinePlotTable> linePlotTableOf(Scan const& scan)
{
  auto table = boost::make_shared<LinePlotTable>();
  std::size_t const runs = scan.runs.size();
  std::size_t const times = scan.times.size();
  table->trajectoryCount = runs;
  table->trajectoryLength = times;
  for (ScanOutput const& output : scan.outputs)
    table->borrowColumn(typeOf(output.label.type), nameInPlots(output.label.name), output.values);

  double* const time = table->addColumn(Kestrane::Unnamed, timeName(scan.time));
  for (std::size_t run = 0; run < runs; ++run) std::copy_n(scan.times.data(), times, time + run * times);
  std::vector<int> const numbers = runNumbers(scan);
  std::vector<double> const index(numbers.begin(), numbers.end());
  fillRuns(table->addColumn(Kestrane::Unnamed, "Run Index"), times, runs, index.data());
  for (ScanParameter const& parameter : scan.parameters) {
    fillRuns(table->addColumn(Kestrane::Parameter, parameter.label.name), times, runs,
             parameter.values.data());
    table->parameterBounds.push_back(boundsOf(parameter.values));
  }
  return table;
}

std::string nameInScan(std::string name)
{
  for (std::size_t at = name.find(joiner); at != std::string::npos; at = name.find(joiner, at))
    name.erase(at, joiner.size());
  return name;
}

namespace {

/// The columns of time and runs in a record.
struct Axes
{
  double const* time = nullptr;
  double const* run = nullptr;
  std::string timeName;
};

Axes axesOf(LinePlotTable const& table)
{
  Axes axes;
  for (std::size_t i = 0; i < table.columnNames.size(); ++i) {
    auto const& [type, name] = table.columnNames[i];
    if (type != Kestrane::Unnamed) continue;
    if (name == "Run Index")
      axes.run = table.columnData[i];
    else if (axes.time == nullptr || name == "Time [s]") {
      axes.time = table.columnData[i];
      axes.timeName = name;
    }
  }
  if (axes.time == nullptr) throw std::invalid_argument("the scan has no time column");
  if (axes.run == nullptr) throw std::invalid_argument("the scan has no run column");
  return axes;
}

void addRuns(Scan& scan, LinePlotTable const& table, Axes const& axes)
{
  std::size_t const times = table.trajectoryLength;
  scan.times.assign(axes.time, axes.time + times);
  for (std::size_t run = 0; run < table.trajectoryCount; ++run) {
    if (!std::equal(scan.times.begin(), scan.times.end(), axes.time + run * times))
      throw std::invalid_argument("the runs have different times");
    std::ostringstream key;
    key.precision(17);
    key << axes.run[run * times];
    scan.runs.push_back({key.str(), RunStatus::Complete, times});
  }
}

} // namespace

Scan scanOf(boost::shared_ptr<LinePlotTable> const& table)
{
  Axes const axes = axesOf(*table);
  Scan scan;
  scan.time = timeLabel(axes.timeName);
  addRuns(scan, *table, axes);
  for (std::size_t i = 0; i < table->columnNames.size(); ++i) {
    auto const& [type, name] = table->columnNames[i];
    double* const column = table->columnData[i];
    if (type == Kestrane::Parameter) {
      scan.parameters.push_back({{name, "", "", ""}, {}, {}});
      for (std::size_t run = 0; run < table->trajectoryCount; ++run)
        scan.parameters.back().values.push_back(column[run * table->trajectoryLength]);
    } else if (type != Kestrane::Unnamed) {
      std::shared_ptr<double[]> const values(column, [keep = table](double*) {});
      scan.outputs.push_back({{nameInScan(name), "", "", typeName(type)}, values});
    }
  }
  scan.findStatus();
  return scan;
}

} // namespace runsieve
