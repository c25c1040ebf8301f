#pragma once

#include <runsieve/core/inference/Box.h>
#include <runsieve/core/inference/BoxTable.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace runsieve {

/// How patiently a box is peeled.
struct PeelOptions
{
  double fraction = 0.05;  ///< of the runs in the box that one peel takes away; above 0, below 1
  double leastMass = 0.05; ///< of all runs that stay in the box; in [0, 1], and one run in any case

  /// \throw std::invalid_argument if they are not in these ranges
  void check() const;
  /// Runs that a peel or a paste of a box takes: the fraction, rounded down, but one at least.
  [[nodiscard]] std::size_t runsOf(std::size_t inside) const;
  /// Runs that stay in a box, of so many in all.
  [[nodiscard]] std::size_t leastRunsOf(std::size_t all) const;
};

/// One peel.
struct BoxPeel
{
  enum class Kind : std::uint8_t
  {
    Low,     ///< raises the lower limit of a number parameter
    High,    ///< lowers its upper limit
    Category ///< takes out a category of a text parameter
  };

  std::size_t parameter = 0;
  Kind kind = Kind::Low;
  double limit = 0.0;         ///< the new limit, or the number of the category
  std::size_t categories = 0; ///< of the parameter; 0 for numbers

  void applyTo(Box& box) const;
};

/// One box of a path.
struct BoxStep
{
  std::optional<BoxPeel> peel; ///< what made it of the box before; nothing for the first
  BoxTally inside;
  std::size_t restricted = 0; ///< parameters
};

/// Boxes from all runs to few: each is the one before it less a peel.
struct BoxPath
{
  BoxTally all;
  std::vector<BoxStep> steps; ///< the first is all runs

  /// The box of a step, which is put together anew.
  [[nodiscard]] Box box(std::size_t step) const;
  [[nodiscard]] BoxMeasures measures(std::size_t step) const { return {steps[step].inside, all}; }
};

/// Asked between pieces of work whether to stop; an empty one never does.
using StopAsked = std::function<bool()>;

/// Peels a box, one peel at a time, by the patient rule induction method (Friedman and Fisher, Statistics and
/// Computing 9, 1999), as it is used to discover scenarios (Bryant and Lempert, Technological Forecasting and
/// Social Change 77, 2010).
///
/// The box begins with all runs of the sample, n of them, p passing. Each number parameter offers two peels,
/// the runs of its lowest and those of its highest values: as many whole levels of equal values as have at
/// most k = fraction x n runs, but at least one level. Each category of a text parameter offers itself. The
/// first peel of a parameter takes away the runs that miss its value as well. Of the peels that leave enough
/// runs, some passing, that one is done whose gain in density for each run taken away is largest, where less
/// than k runs count as k:
///
///     (p' / n' - p / n) / max(n - n', k)
///
/// For values without ties, where all peels take k runs, that is the mean after the peel, the criterion of
/// Friedman and Fisher; for levels and categories of many runs it is the lenient criterion of Kwakkel and
/// Jaxa-Rozen (Environmental Modelling and Software 79, 2016), under which a large peel is not preferred for
/// its size. That few runs count as k keeps rare categories from being peeled first by chance. Of equal peels
/// the smallest is done, then the first in the order of parameters, categories and sides.
///
/// A new limit is the middle of the last value taken away and the first left inside. The path ends when no
/// peel leaves enough runs, or when all runs inside pass. It has one box if all runs pass or none.
class BoxPeeler
{
public:
  /// Table and sample must outlive it.
  /// \throw std::invalid_argument as checkSizes() and PeelOptions::check()
  BoxPeeler(BoxTable const& table, BoxSample const& sample, PeelOptions const& options);

  /// Does the next peel. It takes a millisecond or so for 20 parameters of 100,000 runs; with large levels,
  /// which are counted whole, up to 20.
  /// \return whether there was one
  bool peel();

  [[nodiscard]] BoxPath const& path() const { return found; }

private:
  struct Candidate;
  /// What is in the box of one parameter.
  struct Extent
  {
    std::ptrdiff_t first; ///< its lowest level that has runs in the box
    std::ptrdiff_t last;
    BoxTally missing;                 ///< runs without a value
    std::vector<BoxTally> categories; ///< of a text parameter
    bool restricted = false;
  };

  [[nodiscard]] Extent extentOf(BoxColumn const& column) const;
  void trim(std::size_t parameter);
  [[nodiscard]] bool hasRuns(BoxColumn const& column, std::ptrdiff_t level) const;
  void offerSides(std::size_t parameter, Candidate& best);
  void offerSide(std::size_t parameter, BoxPeel::Kind kind, Candidate& best) const;
  void offerCategories(std::size_t parameter, Candidate& best) const;
  void offer(Candidate candidate, Candidate& best) const;
  void execute(Candidate const& peel);
  void removeLevel(BoxColumn const& column, std::size_t level);
  void remove(std::uint32_t run);

  BoxTable const& table;
  PeelOptions options;
  std::size_t leastInside = 1;
  std::vector<unsigned char> marks; ///< of the runs in the box
  BoxTally inside;
  std::size_t restricted = 0;
  std::vector<Extent> extents;       ///< one per parameter
  std::vector<std::size_t> followed; ///< parameters with categories or missing values, whose runs are counted
  BoxPath found;
};

/// The whole path. \return nothing if asked to stop
/// \throw std::invalid_argument as BoxPeeler
[[nodiscard]] std::optional<BoxPath> findBoxPath(BoxTable const& table, BoxSample const& sample,
                                                 PeelOptions const& options = {},
                                                 StopAsked const& stopAsked = {});

} // namespace runsieve
