#pragma once

#include <runsieve/core/compare/ComparedRuns.h>
#include <runsieve/core/inference/BoxTable.h>

#include <cstddef>
#include <deque>
#include <vector>

namespace runsieve {

/// The parameters of compared runs as the search for boxes takes them: texts are numbered anew, so that only
/// those count that some run has. The runs must outlive it.
class BoxTableOfRuns
{
public:
  explicit BoxTableOfRuns(ComparedRuns const& runs);
  BoxTableOfRuns(BoxTableOfRuns const&) = delete;
  BoxTableOfRuns& operator=(BoxTableOfRuns const&) = delete;

  [[nodiscard]] BoxTable const& table() const { return columns; }
  /// Position in ComparedRuns of a parameter of the table.
  [[nodiscard]] std::size_t indexOf(std::size_t column) const { return indices[column]; }
  /// The text of a category of a parameter of the table.
  [[nodiscard]] std::string const& textOf(std::size_t column, std::size_t category) const;
  /// Those of the runs, and those of too many texts, in the order of the scan.
  [[nodiscard]] std::vector<LeftOutParameter> const& leftOut() const { return left; }

private:
  void addTexts(std::size_t index);
  void add(std::size_t index, std::vector<std::size_t> texts);

  ComparedRuns const& runs;
  BoxTable columns;
  std::vector<std::size_t> indices;
  std::vector<std::vector<std::size_t>> textsOf; ///< of each category its position in ScanParameter::texts
  std::deque<std::vector<double>> categories;    ///< which the table borrows
  std::vector<LeftOutParameter> left;
};

} // namespace runsieve
