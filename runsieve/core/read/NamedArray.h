#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace runsieve {

/// An array of a file that holds several: what it is called and how to get at what it holds.
struct NamedArray
{
  enum class Kind
  {
    Numbers,
    Texts,
    Unreadable ///< neither; `why` tells
  };

  std::string name; ///< as people call it; a path in HDF5
  Kind kind = Kind::Unreadable;
  std::vector<std::size_t> shape;
  std::vector<std::string> axisNames; ///< of the dimensions, one per axis; empty if the file names none

  /// Writes the numbers of `count` places of the first axis from `first` on, the last axis in a row.
  std::function<void(std::size_t first, std::size_t count, double* to)> numbers;
  /// All texts, in UTF-8, the last axis in a row.
  std::function<std::vector<std::string>()> texts;
  /// Places of the first axis that are stored together, so that it pays to ask for a multiple of them.
  std::size_t grain = 1;
  /// Whether the numbers are stored in 32 bits with a fraction, which hold -99.9 not exactly.
  bool isSingle = false;
  /// Of an unreadable array: what it holds and what to do.
  std::string why;

  [[nodiscard]] bool isNumbers(std::size_t axes) const
  {
    return kind == Kind::Numbers && shape.size() == axes;
  }
  [[nodiscard]] bool isTexts() const { return kind == Kind::Texts && shape.size() == 1; }
};

/// "3 x 4 x 5"; "a single value" without axes.
[[nodiscard]] std::string shapeText(std::vector<std::size_t> const& shape);

/// The part of a path behind the last '/'.
[[nodiscard]] std::string bareName(std::string const& path);

/// The arrays, where those of 32 bits give the numbers that mean "no value" as they are meant, not as they
/// are stored: -99.9 for -99.90000152587890625.
[[nodiscard]] std::vector<NamedArray> withMissingAsMeant(std::vector<NamedArray> arrays,
                                                         std::vector<double> const& missing);

/// All numbers of an array with an axis or more.
[[nodiscard]] std::vector<double> allNumbers(NamedArray const& array);

} // namespace runsieve
