#pragma once

#include <runsieve/core/read/Hdf5File.h>
#include <runsieve/core/read/NamedArray.h>
#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/read/ReadReport.h>

#include <string>

namespace runsieve {

/// What a data set of an HDF5 file is to SED-ML, the description of simulation experiments.
enum class SedmlKind
{
  None,
  Report,
  Plot ///< the curves of a plot, stored like a report
};

[[nodiscard]] SedmlKind sedmlKind(Hdf5File const& hdf5, NamedArray const& dataSet);

/// Reads a report: its first axis counts SED-ML data sets, of which one is the time, the last the times, and
/// those between the repeats, which are the runs. Source: the BioSimulators conventions for results of
/// simulations, https://docs.biosimulations.org/concepts/conventions/simulation-run-reports/. \throw
/// ScanError if it has more axes, or no time that all runs share
[[nodiscard]] ScanFile readSedmlReport(std::string const& file, Hdf5File const& hdf5,
                                       NamedArray const& dataSet, ReadOptions const& options);

} // namespace runsieve
