#pragma once

#include "app/simulate/Model.h"

namespace runsieve::app {

/// Oscillator of three genes, each repressing the next.
[[nodiscard]] Model repressilator();
/// Signalling cascade of three kinases with negative feedback.
[[nodiscard]] Model mapkCascade();
/// Switch of two genes that repress each other.
[[nodiscard]] Model toggleSwitch();

} // namespace runsieve::app
