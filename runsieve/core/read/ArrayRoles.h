#pragma once

#include <runsieve/core/read/NamedArray.h>
#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/read/ReadReport.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace runsieve {

/// Along which axes of an array runs, times and outputs lie. Nothing for what there is only one of.
struct ValueAxes
{
  std::optional<std::size_t> runs;
  std::optional<std::size_t> times;
  std::optional<std::size_t> outputs;

  /// Length along one of the above.
  [[nodiscard]] static std::size_t length(std::vector<std::size_t> const& shape,
                                          std::optional<std::size_t> axis)
  {
    return axis ? shape[*axis] : 1;
  }
};

/// What the arrays of a file are to a scan, by their position.
struct ArrayRoles
{
  std::vector<std::size_t> values; ///< one with all outputs, or one or more of runs and times, each an output
  ValueAxes axes;                  ///< of all values
  std::optional<std::size_t> time;
  std::optional<std::size_t> runKeys;
  std::optional<std::size_t> outputNames;
  std::optional<std::size_t> parameterTable; ///< runs x parameters
  std::optional<std::size_t> parameterNames;
  std::vector<std::size_t> parameters; ///< one value per run each
};

/// Whether a name is one of those that mean the time: "time", "t", "Times" and the like.
[[nodiscard]] bool isTimeName(std::string const& name);
/// "Time" for such names, others as they are.
[[nodiscard]] std::string nameOfTime(std::string const& name);

/// The arrays, but those of one column or one row as what they are, vectors: MATLAB has no others. Where no
/// array has two longer axes, or nothing tells of times, they stay, and so do tables of parameters.
[[nodiscard]] std::vector<NamedArray> withPlainVectors(std::vector<NamedArray> arrays);

/// Position of the array with a name or, if only one has it, with that bare name. \throw ScanError if there
/// is none
[[nodiscard]] std::size_t findArray(std::string const& file, std::vector<NamedArray> const& arrays,
                                    std::string const& name);

/// Finds out by names and lengths what each array is, and tells it in the report.
/// \throw ScanError if no array, or more than one, could hold the values, or if their axes cannot be told
/// apart
[[nodiscard]] ArrayRoles findRoles(std::string const& file, std::vector<NamedArray> const& arrays,
                                   ReadOptions const& options, ReadReport& report);

} // namespace runsieve
