#pragma once

#include <runsieve/core/scan/Scan.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace runsieve {

/// Something that a reader took the file to say, dropped, put in order or computed.
struct Finding
{
  std::string what;   ///< "runs are split where time restarts"
  std::string why;    ///< "no column counts them"; empty if it needs no reason
  bool guess = false; ///< whether a file of that look could mean something else
};

/// What a column or an array of a file was taken for.
struct ColumnFinding
{
  std::string header; ///< its name in the file
  std::string role;   ///< "time", "run", "output", "parameter", "status" or "ignored"
  std::string why;    ///< "constant within every run"
};

/// What a reader found, in words for people.
struct ReadReport
{
  std::string format; ///< "tab separated text, runs stacked"
  std::vector<ColumnFinding> columns;
  std::vector<Finding> findings;
};

/// A scan and how it was read.
struct ScanFile
{
  Scan scan;
  ReadReport report;
};

/// The progress callback asked to stop.
class ReadCancelled : public std::runtime_error
{
public:
  ReadCancelled() : std::runtime_error("reading was stopped") {}
};

} // namespace runsieve
