#pragma once

#include <runsieve/core/compare/ComparisonMethod.h>
#include <runsieve/core/gate/Gate.h>
#include <runsieve/core/gate/GateRuns.h>
#include <runsieve/core/scan/RunSet.h>

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace runsieve::app {

/// A gate of the user's list. Names and texts are UTF-8, here and below.
struct NamedGate
{
  std::string name;
  Gate gate;
  bool on = true; ///< whether runs must pass it
};

/// Runs that the user keeps under a name.
struct NamedSet
{
  std::string name;
  RunSet runs;
  std::size_t color = 0; ///< place in Theme::sets
  bool shown = true;     ///< in the charts
  std::string origin;    ///< where it is from, for people: "passing 2 gates", "cluster 1 of 4"
  /// Members that the open scan does not have: a file that is written anew has them perhaps the next time.
  std::vector<RunKey> absent = {};
};

/// How the others of the passing runs are shown.
enum class Focus
{
  All,   ///< as densely as they are
  Faded, ///< as a pale ground
  Hidden
};

/// How runs are shown.
enum class RunsLook
{
  Density,   ///< in shades by their number
  Lines,     ///< lines over lines
  Bands,     ///< median, quartiles and 5 to 95 %, of the passing runs and of the others
  WholeBands ///< the deepest run, the range of the deeper half and of all but outlying runs, likewise
};

/// What the chart of a parameter shows.
enum class ParameterLook
{
  Curves,    ///< cumulative shares
  Densities, ///< estimated on the axis that is shown
  Scatter    ///< values against a feature of an output
};

/// A range of values that the user has typed.
struct TypedRange
{
  double low = 0.0;
  double high = 1.0;

  friend bool operator==(TypedRange const& a, TypedRange const& b)
  {
    return a.low == b.low && a.high == b.high;
  }
};

/// What the window shows, but for zooms.
struct ViewState
{
  std::vector<std::size_t> outputs = {0};         ///< one above the other; at least one, at most mostOutputs
  std::map<std::size_t, bool> logOutputs;         ///< by position of the output; others are linear
  std::map<std::size_t, TypedRange> outputRanges; ///< typed limits, by position of the output
  std::optional<TypedRange> timeRange;            ///< typed
  RunsLook runsLook = RunsLook::Density;
  Focus focus = Focus::All;
  ParameterLook parameterLook = ParameterLook::Curves;
  std::map<std::size_t, bool> logParameters; ///< by position; others by their own distribution

  static constexpr std::size_t mostOutputs = 6;
};

/// All that a user makes of a scan, and can take back.
struct State
{
  std::vector<NamedGate> gates;
  GateJoin join = GateJoin::All;
  std::vector<NamedSet> sets;
  ComparisonMethod method;
  ViewState view;
};

/// How many runs keys and ranges stand for.
[[nodiscard]] std::size_t countOf(std::vector<RunKey> const& keys);

[[nodiscard]] bool operator==(ViewState const& a, ViewState const& b);
[[nodiscard]] bool operator==(State const& a, State const& b);
/// Whether parameters are compared in the same way.
[[nodiscard]] bool sameMethod(ComparisonMethod const& a, ComparisonMethod const& b);

} // namespace runsieve::app
