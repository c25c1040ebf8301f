#pragma once

#include <runsieve/styles/Style.h>

namespace runsieve {

/// Says in the title that a style has no builder: bars and areas are built by what fills them.
extern const Style notYetImplementedBuilder;

} // namespace runsieve
