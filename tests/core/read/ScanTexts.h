#pragma once

#include "support/TempFile.h"

#include <runsieve/core/read/ReadScan.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace runsieve::test {

inline ScanFile readString(std::string const& content, ReadOptions const& options = {},
                           std::string const& name = "scan.csv")
{
  TempFolder folder;
  return readScan(folder.write(content, name), options);
}

/// Writes a file and the folders that lead to it; returns its path.
inline std::string writeTo(TempFolder const& folder, std::string const& path, std::string const& content)
{
  std::filesystem::create_directories(std::filesystem::path(folder.file(path)).parent_path());
  return folder.write(content, path);
}

/// The scan that is read from a folder.
inline ScanFile readAll(TempFolder const& folder, ReadOptions const& options = {})
{
  std::string path = folder.file("");
  path.pop_back(); // '/'
  return readScan(path, options);
}

/// A scan of four runs, five uneven times, two outputs and one parameter, to be written in many ways.
struct SmallScan
{
  static constexpr int runs = 4;
  std::vector<double> times = {0, 0.5, 1, 2, 4};

  [[nodiscard]] double k(int run) const { return 0.5 + 0.25 * run; }
  [[nodiscard]] double a(int run, double time) const { return 100 - 8 * k(run) * time; }
  [[nodiscard]] double b(int run, double time) const { return 0.125 * run + k(run) * time * time; }

  /// A line for each run and time, runs one below the other. \param line makes it, without its end
  [[nodiscard]] std::string rows(std::function<std::string(int run, double time)> const& line,
                                 std::string const& betweenRuns = "") const
  {
    std::string text;
    for (int run = 0; run < runs; ++run) {
      if (run > 0) text += betweenRuns;
      for (double const time : times) text += line(run, time) + '\n';
    }
    return text;
  }

  /// The file of one run; the parameter is constant in it. \param withK whether it has the parameter
  [[nodiscard]] std::string fileOf(int run, bool withK = true) const;
};

/// A number as it is written here: few digits, all exact.
inline std::string plain(double value)
{
  std::string text = std::to_string(value);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

inline std::string joined(std::vector<double> const& values, std::string const& delimiter)
{
  std::string text;
  for (std::size_t i = 0; i < values.size(); ++i) text += (i > 0 ? delimiter : "") + plain(values[i]);
  return text;
}

inline std::string SmallScan::fileOf(int run, bool withK) const
{
  std::string text = withK ? "time,A,B,k\n" : "time,A,B\n";
  for (double const time : times) {
    std::vector<double> row = {time, a(run, time), b(run, time)};
    if (withK) row.push_back(k(run));
    text += joined(row, ",") + '\n';
  }
  return text;
}

/// Whether a report tells something that holds the words.
inline bool tells(ReadReport const& report, std::string const& words)
{
  return std::any_of(report.findings.begin(), report.findings.end(), [&](Finding const& finding) {
    return (finding.what + "; " + finding.why).find(words) != std::string::npos;
  });
}

inline std::string roleOf(ReadReport const& report, std::string const& header)
{
  for (ColumnFinding const& column : report.columns)
    if (column.header == header) return column.role;
  return "not there";
}

inline std::vector<std::string> keysOf(Scan const& scan)
{
  std::vector<std::string> keys;
  for (ScanRun const& run : scan.runs) keys.push_back(run.key);
  return keys;
}

inline std::vector<double> valuesOf(Scan const& scan, std::string const& output, std::size_t run)
{
  double const* const values = scan.valuesOf(scan.findOutput(output).value(), run);
  return {values, values + scan.times.size()};
}

inline ScanParameter const& parameterOf(Scan const& scan, std::string const& name)
{
  return scan.parameters[scan.findParameter(name).value()];
}

} // namespace runsieve::test
