#include <runsieve/charts/ChartRoles.h>

#include <runsieve/charts/ChartLooks.h>

#include <vtkChart.h>
#include <vtkCommand.h>

#include <algorithm>

namespace runsieve {

namespace {

/// Adapters draw in whatever chart stands.
bool isForAdapters(ChartPart part)
{
  return part == ChartPart::plain || part == ChartPart::distribution;
}

void leave(vtkChart* chart, ChartPart from, ChartPart to, vtkCommand* observer)
{
  if (from == to) return;
  if (!isForAdapters(to)) {
    chart->RemoveObserver(observer);
    resetLooks(chart);
  } else if (from == ChartPart::distribution) {
    undoDistributionShape(chart);
  } else if (from == ChartPart::sensitivity) {
    resetLooks(chart);
  }
}

} // namespace

ChartRole ChartRoles::of(vtkChart* chart) const
{
  if (!chart) return {};
  for (Entry const& entry : entries)
    if (entry.chart.GetPointer() == chart) return entry.role;
  return {};
}

void ChartRoles::give(vtkChart* chart, ChartRole role, vtkCommand* observer)
{
  forgetDropped();
  auto known = std::find_if(entries.begin(), entries.end(),
                            [chart](Entry const& entry) { return entry.chart.GetPointer() == chart; });
  if (known == entries.end()) {
    entries.push_back({chart, role});
    return;
  }
  leave(chart, known->role.part, role.part, observer);
  known->role = role;
}

void ChartRoles::forgetDropped()
{
  entries.erase(std::remove_if(entries.begin(), entries.end(),
                               [](Entry const& entry) { return entry.chart.GetPointer() == nullptr; }),
                entries.end());
}

} // namespace runsieve
