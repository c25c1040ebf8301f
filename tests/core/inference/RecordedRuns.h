#pragma once

#include "UniformDraws.h"

#include <cstddef>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace runsieve::test {

struct Truth
{
  std::string group; ///< passing, others or all
  std::size_t first;
  std::size_t second;
  double r;
};

/// Runs with values of four parameters, and what R found.
struct RecordedRuns
{
  std::vector<unsigned char> passing;
  std::vector<Column> columns = std::vector<Column>(4);
  std::vector<Truth> correlations;
  Column distances; ///< of passing runs and others, per parameter
};

inline RecordedRuns recordedRuns()
{
  RecordedRuns recorded;
  std::ifstream file(RUNSIEVE_SOURCE_DIR "/tests/core/inference/data/recorded_runs.csv");
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line[0] == '#') continue;
    std::vector<std::string> fields;
    std::istringstream split(line);
    for (std::string field; std::getline(split, field, ',');) fields.push_back(field);
    if (fields[0] == "run") {
      recorded.passing.push_back(fields[1] == "1" ? 1 : 0);
      for (std::size_t p = 0; p < 4; ++p) recorded.columns[p].push_back(std::stod(fields[2 + p]));
    } else if (fields[0] == "distance") {
      recorded.distances.push_back(std::stod(fields[3]));
    } else {
      recorded.correlations.push_back(
          {fields[0], std::stoul(fields[1]), std::stoul(fields[2]), std::stod(fields[3])});
    }
  }
  return recorded;
}

} // namespace runsieve::test
