#include "BenchScan.h"

#include <vtkIdTypeArray.h>
#include <vtkNew.h>
#include <vtkSelectionNode.h>

#include <boost/make_shared.hpp>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <map>
#include <random>
#include <stdexcept>

namespace runsieve::bench {

namespace {

constexpr int species = 4;
constexpr int parameters = 20;
constexpr int times = 101;

int runsOf(std::string const& name)
{
  if (name == "W1") return 1000;
  if (name == "W2") return 10000;
  return 100000;
}

/// The values of a one- or two-dimensional NumPy file of format version 1, in the order of the file.
template <class T> std::vector<T> readNpy(std::string const& path, std::size_t count)
{
  std::ifstream file(path, std::ios::binary);
  unsigned char head[10];
  file.read(reinterpret_cast<char*>(head), sizeof head);
  if (!file) throw std::runtime_error("cannot read " + path);
  file.seekg(0, std::ios::end);
  const auto bytes = static_cast<std::size_t>(file.tellg()) - 10 - head[8] - 256u * head[9];
  file.seekg(10 + head[8] + 256 * head[9]);
  std::vector<T> values(count > 0 ? count : bytes / sizeof(T));
  file.read(reinterpret_cast<char*>(values.data()), static_cast<std::streamsize>(values.size() * sizeof(T)));
  if (!file) throw std::runtime_error("too short: " + path);
  return values;
}

void nameColumns(LinePlotTable& table, std::vector<double*>& columns)
{
  for (int s = 0; s < species; ++s)
    columns.push_back(table.addColumn(Kestrane::Molecule, std::string(1, static_cast<char>('A' + s))));
  columns.push_back(table.addColumn(Kestrane::Unnamed, "Time [s]"));
  columns.push_back(table.addColumn(Kestrane::Unnamed, "Run Index"));
  for (int p = 0; p < parameters; ++p)
    columns.push_back(table.addColumn(Kestrane::Parameter, "k" + std::to_string(p + 1)));
}

void makeUp(std::vector<double*> const& columns, int runs)
{
  std::mt19937_64 random(20240229);
  for (int r = 0; r < runs; ++r) {
    double k[parameters];
    for (double& value : k)
      value = std::exp((static_cast<double>(random() >> 11) / 9007199254740992.0 - 0.5) * 2.2);
    for (int t = 0; t < times; ++t) {
      const std::size_t row = static_cast<std::size_t>(r) * times + static_cast<std::size_t>(t);
      for (int s = 0; s < species; ++s)
        columns[s][row] =
            100.0 * k[0] * (1.0 - std::exp(-0.03 * k[1] * t)) * std::exp(-0.01 * k[2] * t) * (s + 1);
      columns[species][row] = 30.0 * t;
      columns[species + 1][row] = r;
      for (int p = 0; p < parameters; ++p) columns[species + 2 + p][row] = k[p];
    }
  }
}

void selectFrom(BenchScan& scan, int runs)
{
  double const* y = scan.table->columnData[species - 1];
  constexpr int first = 40;
  constexpr int last = 50;
  std::vector<double> middle;
  std::vector<double> peaks;
  for (int r = 0; r < runs; ++r) {
    middle.push_back(y[r * times + (first + last) / 2]);
    peaks.push_back(*std::max_element(y + r * times, y + (r + 1) * times));
  }
  std::sort(middle.begin(), middle.end());
  std::sort(peaks.begin(), peaks.end());
  const double low = middle[middle.size() / 4];
  const double high = middle[middle.size() * 3 / 4];
  const double threshold = peaks[peaks.size() / 2];
  for (long long row = 0; row < static_cast<long long>(runs) * times; ++row) {
    const auto t = row % times;
    if (t >= first && t <= last && y[row] >= low && y[row] <= high) scan.brush.push_back(row);
    if (y[row] <= threshold) scan.wide.push_back(row);
  }
}

BenchScan make(std::string const& name)
{
  const int runs = runsOf(name);
  BenchScan scan;
  scan.table = boost::make_shared<LinePlotTable>();
  scan.table->trajectoryCount = static_cast<std::uint64_t>(runs);
  scan.table->trajectoryLength = times;
  std::vector<double*> columns;
  nameColumns(*scan.table, columns);
  if (const char* folder = std::getenv("RUNSIEVE_SCANS")) {
    const std::string prefix = std::string(folder) + "/" + name;
    const std::size_t rows = scan.table->rows();
    const std::vector<double> all = readNpy<double>(prefix + ".npy", rows * columns.size());
    for (std::size_t c = 0; c < columns.size(); ++c) std::copy_n(all.data() + c * rows, rows, columns[c]);
    const std::vector<std::int32_t> brush = readNpy<std::int32_t>(prefix + "_sel_brush.npy", 0);
    const std::vector<std::int32_t> wide = readNpy<std::int32_t>(prefix + "_sel_wide.npy", 0);
    scan.brush.assign(brush.begin(), brush.end());
    scan.wide.assign(wide.begin(), wide.end());
  } else {
    makeUp(columns, runs);
    selectFrom(scan, runs);
  }
  for (int p = 0; p < parameters; ++p) {
    double const* values = columns[static_cast<std::size_t>(species + 2 + p)];
    auto [low, high] = std::minmax_element(values, values + scan.table->rows());
    scan.table->parameterBounds.emplace_back(*low, *high);
  }
  return scan;
}

} // namespace

BenchScan const& benchScan(std::string const& name)
{
  // One at a time: the largest takes 2 GB.
  static std::map<std::string, BenchScan> scans;
  auto found = scans.find(name);
  if (found != scans.end()) return found->second;
  scans.clear();
  return scans.emplace(name, make(name)).first->second;
}

vtkSmartPointer<vtkSelection> rowSelection(std::vector<long long> const& rows)
{
  vtkNew<vtkIdTypeArray> ids;
  ids->SetNumberOfTuples(static_cast<vtkIdType>(rows.size()));
  std::copy(rows.begin(), rows.end(), ids->GetPointer(0));
  vtkNew<vtkSelectionNode> node;
  node->SetFieldType(vtkSelectionNode::POINT);
  node->SetContentType(vtkSelectionNode::INDICES);
  node->SetSelectionList(ids);
  auto selection = vtkSmartPointer<vtkSelection>::New();
  selection->AddNode(node);
  return selection;
}

} // namespace runsieve::bench
