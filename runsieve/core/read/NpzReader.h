#pragma once

#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/read/ReadReport.h>

#include <runsieve/core/runsieve_core_export.h>

#include <string>
#include <string_view>

namespace runsieve {

/// Whether bytes begin as a NumPy file of one array (.npy) does.
[[nodiscard]] RUNSIEVE_CORE_EXPORT bool isNpy(std::string_view bytes);

/// Whether bytes begin as a zip archive does, which a NumPy file of several arrays (.npz) is.
[[nodiscard]] RUNSIEVE_CORE_EXPORT bool isNpz(std::string_view bytes);

/// Reads an array of runs x times x outputs, or of runs x times of one output. Times and runs are counted,
/// the outputs are named by options.names. \param file its name, for messages \param bytes all of it \throw
/// ScanError if it is damaged or no scan, or too large for the memory; ReadCancelled
[[nodiscard]] RUNSIEVE_CORE_EXPORT ScanFile readNpy(std::string const& file, std::string_view bytes,
                                                    ReadOptions const& options);

/// Reads an archive of arrays: runs x times x outputs or several of runs x times, and by their names time,
/// names of outputs and runs, and parameters. What an array was taken for stands in the report. \param file
/// its name, for messages \param bytes all of it \throw ScanError if it is damaged or no scan, or too large
/// for the memory; ReadCancelled
[[nodiscard]] RUNSIEVE_CORE_EXPORT ScanFile readNpz(std::string const& file, std::string_view bytes,
                                                    ReadOptions const& options);

} // namespace runsieve
