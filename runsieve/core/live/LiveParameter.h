#pragma once

#include <runsieve/core/live/LevelMarks.h>
#include <runsieve/core/live/LiveDistance.h>
#include <runsieve/core/live/OrderedMarks.h>
#include <runsieve/core/scan/RunSet.h>
#include <runsieve/core/scan/Scan.h>

#include <cstddef>
#include <cstdint>
#include <variant>
#include <vector>

namespace runsieve {

/// One parameter of the runs of a scan, put in order once, and which of them pass.
class LiveParameter
{
public:
  /// No run passes.
  /// \param eligible the runs that are compared
  LiveParameter(Scan const& scan, std::size_t parameter, RunSet const& eligible);

  /// These runs pass from now on if they did not, and the other way round. \param changed each run at most
  /// once \param passes of each run, whether it passes from now on, 0 or 1
  void flip(std::vector<std::uint32_t> const& changed, std::uint8_t const* passes);

  [[nodiscard]] LiveDistance distance();

private:
  void takeTexts(std::vector<double> const& values, std::size_t texts);
  void takeNumbers(OrderedValues const& ordered, std::vector<double> const& values);
  void takeLevels(OrderedValues const& ordered, std::vector<double> const& values);

  std::size_t position;
  bool isText;
  bool varies = false;
  std::vector<double> valuesAt;                 ///< of numbers: by the place of a difference
  std::variant<LevelMarks, OrderedMarks> marks; ///< the former of texts and of few different numbers
};

} // namespace runsieve
