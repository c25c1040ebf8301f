#pragma once

#include <runsieve/styles/Style.h>

namespace runsieve {

/// One series with error bars, and a second one as a line.
extern const Style errorBarBuilder;

} // namespace runsieve
