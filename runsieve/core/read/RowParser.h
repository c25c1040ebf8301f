#pragma once

#include <runsieve/core/read/Fields.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace runsieve {

/// Something wrong in a data row.
struct RowFault
{
  std::size_t row = 0;   ///< counted from 0
  std::size_t field = 0; ///< 1-based; 0 if it is the row as a whole
  std::string message;
};

/// How the rows of a table of text are to be read.
struct RowFormat
{
  FieldFormat fields;
  std::vector<bool> wanted;         ///< one per field of a row; what stands in the others does not matter
  std::vector<bool> quotesAreTexts; ///< likewise; whether what stands in quotes is a text, even "1" and "NA"
  std::vector<bool> nameless;       ///< likewise; whether it is not wanted because its column has no name
  std::vector<std::string> missing; ///< texts for "no value" besides the usual ones
  std::vector<double> missingNumbers;    ///< numbers that mean the same, however they are written
  std::vector<std::string> commentNames; ///< of the columns, if the header is a comment
  std::string_view header; ///< a line like this one between the rows is skipped, and ends a block
};

/// Turns rows of text into columns of cells (Cell.h).
///
/// In a stacked scan most fields of a row are, letter by letter, those of the row above: parameters and the
/// run stay for a whole run. So a field is compared with the one above first and parsed only if it differs.
/// Blank lines and comments between rows are passed over. One object serves one thread.
class RowParser
{
public:
  /// \param firstText number of the first text that this parser will find; it takes the numbers behind it
  RowParser(RowFormat const& format, std::uint64_t firstText);

  /// Parses whole lines into columns. \param text ends after the end of a line or at the end of the file
  /// \param row number of the first of them, moved on behind the last \param columns one per field, written
  /// for wanted fields only \return the first fault, after which nothing is parsed
  [[nodiscard]] std::optional<RowFault> parse(std::string_view text, std::size_t& row,
                                              std::vector<double*> const& columns);
  /// The same from row 0 on without keeping the values.
  [[nodiscard]] std::optional<RowFault> check(std::string_view text);

  /// Rows in whole lines, as parse() will find them.
  [[nodiscard]] static std::size_t countRows(std::string_view text, RowFormat const& format);

  /// The texts found, in the order of their numbers; they lie in the parsed text, quotes included.
  [[nodiscard]] std::vector<std::string_view> const& texts() const { return foundTexts; }
  /// Whether any cell of a field holds a text, or none.
  [[nodiscard]] bool hasText(std::size_t field) const { return textSeen[field]; }
  [[nodiscard]] bool hasMissing(std::size_t field) const { return missingSeen[field]; }
  /// Rows before which a blank line, or the header again, stands. A block that another parser's lines end is
  /// told by startsBlock().
  [[nodiscard]] std::vector<std::size_t> const& blockStarts() const { return starts; }
  /// Whether the last lines parsed were blank, so that the next row begins a block.
  [[nodiscard]] bool endsInBlank() const { return blankBefore; }
  [[nodiscard]] std::size_t commentLines() const { return comments; }
  /// The first comment that looks like the header, but has other names or another order; null without any.
  [[nodiscard]] char const* otherHeader() const { return otherNames; }
  /// The first value in a field that is nameless; empty if it held none.
  [[nodiscard]] std::string_view namelessValue(std::size_t field) const { return namelessValues[field]; }
  /// Whether a field held whole numbers that a double rounds.
  [[nodiscard]] bool hasRounded(std::size_t field) const { return roundedSeen[field]; }

private:
  struct Field
  {
    char const* text = nullptr; ///< the field above as it stands in the file
    std::size_t length = 0;
    double value = 0.0;
  };

  bool isRow();
  bool parseRow(double* values);
  template <bool atBlanks> bool parseFields(double* values);
  template <bool atBlanks> bool parseField(std::size_t index, bool isLast);
  template <bool atBlanks> void skipBlanks();
  double valueOf(std::string_view text, std::size_t field);
  double numberCell(double number, std::string_view text, std::size_t field);
  double textCell(std::string_view text);
  bool skipField(std::size_t index, char stop);
  void finishField(Field& field, char const* fieldEnd);
  void flush(std::vector<double*> const& columns, std::size_t firstRow, std::size_t rows) const;
  [[nodiscard]] bool isOtherHeader() const;
  void noteRounding(std::string_view text, std::size_t field);
  [[nodiscard]] RowFault faultAt(std::size_t row) const;

  RowFormat format;
  std::ptrdiff_t shortestOdd; ///< length of the shortest text of a number that needs a second look
  std::uint64_t nextText;
  std::vector<Field> above;
  std::size_t blockRows;
  std::vector<double> block; ///< some rows, so that each column is written in pieces of a few cache lines
  std::vector<bool> textSeen;
  std::vector<bool> missingSeen;
  std::vector<bool> roundedSeen;
  std::vector<std::string_view> namelessValues;
  char const* otherNames = nullptr;
  std::vector<std::string_view> foundTexts;
  std::unordered_map<std::string_view, std::uint64_t> textNumbers;
  std::vector<std::size_t> starts;
  std::size_t comments = 0;
  bool blankBefore = false;
  char const* position = nullptr;
  char const* rowBegin = nullptr;
  char const* end = nullptr;
};

} // namespace runsieve
