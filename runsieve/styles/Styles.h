#pragma once

#include <runsieve/styles/Style.h>

namespace runsieve {

/// The style of a number; for numbers without a builder one that says so.
Style const& styleOf(plotStyles number);

} // namespace runsieve
