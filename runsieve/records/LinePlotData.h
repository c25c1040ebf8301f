#pragma once

#include <runsieve/records/TypedConcentrationName.h>

#include <boost/unordered_map.hpp>

#include <string>
#include <vector>

/// The time courses of one simulation. All vectors have one length; they stay the host's and are copied on
/// use.
struct LinePlotData
{
  boost::unordered_map<Kestrane::TypedConcentrationName, std::vector<double>*> series;
  std::string timeLabel; ///< name of the time column and title of the bottom axis, used as it stands
  std::vector<double>* times = nullptr;
  std::string valueLabel; ///< title of the left axis
};
