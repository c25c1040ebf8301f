#include "app/view/ShownComparison.h"

#include "app/cli/RankReport.h"
#include "app/view/ScanPlot.h"
#include "app/view/SmallCharts.h"

#include <runsieve/items/vtkPlotStepLine.h>

#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkChartMatrix.h>
#include <vtkDoubleArray.h>
#include <vtkNew.h>
#include <vtkPen.h>
#include <vtkTable.h>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

constexpr char floorLabel[] = "noise floor";
constexpr float thinLine = 1.01f;          ///< pixels; at exactly 1 software OpenGL loses joints
constexpr vtkIdType curvesOfSelection = 3; ///< all runs, passing runs, others

/// The view fills its rows from below: the order in which the first row of the charts stands on top. A row
/// that isn't full can only be the top one, so then the order stays.
std::vector<int> firstRowOnTop(std::vector<int> const& shown)
{
  constexpr std::ptrdiff_t perRow = 4;
  auto const count = static_cast<std::ptrdiff_t>(shown.size());
  if (count % perRow != 0) return shown;
  std::vector<int> order;
  for (std::ptrdiff_t row = count - perRow; row >= 0; row -= perRow)
    order.insert(order.end(), shown.begin() + row, shown.begin() + row + perRow);
  return order;
}

/// Sets statistics and order of the plot; entries are in the order in which they are to be shown.
template <class Entry, class P>
void follow(PlotContainer& plot, std::vector<Entry> const& entries, P const& pOf)
{
  const std::vector<std::size_t> positions = positionsInScan(plot);
  plot.ksStatistics.assign(positions.size(), {1.0, 0.0});
  plot.parameterOrder.clear();
  for (Entry const& entry : entries) {
    auto const found = std::find(positions.begin(), positions.end(), entry.parameter);
    if (found == positions.end()) continue;
    auto const place = static_cast<std::size_t>(found - positions.begin());
    plot.parameterOrder.push_back(static_cast<int>(place));
    double const p = pOf(entry);
    if (!std::isnan(p) && !std::isnan(entry.d)) plot.ksStatistics[place] = {p, std::fabs(entry.d)};
  }
  plot.parameterOrder = firstRowOnTop(plot.shownParameters());
  plot.redraw();
}

using Curve = std::vector<std::pair<double, double>>;

vtkSmartPointer<vtkTable> tableOf(Curve const& curve)
{
  vtkNew<vtkDoubleArray> x;
  vtkNew<vtkDoubleArray> y;
  x->SetName("value");
  y->SetName("share of runs");
  for (auto const& [value, share] : curve) {
    x->InsertNextValue(value);
    y->InsertNextValue(share);
  }
  auto table = vtkSmartPointer<vtkTable>::New();
  table->AddColumn(x);
  table->AddColumn(y);
  return table;
}

/// A distribution function moved up or down, as far as it stays between 0 and 1.
Curve shifted(Curve curve, double by)
{
  for (auto& [value, share] : curve) share = std::clamp(share + by, 0.0, 1.0);
  return curve;
}

void addFloor(vtkChart* chart, Curve const& others, double floor)
{
  constexpr unsigned char grey = 170;
  for (double const by : {floor, -floor}) {
    vtkNew<vtkPlotStepLine> line;
    line->SetInputData(tableOf(shifted(others, by)), vtkIdType(0), vtkIdType(1));
    line->SetLabel(floorLabel);
    line->SetColor(grey, grey, grey, 255);
    line->SetWidth(thinLine);
    line->SetSelectable(false);
    chart->AddPlot(line);
  }
}

bool hasFloor(vtkChart* chart)
{
  const vtkIdType plots = chart->GetNumberOfPlots();
  return plots > 0 && chart->GetPlot(plots - 1)->GetLabel() == floorLabel;
}

ParameterComparison const* find(Comparison const& comparison, std::size_t parameter)
{
  auto const& all = comparison.parameters;
  auto const found = std::find_if(all.begin(), all.end(),
                                  [&](ParameterComparison const& c) { return c.parameter == parameter; });
  return found == all.end() ? nullptr : &*found;
}

/// Counts each run once in the curves of a chart and draws the noise floor.
void drawCurves(vtkChart* chart, ParameterComparison const& compared, ParameterComparer const& comparer,
                ShownComparison const& shown)
{
  if (chart->GetNumberOfPlots() != curvesOfSelection) return;
  const Curve curves[] = {comparer.distribution(compared.parameter, comparer.eligible()),
                          comparer.distribution(compared.parameter, shown.passing),
                          comparer.distribution(compared.parameter, shown.passing.complement())};
  for (vtkIdType i = 0; i < curvesOfSelection; ++i)
    if (curves[i].empty())
      chart->GetPlot(i)->SetVisible(false);
    else
      chart->GetPlot(i)->SetInputData(tableOf(curves[i]), vtkIdType(0), vtkIdType(1));
  if (!std::isnan(shown.numbers.noiseFloor) && !compared.isText)
    addFloor(chart, curves[2], shown.numbers.noiseFloor);
  chart->RecalculateBounds();
  vtkAxis* left = chart->GetAxis(vtkAxis::LEFT);
  left->SetUnscaledRange(0.0, 1.0); // else it would begin at the least share
  left->SetBehavior(vtkAxis::FIXED);
}

} // namespace

ShownComparison compareRuns(ParameterComparer const& comparer, RunSet const& passing,
                            ComparisonMethod const& method)
{
  ShownComparison shown{{}, passing};
  RunSet compared(passing);
  compared &= comparer.eligible();
  if (compared.count() > 0) shown.numbers = comparer.compare(passing, method);
  return shown;
}

ShownComparison compareSelection(PlotContainer const& plot, ParameterComparer const& comparer,
                                 ComparisonMethod const& method)
{
  const RunSet passing = passingRuns(plot);
  if (passing.runs() != comparer.eligible().runs()) return {{}, passing};
  return compareRuns(comparer, passing, method);
}

void orderBy(PlotContainer& plot, Comparison const& comparison)
{
  follow(plot, comparison.parameters,
         [&](ParameterComparison const& c) { return adjustedP(c, comparison.method.adjustment); });
}

void orderBy(PlotContainer& plot, ClusterComparison const& comparison)
{
  std::vector<ClusterDifference> differences = comparison.differences;
  std::stable_sort(differences.begin(), differences.end(), [](auto const& a, auto const& b) {
    return std::make_pair(a.pPermutation, -std::fabs(a.d)) < std::make_pair(b.pPermutation, -std::fabs(b.d));
  });
  follow(plot, differences, [](ClusterDifference const& difference) { return difference.pPermutation; });
}

void label(PlotContainer& plot, ParameterComparer const& comparer, ShownComparison const& shown)
{
  const bool density = plot.metaData->getUseDensity();
  eachSmallChart(plot, [&](vtkChart* chart, std::size_t position) {
    ParameterComparison const* found = find(shown.numbers, position);
    if (!found) return;
    chart->SetTitle(
        chartTitle(found->d, adjustedP(*found, shown.numbers.method.adjustment), found->significant));
    if (!density && !hasFloor(chart)) drawCurves(chart, *found, comparer, shown);
  });
}

void label(PlotContainer& plot, ClusterComparison const& comparison)
{
  eachSmallChart(plot, [&](vtkChart* chart, std::size_t position) {
    auto const& all = comparison.differences;
    auto const found =
        std::find_if(all.begin(), all.end(), [&](auto const& c) { return c.parameter == position; });
    if (found != all.end()) chart->SetTitle(chartTitle(found->d, found->pPermutation, found->significant));
  });
}

void labelDistances(PlotContainer& plot, std::vector<LiveDistance> const& distances)
{
  eachSmallChart(plot, [&](vtkChart* chart, std::size_t position) {
    double const d = position < distances.size() ? distances[position].d : LiveDistance::UNDEFINED;
    chart->SetTitle(std::isnan(d) ? std::string() : "d " + formatted(d, "%+.2f", "-"));
  });
}

std::string chartTitle(double d, double p, bool significant)
{
  if (std::isnan(d)) return "";
  std::string const sure = std::isnan(p) ? std::string() : ", p " + pText(p);
  return "d " + formatted(d, "%+.2f", "-") + sure + (significant ? " *" : " n.s.");
}

} // namespace runsieve::app
