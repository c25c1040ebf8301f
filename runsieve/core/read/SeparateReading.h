#pragma once

#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/read/ReadReport.h>

#include <cstddef>
#include <functional>
#include <string>

namespace runsieve {

/// Reads a scan in a process of its own, which is forked from this one and ends with the reading: what a file
/// does to a library that trusts it ends that process and not this one.
///
/// The reading sees this process as it is at the call. It prints nothing, leaves no core file and may not
/// take longer than three seconds of computing time and another one for each 50 kB of the file. The progress
/// callback is called in this process, several times a second. \param file its name, for messages \param
/// bytes its size \param read called in the other process; its ScanError is thrown on in this one \throw
/// ScanError also if the other process cannot be made or does not end well; ReadCancelled; std::bad_alloc
[[nodiscard]] ScanFile readSeparately(std::string const& file, std::size_t bytes, ReadOptions const& options,
                                      std::function<ScanFile(ReadOptions const&)> const& read);

} // namespace runsieve
