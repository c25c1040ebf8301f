#pragma once

#include <runsieve/core/read/ReadReport.h>

#include <cstddef>
#include <functional>

namespace runsieve {

/// Takes bytes; throws what it likes.
using PutBytes = std::function<void(void const* bytes, std::size_t number)>;
/// Gives exactly so many bytes, or throws.
using GetBytes = std::function<void(void* to, std::size_t number)>;

/// Puts a scan and its report into a stream for a process of the same build. The values of each output are
/// let go when they are out.
void putScan(ScanFile scanFile, PutBytes const& put);

/// What putScan() put. Lengths are believed only as far as bytes follow. The scan is not checked.
/// \throw std::length_error if a length is absurd
[[nodiscard]] ScanFile getScan(GetBytes const& get);

void putText(std::string const& text, PutBytes const& put);
[[nodiscard]] std::string getText(GetBytes const& get);

} // namespace runsieve
