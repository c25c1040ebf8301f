#include "BenchColumns.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <random>
#include <stdexcept>

namespace runsieve::bench {

namespace {

constexpr int species = BenchColumns::species;
constexpr int parameters = BenchColumns::parameters;
constexpr int times = BenchColumns::times;
constexpr int timeColumn = BenchColumns::timeColumn;
constexpr int runColumn = BenchColumns::runColumn;
constexpr int firstParameter = BenchColumns::firstParameter;

/// A NumPy file of format version 1, at its first value.
class NpyFile
{
public:
  explicit NpyFile(std::string const& path) : path(path), file(path, std::ios::binary)
  {
    unsigned char head[10] = {};
    file.read(reinterpret_cast<char*>(head), sizeof head);
    if (!file) throw std::runtime_error("cannot read " + path);
    const std::streamoff first = 10 + head[8] + 256 * head[9];
    file.seekg(0, std::ios::end);
    bytes = static_cast<std::size_t>(file.tellg() - first);
    file.seekg(first);
  }

  template <class T> void read(T* values, std::size_t count)
  {
    file.read(reinterpret_cast<char*>(values), static_cast<std::streamsize>(count * sizeof(T)));
    if (!file) throw std::runtime_error("too short: " + path);
  }

  template <class T> [[nodiscard]] std::size_t sizeAs() const { return bytes / sizeof(T); }

private:
  std::string path;
  std::ifstream file;
  std::size_t bytes = 0;
};

std::vector<long long> readRows(std::string const& path)
{
  NpyFile file(path);
  std::vector<std::int32_t> rows(file.sizeAs<std::int32_t>());
  file.read(rows.data(), rows.size());
  return {rows.begin(), rows.end()};
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
      columns[timeColumn][row] = 30.0 * t;
      columns[runColumn][row] = r;
      for (int p = 0; p < parameters; ++p) columns[firstParameter + p][row] = k[p];
    }
  }
}

void selectFrom(BenchColumns& scan, double const* y, int runs)
{
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

} // namespace

int runsOf(std::string const& name)
{
  if (name == "W1") return 1000;
  if (name == "W2") return 10000;
  return 100000;
}

BenchColumns fillColumns(std::string const& name, std::vector<double*> const& columns)
{
  const int runs = runsOf(name);
  const std::size_t rows = static_cast<std::size_t>(runs) * times;
  BenchColumns filled;
  if (const char* folder = std::getenv("RUNSIEVE_SCANS")) {
    const std::string prefix = std::string(folder) + "/" + name;
    NpyFile file(prefix + ".npy");
    for (double* const column : columns) file.read(column, rows);
    filled.brush = readRows(prefix + "_sel_brush.npy");
    filled.wide = readRows(prefix + "_sel_wide.npy");
  } else {
    makeUp(columns, runs);
    selectFrom(filled, columns[species - 1], runs);
  }
  return filled;
}

} // namespace runsieve::bench
