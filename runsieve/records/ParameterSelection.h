#pragma once

#include <set>
#include <string>

/// A chosen subset of runs, as it travels between plots and hosts.
struct ParameterSelection
{
  std::set<int> selectedRuns; ///< run numbers, ascending
  std::string sourceName;
  std::string selectionName; ///< the name to display
  int sourceId = 0;
};
