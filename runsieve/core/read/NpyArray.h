#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace runsieve {

/// What the header of a NumPy file (.npy, versions 1 to 3) says of its array.
struct RUNSIEVE_CORE_EXPORT NpyHeader
{
  enum class Type
  {
    Int8,
    Int16,
    Int32,
    Int64,
    UInt8,
    UInt16,
    UInt32,
    UInt64,
    Float32,
    Float64,
    Bytes,     ///< texts of itemBytes bytes, filled with zeros
    Characters ///< texts of itemBytes / 4 Unicode characters, filled with zeros
  };

  Type type = Type::Float64;
  std::size_t itemBytes = 0;
  bool swapped = false; ///< the order of bytes is not this machine's
  bool fortran = false; ///< the first axis lies in a row
  std::vector<std::size_t> shape;
  std::size_t items = 0;    ///< product of the shape
  std::size_t dataFrom = 0; ///< bytes of the file before the data

  [[nodiscard]] bool isText() const { return type == Type::Bytes || type == Type::Characters; }
};

/// Longer headers are refused: they are of structured arrays.
inline constexpr std::size_t longestNpyHeader = 1 << 16;

/// Reads the header of an array.
/// \param file its name, for messages
/// \param head the file or its first bytes: all, or longestNpyHeader at least
/// \param size bytes of the whole file
/// \throw ScanError if this is no NumPy file, if its data do not have the size that the header tells, or if
/// it
///        holds something else than plain numbers or texts, with what to do then
[[nodiscard]] RUNSIEVE_CORE_EXPORT NpyHeader readNpyHeader(std::string const& file, std::string_view head,
                                                           std::size_t size);

/// Writes numbers of an array, the last axis in a row, whatever the order in the file.
/// \param bytes the whole file
/// \param first first place along the first axis \param count number of places there
RUNSIEVE_CORE_EXPORT void copyNpyNumbers(NpyHeader const& header, std::string_view bytes, std::size_t first,
                                         std::size_t count, double* to);

/// The texts of an array of one axis, in UTF-8.
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::vector<std::string> npyTexts(NpyHeader const& header,
                                                                     std::string_view bytes);

} // namespace runsieve
