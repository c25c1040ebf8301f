#pragma once

#include <runsieve/core/kernels/KolmogorovSmirnov.h> // hosts include it by this name as well
