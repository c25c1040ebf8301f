#pragma once

#include <runsieve/core/read/CellTable.h>
#include <runsieve/core/read/RunSearch.h>

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace runsieve {

/// Tables of several files on their way to one, with a column that tells the runs apart.
///
/// A file of one run has the key of the file for that run; the runs of a file of several have their own keys
/// behind it: "7/0", "7/1". Columns that some file lacks are left out.
class JoinedRows
{
public:
  /// A run, and where its rows are.
  struct Run
  {
    std::string key;
    std::size_t file = 0;     ///< in the order of add()
    std::size_t firstRow = 0; ///< of the joined table
  };

  explicit JoinedRows(std::string folderName) : folder(std::move(folderName)) {}

  /// Appends the rows of a file. \param key of the file \param table with the runs that were found in it
  /// \throw ScanError if it has units other than the files before
  void add(std::string const& key, CellTable const& table, TableRuns const& found);

  /// The joined table, without placeOf. The columns are given away. \throw ScanError if the files have
  /// nothing but the time in common, or two runs one key
  [[nodiscard]] CellTable take();

  /// Header of the column of runs in the table that was taken.
  [[nodiscard]] std::string const& runHeader() const { return runName; }
  [[nodiscard]] std::vector<Run> const& runs() const { return allRuns; }
  /// Columns that are not in the table since some files lack them.
  [[nodiscard]] std::set<std::string> const& leftOut() const { return missing; }
  /// Number of files whose own run column gave way to the keys of the files.
  [[nodiscard]] std::size_t replacedRunColumns() const { return replaced; }
  /// First row of a file.
  [[nodiscard]] std::size_t firstRowOf(std::size_t file) const { return fileRows[file]; }

private:
  struct Column
  {
    CellColumn like;
    std::vector<double> cells;
    std::string file; ///< where its unit is from
    bool isTime = false;
    bool isWanted = false; ///< in all files
    bool isKept = false;   ///< in any file more than a count of its rows
  };

  void begin(CellTable const& table, TableRuns const& found);
  void leaveOut(std::string const& header);
  void append(Column& column, CellTable const& table, std::size_t from, TableRuns const& found);
  std::vector<std::uint64_t> const& textNumbers(CellTable const& table);
  void addRuns(std::string const& key, CellTable const& table, RunRows const& found);
  CellColumn runColumn(std::vector<std::string>& texts) const;
  void checkKeys() const;

  std::string folder;
  std::string runName;
  std::vector<Column> columns;
  std::size_t rows = 0;
  std::vector<std::size_t> fileRows; ///< first row of each file
  std::vector<Run> allRuns;
  std::set<std::string> missing;
  std::size_t replaced = 0;
  std::vector<std::string> allTexts;
  std::unordered_map<std::string, std::uint64_t> knownTexts;
  std::vector<std::uint64_t> numbers; ///< in allTexts, of the texts of the table that is added
};

} // namespace runsieve
