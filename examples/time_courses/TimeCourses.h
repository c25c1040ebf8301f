#pragma once

#include <runsieve/records/LinePlotData.h>

#include <map>
#include <vector>

namespace time_courses {

/// The time courses of one simulation, with the memory that LinePlotData points to.
class TimeCourses
{
public:
  /// Simulates the repressilator with a reporter (M. B. Elowitz and S. Leibler, Nature 403 (2000) 335-338):
  /// three genes in a ring, each of which shuts off the next.
  /// \param halfRepression molecules of a repressor that halve the transcription of its gene
  explicit TimeCourses(double halfRepression = 40.0);

  /// What a LinePlotWidget shows. It refers to this object.
  LinePlotData data();

private:
  std::vector<double> times; ///< minutes
  std::map<Kestrane::TypedConcentrationName, std::vector<double>> series;
};

} // namespace time_courses
