#pragma once

#include <runsieve/core/gate/ResolvedGate.h>
#include <runsieve/core/live/CurveBlock.h>
#include <runsieve/core/live/LiveWork.h>
#include <runsieve/core/scan/Scan.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace runsieve {

/// The curves of one output of a scan in blocks of runs, which answer gates on it at once.
class CurveIndex
{
public:
  /// Shares the values of the output with the scan.
  CurveIndex(Scan const& scan, std::size_t output);

  [[nodiscard]] std::size_t positionOfOutput() const { return output; }

  /// Lays out all times. \return false if interrupted
  bool prepare(LiveWork const& work);

  /// Marks the runs that pass a gate, 1 or 0. \param gate a rectangle on this output \return false if
  /// interrupted: then only some are marked. \param marks one per run
  bool mark(ResolvedGate const& gate, std::uint8_t* marks, LiveWork const& work);

private:
  std::size_t output;
  std::size_t runs;
  std::size_t times;
  std::shared_ptr<double[]> values;
  std::vector<CurveBlock> blocks;
};

/// Whether a gate is of kind Inside, Ever or Never on an output.
[[nodiscard]] bool isRectangle(ResolvedGate const& gate);

} // namespace runsieve
