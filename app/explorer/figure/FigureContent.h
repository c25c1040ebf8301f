#pragma once

#include "app/explorer/charts/AxisMap.h"
#include "app/explorer/document/PinnedRuns.h"
#include "app/explorer/document/State.h"

#include <runsieve/core/compare/Comparison.h>
#include <runsieve/core/scan/Scan.h>

#include <cstddef>
#include <map>
#include <memory>
#include <vector>

namespace runsieve::app {

class Document;

/// What is in a figure: a record of its own, so that it can be painted in another thread.
struct FigureContent
{
  std::shared_ptr<Scan const> scan;
  std::vector<NamedGate> gates; ///< those that are on
  bool sieves = false;          ///< whether passing runs stand against the others
  RunSet passing;
  RunSet eligible;                              ///< runs that take part in the comparison
  std::shared_ptr<Comparison const> comparison; ///< of the passing runs; null without one
  std::vector<NamedSet> sets;                   ///< those that are shown
  PinnedRuns pinned;
  std::vector<std::size_t> outputs; ///< one above the other
  AxisMap time;
  std::map<std::size_t, AxisMap> values; ///< of outputs; one that is missing shows all values
  std::map<std::size_t, bool> logOutputs;
  std::map<std::size_t, bool> logParameters; ///< others by their own distribution
  Focus focus = Focus::All;

  /// The passing runs; none without gates.
  [[nodiscard]] RunSet selected() const;
  /// Whether a time is in the part of the times that is shown.
  [[nodiscard]] bool showsTime(double at) const;
  /// The axis of an output.
  [[nodiscard]] AxisMap valueAxis(std::size_t output) const;
  /// Outputs that the options ask for; those that the content does not have are left out.
  [[nodiscard]] std::vector<std::size_t> shownOutputs(std::vector<std::size_t> const& wanted) const;
  /// The parameters that are listed, else the strongest of the comparison, else the first of the scan.
  [[nodiscard]] std::vector<std::size_t> shownParameters(std::vector<std::size_t> const& listed,
                                                         std::size_t strongest) const;
  /// The numbers of a parameter; null if it was not compared.
  [[nodiscard]] ParameterComparison const* numbersOf(std::size_t parameter) const;
};

/// What a document shows. \param time the axis that the charts show \param values likewise, by output
[[nodiscard]] FigureContent figureContentOf(Document const& document, AxisMap const& time,
                                            std::map<std::size_t, AxisMap> values);

} // namespace runsieve::app
