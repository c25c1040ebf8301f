#pragma once

#include <runsieve/core/read/NamedArray.h>
#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/read/ReadReport.h>

#include <cstddef>
#include <string>
#include <vector>

namespace runsieve {

/// Finds out what the arrays of a file are, and makes a scan of them.
/// \param file name of the file, for messages
/// \param report begun by the caller; what is found out is added
/// \throw ScanError if they are no scan or could be more than one; ReadCancelled; std::bad_alloc
[[nodiscard]] ScanFile scanOfArrays(std::string const& file, std::vector<NamedArray> const& arrays,
                                    ReadOptions const& options, ReadReport report);

/// The time grid that all runs share. A run may end early: its times then are NaN from there on.
/// \param name of the time, for messages
/// \param times runs x length values
/// \throw ScanError if the times do not rise, or are not the same for all runs but for rounding errors
[[nodiscard]] std::vector<double> commonTimes(std::string const& file, std::string const& name,
                                              std::vector<double> const& times, std::size_t length);

/// Times for a file that has none: 0, 1, 2 ..., which is told as a guess.
[[nodiscard]] std::vector<double> countedTimes(std::size_t length, ReadReport& report);

/// Runs with the keys "1", "2" ..., which is told.
[[nodiscard]] std::vector<ScanRun> countedRuns(std::size_t number, ReadReport& report);

/// Takes the numbers that an option says to mean "no value" for missing ones, which is told.
void leaveOutMissing(ReadOptions const& options, ScanFile& file);

/// Calls the progress callback. \throw ReadCancelled if it asks to stop
void tellProgress(ReadOptions const& options, double share);

/// What is to be done with every scan that is complete: leaves out the parameters that are not asked for,
/// finds the status of runs and checks all. \throw ScanError if something does not hold, or something asked
/// for is not there
void finishScan(std::string const& file, ReadOptions const& options, Scan& scan);

} // namespace runsieve
