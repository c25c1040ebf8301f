#pragma once

#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/read/ReadReport.h>

#include <runsieve/core/runsieve_core_export.h>

#include <string>
#include <string_view>

namespace runsieve {

/// Whether bytes are the first of an HDF5 file. A file may have other bytes before, of which the first 4096
/// are enough for this.
[[nodiscard]] RUNSIEVE_CORE_EXPORT bool isHdf5(std::string_view firstBytes);

/// Reads a report of SED-ML, or a data set of runs x times x outputs, or several of runs x times, with what
/// stands in the same group: time, names, parameters, as in a NumPy archive. options.dataset chooses a data
/// set.
///
/// Calls from several threads wait for each other, and those of the progress callback happen meanwhile: it
/// must not read HDF5 files. \throw ScanError if it is damaged or no scan, or too large for the memory;
/// ReadCancelled
[[nodiscard]] RUNSIEVE_CORE_EXPORT ScanFile readHdf5(std::string const& file, ReadOptions const& options);

} // namespace runsieve
