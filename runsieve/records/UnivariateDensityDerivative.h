#pragma once

#include <runsieve/core/kernels/UnivariateDensityDerivative.h> // hosts include it by this name as well
