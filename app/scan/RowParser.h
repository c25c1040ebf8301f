#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace runsieve::app {

/// Something wrong in a data row.
struct RowFault
{
  std::size_t row = 0;   ///< counted from 0
  std::size_t field = 0; ///< 1-based; 0 if it is the row as a whole
  std::string message;
};

/// Turns rows of text into columns of numbers.
///
/// In a stacked scan most fields of a row are, letter by letter, those of the row above: parameters and the
/// run index stay for a whole run. So a field is compared with the one above first and parsed only if it
/// differs. One object serves one thread.
class RowParser
{
public:
  /// \param wanted one per field of a row; what stands in the others does not matter
  RowParser(char delimiter, std::vector<bool> wanted);

  /// Parses whole lines into columns. \param text ends after the end of a line or at the end of the file
  /// \param row number of the first of them, moved on behind the last \param columns one per field, written
  /// for wanted fields only \return the first fault, after which nothing is parsed
  [[nodiscard]] std::optional<RowFault> parse(std::string_view text, std::size_t& row,
                                              std::vector<double*> const& columns);
  /// The same from row 0 on without keeping the values.
  [[nodiscard]] std::optional<RowFault> check(std::string_view text);

private:
  struct Field
  {
    char const* text = nullptr; ///< the field above as it stands in the file
    std::size_t length = 0;
    double value = 0.0;
  };

  bool parseRow(double* values);
  bool parseField(Field& field, char stop);
  bool skipField(char stop);
  void finishField(Field& field, char const* fieldEnd);
  void flush(std::vector<double*> const& columns, std::size_t firstRow, std::size_t rows) const;
  RowFault faultAt(std::size_t row) const;

  char delimiter;
  std::vector<bool> wanted;
  std::vector<Field> above;
  std::vector<double> block; ///< some rows, so that each column is written in pieces of a few cache lines
  char const* position = nullptr;
  char const* rowBegin = nullptr;
  char const* end = nullptr;
  std::size_t failedField = 0; ///< from 0
};

} // namespace runsieve::app
