#include <runsieve/adapters/ScanTable.h>

#include <boost/make_shared.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
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

std::string timeName(ColumnLabel const& time)
{
  return time.unit.empty() ? time.name : time.name + " [" + time.unit + ']';
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
    table->borrowColumn(typeOf(output.label.type), output.label.name, output.values);

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

} // namespace runsieve
