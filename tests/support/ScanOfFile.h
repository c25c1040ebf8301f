#pragma once

#include <runsieve/core/read/ReadReport.h>
#include <runsieve/core/scan/Scan.h>
#include <runsieve/core/scan/ScanError.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace runsieve::test {

/// What is wrong with a file, if something is.
template <class Read> std::string scanFault(Read read)
{
  try {
    read();
  } catch (ScanError const& error) {
    return error.what();
  }
  return "";
}

template <class Columns> std::vector<std::string> namesOf(Columns const& columns)
{
  std::vector<std::string> names;
  for (auto const& column : columns) names.push_back(column.label.fullName());
  return names;
}

inline std::vector<std::string> outputsOf(Scan const& scan)
{
  return namesOf(scan.outputs);
}

inline std::vector<std::string> parametersOf(Scan const& scan)
{
  return namesOf(scan.parameters);
}

inline std::vector<std::string> keysOf(Scan const& scan)
{
  std::vector<std::string> keys;
  for (ScanRun const& run : scan.runs) keys.push_back(run.key);
  return keys;
}

/// The time course of an output in a run, by its position.
inline std::vector<double> valuesOf(Scan const& scan, std::string const& output, std::size_t run)
{
  const double* const values = scan.valuesOf(scan.findOutput(output).value(), run);
  return {values, values + scan.times.size()};
}

/// "values: output" for each column or array.
inline std::vector<std::string> rolesOf(ReadReport const& report)
{
  std::vector<std::string> roles;
  for (ColumnFinding const& column : report.columns) roles.push_back(column.header + ": " + column.role);
  return roles;
}

inline std::vector<std::string> findingsOf(ReadReport const& report)
{
  std::vector<std::string> findings;
  for (Finding const& finding : report.findings) findings.push_back(finding.what);
  return findings;
}

inline std::vector<std::string> guessesOf(ReadReport const& report)
{
  std::vector<std::string> guesses;
  for (Finding const& finding : report.findings)
    if (finding.guess) guesses.push_back(finding.what);
  return guesses;
}

/// Reads bytes that are cut at each place, or with each byte changed: there is a ScanError or a scan that
/// holds.
/// \param changes what is done to the bits of a byte
template <class Read>
void expectFaultOrScan(std::string const& whole, Read read,
                       std::vector<int> const& changes = {0x01, 0x80, 0xFF})
{
  std::size_t scans = 0;
  std::size_t faults = 0;
  const auto expectEither = [&](std::string const& bytes) {
    try {
      read(bytes).scan.check();
      ++scans;
    } catch (ScanError const&) {
      ++faults;
    }
  };
  for (std::size_t length = 0; length < whole.size(); ++length) expectEither(whole.substr(0, length));
  EXPECT_GT(faults, 0u);
  for (std::size_t i = 0; i < whole.size(); ++i)
    for (int change : changes) {
      std::string damaged = whole;
      damaged[i] = static_cast<char>(damaged[i] ^ change);
      expectEither(damaged);
    }
  EXPECT_EQ(scans + faults, (1 + changes.size()) * whole.size());
  EXPECT_NO_THROW(read(whole).scan.check());
}

} // namespace runsieve::test
