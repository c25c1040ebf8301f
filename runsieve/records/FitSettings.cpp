#include <runsieve/records/FitSettings.h>

FitSettings::~FitSettings() = default;
