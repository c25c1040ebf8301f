#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace runsieve {

/// A column of a table of stacked runs that is to be written as text.
struct WrittenColumn
{
  /// Of what each value is one.
  enum class Each
  {
    Row,
    Run, ///< the same in all rows of a run
    Time ///< the same in all runs
  };

  std::string name;
  double const* numbers = nullptr;
  std::vector<std::string> texts; ///< one per run in place of the numbers
  Each each = Each::Row;
};

/// Takes pieces of text in their order.
using TextSink = std::function<void(std::string_view)>;

/// Writes comma-separated text: a line of names in double quotes, then a line for each time of each run. Each
/// number has the fewest digits that read back to the same value, texts stand in double quotes. They must not
/// hold line ends.
RUNSIEVE_CORE_EXPORT void writeRows(std::vector<WrittenColumn> const& columns, std::size_t runs,
                                    std::size_t times, TextSink const& sink);

/// A field in double quotes; those in it are doubled.
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::string quotedField(std::string_view text);

} // namespace runsieve
