#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>

namespace runsieve {

/// Asks the system to back freshly allocated, untouched memory with large pages. Columns of large scans are
/// tens of megabytes that are written once: with small pages most of that time would go to page faults. Only
/// a hint.
RUNSIEVE_CORE_EXPORT void preferHugePages(void* memory, std::size_t bytes);

} // namespace runsieve
