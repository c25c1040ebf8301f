#pragma once

#include <array>

namespace runsieve {

/// Colours of series without a colour of their own: red, green, blue, opacity.
constexpr std::array<std::array<double, 4>, 12> palette = {{{0.6, 0.9, 0.9, 1.0},
                                                            {0.9, 0.9, 0.6, 1.0},
                                                            {0.6, 0.6, 0.9, 1.0},
                                                            {0.9, 0.6, 0.3, 1.0},
                                                            {0.3, 0.6, 0.9, 1.0},
                                                            {0.9, 0.3, 0.6, 1.0},
                                                            {0.6, 0.9, 0.3, 1.0},
                                                            {0.9, 0.6, 0.9, 1.0},
                                                            {0.9, 0.9, 0.9, 1.0},
                                                            {0.6, 0.3, 0.6, 1.0},
                                                            {0.6, 0.9, 0.6, 1.0},
                                                            {0.9, 0.9, 0.3, 1.0}}};

} // namespace runsieve
