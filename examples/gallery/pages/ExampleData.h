#pragma once

#include <runsieve/records/LinePlotTable.h>

#include <vtkSmartPointer.h>
#include <vtkTable.h>

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <initializer_list>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace gallery {

/// The same numbers on every machine, which the distributions of the standard library do not promise.
class RandomNumbers
{
public:
  explicit RandomNumbers(std::uint64_t seed) : engine(seed) {}

  double uniform(double lower, double upper);
  double logUniform(double lower, double upper);
  double normal(double mean, double standardDeviation);

private:
  double unit(); ///< in (0, 1)

  std::mt19937_64 engine;
};

/// A cell that meets a growth factor: receptors bind it, signal, and are taken in; a kinase is phosphorylated
/// by the signalling receptors and dephosphorylated all the time.
struct Stimulation
{
  double binding = 20.0;                  ///< rate constant at the given dose [1/h]
  double uptake = 6.0;                    ///< of signalling receptors [1/h]
  double phosphorylation = 100.0;         ///< of the kinase by receptors [1/(uM h)]
  double dephosphorylation = 10.0;        ///< of the kinase [1/h]
  double receptors = 90.0;                ///< [nM]
  static constexpr double kinase = 300.0; ///< active and inactive [nM]

  /// Signalling receptors, EGFR-P [nM].
  [[nodiscard]] double receptor(double seconds) const;
  /// Active kinase, ERK-PP [nM].
  [[nodiscard]] double activeKinase(double seconds) const;
};

/// Random rate constants: each over one order of magnitude, the number of receptors threefold.
Stimulation randomStimulation(RandomNumbers& random);

/// Steps from 0 to the end, both included.
std::vector<double> timesUntil(double end, int points);

/// Time courses of ERK-PP and EGFR-P over half an hour, and the five parameters of each run.
boost::shared_ptr<LinePlotTable> stimulationScan(int runs);

/// A table of doubles, a column for each name.
vtkSmartPointer<vtkTable>
tableOf(std::initializer_list<std::pair<const char*, std::vector<double> const*>> columns);

/// One row per run, for plots that know no time: the four rate constants, and the largest value of ERK-PP in
/// half an hour. Columns: kon, kint, kcat, kdp, pERK.
vtkSmartPointer<vtkTable> peakTable(int runs);

} // namespace gallery
