#pragma once

#include <map>
#include <string>
#include <vector>

/// What one run of a parameter fit has found.
struct FitRun
{
  std::map<std::string, float>
      fittedParameters;      ///< by name; "Global Scale" is the factor of all observations
  std::vector<double> times; ///< of the data, in seconds
};
