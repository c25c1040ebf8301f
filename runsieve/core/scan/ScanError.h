#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>
#include <stdexcept>
#include <string>

namespace runsieve {

/// A scan file that cannot be read or written. what() is one line such as
/// `scan.csv:17: column 5 ("Parameter: k1"): expected a number, found "abc"`.
class RUNSIEVE_CORE_EXPORT ScanError : public std::runtime_error
{
public:
  /// Where in the file something is wrong; a part that is not known is 0 or empty.
  struct Place
  {
    std::size_t line = 0;   ///< 1-based; line 1 is the header
    std::size_t column = 0; ///< 1-based position of the field in its line
    std::string field;      ///< name of that column
  };

  ScanError(std::string file, std::string const& message) : ScanError(std::move(file), Place(), message) {}
  ScanError(std::string file, Place place, std::string const& message);

  [[nodiscard]] std::string const& file() const { return fileName; }
  [[nodiscard]] std::size_t line() const { return where.line; }
  [[nodiscard]] std::size_t column() const { return where.column; }
  [[nodiscard]] std::string const& field() const { return where.field; }

private:
  std::string fileName;
  Place where;
};

} // namespace runsieve
