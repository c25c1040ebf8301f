#include "app/explorer/gates/GateKinds.h"

namespace runsieve::app {

std::vector<GateKindEntry> const& gateKinds()
{
  static const std::vector<GateKindEntry> kinds = {
      {GateKind::Inside, "all the time", "Every value in the span of times lies in the range"},
      {GateKind::Ever, "at some time", "Some value in the span of times lies in the range"},
      {GateKind::Never, "never", "No value in the span of times lies in the range"},
      {GateKind::Crosses, "line crosses", "Some point of the line between the values lies in the range"},
      {GateKind::Max, "largest value", "The largest value in the span of times lies in the range", true},
      {GateKind::Min, "smallest value", "The smallest value in the span of times lies in the range"},
      {GateKind::Mean, "mean value", "The mean of the values in the span of times lies in the range"},
      {GateKind::Last, "last value", "The last value in the span of times lies in the range"},
      {GateKind::TimeOfMax, "time of the largest value",
       "The time at which the largest value is reached lies in the range"},
      {GateKind::TimeOfMin, "time of the smallest value",
       "The time at which the smallest value is reached lies in the range"},
      {GateKind::Is, "parameter is one of", "The parameter has one of the listed values", true},
      {GateKind::Status, "run ended as", "The run is complete, short or failed", true},
      {GateKind::Runs, "run is one of", "The run is one of those that are listed"},
      {GateKind::Cluster, "run is of a cluster", "The run belongs to a cluster of runs of like shape"}};
  return kinds;
}

bool isOnOutput(GateKind kind)
{
  return kind <= GateKind::TimeOfMin || kind == GateKind::Cluster;
}

bool mayBeOnParameter(GateKind kind)
{
  return kind == GateKind::Inside || kind == GateKind::Is;
}

bool hasValues(GateKind kind)
{
  return kind <= GateKind::TimeOfMin;
}

} // namespace runsieve::app
