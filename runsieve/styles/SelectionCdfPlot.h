#pragma once

#include <runsieve/styles/Style.h>

namespace runsieve {

/// The composite view: all runs above, the distributions of the parameters below.
extern const Style selectionCdfBuilder;

} // namespace runsieve
