#pragma once

#include <runsieve/core/inference/OrderedValues.h>

namespace runsieve {

/// What is compared along the runs of a parameter.
enum class Steps
{
  CUMULATIVE, ///< shares of the runs up to each value (Kolmogorov-Smirnov)
  EACH_GROUP, ///< shares of the runs with each value (categories)
};

/// A parameter whose values may differ between sides.
struct ComparedParameter
{
  OrderedValues values;            ///< runs without a value are left out, of both sides
  Steps steps = Steps::CUMULATIVE; ///< Steps::EACH_GROUP for texts, whose order says nothing
};

} // namespace runsieve
