#pragma once

#include <runsieve/styles/Style.h>

namespace runsieve {

/// The course of a fit: all pairs of parameters, and each parameter over the iterations.
extern const Style fitParameterBuilder;

} // namespace runsieve
