#pragma once

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace runsieve::test {

/// The fields of a file in tests/core/inference/data, less its comment and its header.
inline std::vector<std::vector<std::string>> csvRows(std::string const& name)
{
  std::ifstream file(std::string(RUNSIEVE_SOURCE_DIR) + "/tests/core/inference/data/" + name);
  std::vector<std::vector<std::string>> rows;
  int skipped = 0;
  for (std::string line; std::getline(file, line);) {
    if (skipped++ < 2) continue;
    rows.emplace_back();
    std::istringstream fields(line);
    for (std::string field; std::getline(fields, field, ',');) rows.back().push_back(field);
  }
  if (rows.empty()) throw std::runtime_error(name + " cannot be read");
  return rows;
}

} // namespace runsieve::test
