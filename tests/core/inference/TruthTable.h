#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace runsieve::test {

/// Numbers found by other programs: a file of data/ with a comment, names of columns, and rows of numbers.
class TruthTable
{
public:
  explicit TruthTable(std::string const& name)
  {
    std::ifstream file(RUNSIEVE_SOURCE_DIR "/tests/core/inference/data/" + name);
    for (std::string line; std::getline(file, line);) {
      if (line[0] == '#') continue;
      (names.empty() ? names : rows.emplace_back()) = fieldsOf(line);
    }
    EXPECT_GT(rows.size(), 0u) << name;
  }

  [[nodiscard]] std::size_t size() const { return rows.size(); }

  /// The words of a number beyond the range of doubles are kept in text().
  [[nodiscard]] double number(std::size_t row, std::string const& column) const
  {
    return std::strtod(text(row, column).c_str(), nullptr);
  }

  [[nodiscard]] std::string const& text(std::size_t row, std::string const& column) const
  {
    auto const found = std::find(names.begin(), names.end(), column);
    return rows.at(row).at(static_cast<std::size_t>(found - names.begin()));
  }

private:
  using Fields = std::vector<std::string>;

  static Fields fieldsOf(std::string const& line)
  {
    Fields fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, ',');) fields.push_back(field);
    return fields;
  }

  Fields names;
  std::vector<Fields> rows;
};

} // namespace runsieve::test
