#include <runsieve/styles/SelectionCdfPlot.h>

#include <runsieve/charts/Cells.h>
#include <runsieve/charts/ChartLooks.h>
#include <runsieve/charts/ChartText.h>
#include <runsieve/charts/Plots.h>
#include <runsieve/items/vtkPlotInvisiblePoints.h>
#include <runsieve/items/vtkPlotStepLine.h>
#include <runsieve/records/PlotMetaData.h>
#include <runsieve/styles/ChartParts.h>
#include <runsieve/styles/ParametersToShow.h>
#include <runsieve/styles/PlotColors.h>
#include <runsieve/tables/ParameterNames.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkAnnotationLink.h>
#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkChartMatrix.h>
#include <vtkCommand.h>
#include <vtkContextMouseEvent.h>
#include <vtkContextScene.h>
#include <vtkDoubleArray.h>
#include <vtkLookupTable.h>
#include <vtkNew.h>
#include <vtkPen.h>
#include <vtkPlotFunctionalBag.h>
#include <vtkPlotLine.h>
#include <vtkTable.h>

#include <algorithm>
#include <array>
#include <iomanip>
#include <sstream>

namespace runsieve {

namespace {

constexpr double commonScaleHeadroom = 1.05;
constexpr int smallChartTitleSpace = 25; ///< pixels above each small chart, for its p-value

struct Rgb
{
  double red;
  double green;
  double blue;
};

constexpr Rgb black = {0.0, 0.0, 0.0};

/// Selected runs, unselected runs, an external selection.
constexpr std::array<Rgb, 3> seriesColors = {{{1.0, 0.2, 0.0}, {0.05, 0.6, 0.9}, {0.05, 0.9, 0.6}}};

struct Band
{
  const char* column;
  unsigned char red;
  unsigned char green;
  unsigned char blue;
};

constexpr std::array<Band, 3> bands = {
    {{"Range", 148, 148, 255}, {"QRange", 64, 64, 255}, {"Median", 0, 0, 0}}};

std::string pValueTitle(double p)
{
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text << "p = " << std::setprecision(2) << (p < 0.01 && p != 0.0 ? std::scientific : std::fixed) << p;
  return text.str();
}

/// The highest value of a plot, 0 without one.
double topOf(vtkPlot* plot)
{
  double bounds[4] = {0.0, 0.0, 0.0, 0.0};
  plot->GetUnscaledInputBounds(bounds);
  return bounds[3];
}

vtkSmartPointer<vtkLookupTable> complementColors()
{
  auto colors = vtkSmartPointer<vtkLookupTable>::New();
  colors->SetRange(0.0, 1.0);
  colors->SetNumberOfTableValues(2);
  colors->Build();
  colors->SetTableValue(0, 0.0, 0.0, 0.0, 1.0);
  colors->SetTableValue(1, 0.05, 0.6, 0.9, 1.0);
  return colors;
}

/// Where the charts of so many parameters stand: rows of small charts below, the chart of the runs above
/// them.
struct Layout
{
  explicit Layout(int shown)
      : columns(std::max(std::min(shown, chartsPerRow), 1)),
        groups((std::max(shown, 1) - 1) / chartsPerRow + 1), size(columns, shown > 0 ? 2 * groups : groups),
        runs(0, shown > 0 ? groups : 0)
  {}

  static vtkVector2i ofParameter(int k) { return {k % chartsPerRow, k / chartsPerRow}; }

  int columns;
  int groups;
  vtkVector2i size;
  vtkVector2i runs;
};

void addQuartileBands(vtkChart* chart, StyleModel const& model)
{
  if (!model.quartiles || !model.settings.getShowQuantiles()) return;
  model.quartiles->Modified();
  for (Band const& band : bands) {
    vtkNew<vtkPlotFunctionalBag> plot;
    if (!setPlotInput(plot, model.quartiles, "Time", band.column)) continue;
    plot->SetColor(band.red, band.green, band.blue, 255);
    plot->GetSelectionPen()->SetColor(band.red, band.green, band.blue);
    addAuxiliaryPlot(chart, plot);
  }
}

vtkSmartPointer<vtkPlotPoints> runPoints(bool onlySelected)
{
  auto points = vtkSmartPointer<vtkPlotInvisiblePoints>::Take(vtkPlotInvisiblePoints::New());
  points->SetOnlyShowSelected(onlySelected);
  return points;
}

void addRuns(vtkChart* chart, StyleModel const& model)
{
  const bool onlySelected = model.settings.getShowQuantiles();
  const vtkSmartPointer<vtkPlotPoints> plot =
      model.settings.getPlotLine() ? runLines(model, onlySelected) : runPoints(onlySelected);
  addPlot(chart, plot);
  setMainInput(plot, model);
  plot->SelectColorArray("vtkComplementSelection");
  plot->SetLookupTable(complementColors());
  plot->SetScalarVisibility(1);
  colorPlot(plot, model.data, model.settings);
}

void setRunRange(vtkChart* chart, StyleModel const& model)
{
  if (applyRememberedWindow(chart, model)) return;
  vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
  bottom->SetBehavior(vtkAxis::FIXED);
  chart->GetAxis(vtkAxis::LEFT)->SetBehavior(vtkAxis::AUTO);
  vtkDoubleArray* times = doubleColumn(model.data, entry0(model.settings.xColumns));
  double range[2] = {1.0, 0.0};
  if (times) times->GetRange(range, 0);
  if (range[0] > range[1]) return;
  bottom->SetUnscaledMinimum(0.995 * range[0]);
  bottom->SetUnscaledMaximum(1.005 * range[1]);
}

void buildRuns(StyleModel& model, Layout const& layout)
{
  vtkChart* chart = model.stage.mainCell(layout.runs, ChartPart::runs);
  chart->AddObserver(vtkCommand::InteractionEvent, model.stage.interactionObserver, 0.0);
  makeSelectable(chart, model.stage.link);
  model.stage.matrix->SetChartSpan(layout.runs, {layout.columns, layout.groups});
  addQuartileBands(chart, model);
  addRuns(chart, model);
  setTitles(chart, model);
  setTickTexts(chart->GetAxis(vtkAxis::BOTTOM), model);
  setRunRange(chart, model);
}

/// Adds the curve of one sample. Returns its top where densities are shown.
double addCurve(vtkChart* chart, StyleModel const& model, std::size_t ranked, std::string const& name,
                Rgb color)
{
  const bool density = model.settings.getUseDensity();
  vtkSmartPointer<vtkPlot> plot;
  if (density)
    plot = vtkSmartPointer<vtkPlotLine>::New();
  else
    plot = vtkSmartPointer<vtkPlotStepLine>::Take(vtkPlotStepLine::New());
  const std::size_t index = density ? ranked + 1 : ranked;
  vtkTable* table = index < model.sideTables.size() ? model.sideTables[index].GetPointer() : nullptr;
  const bool drawn = setPlotInput(plot, table, (density ? "Locations of " : "Sorted ") + name,
                                  (density ? "Density of " : "Rank of ") + name);
  addAuxiliaryPlot(chart, plot);
  plot->GetPen()->SetColorF(color.red, color.green, color.blue);
  return drawn && density ? topOf(plot) : 0.0;
}

void setParameterAxis(vtkChart* chart, StyleModel const& model, int column)
{
  vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
  bottom->SetTickLabelAlgorithm(vtkAxis::TICK_SIMPLE);
  bottom->SetLogScale(model.settings.getLogParameterAxes());
  setParameterTitle(bottom, model.data, column);
  bottom->SetBehavior(vtkAxis::AUTO);
}

void setHeightAxis(vtkChart* chart, bool density, bool first)
{
  vtkAxis* left = chart->GetAxis(vtkAxis::LEFT);
  if (!first) {
    left->SetTitle("");
    left->SetLabelsVisible(false);
    return;
  }
  left->SetTitle(density ? "Density" : "Ecdf");
  if (!density) left->SetUnscaledMaximum(1.0);
  left->SetUnscaledMinimum(0.0);
  left->SetBehavior(vtkAxis::FIXED);
}

/// Builds the small chart of a parameter. Returns the highest of its densities.
double buildParameter(StyleModel& model, vtkVector2i position, int parameter)
{
  const auto i = static_cast<std::size_t>(parameter);
  const int column = model.settings.parameterColumns[i];
  const std::string name = parameterName(model.columnNames, model.data, column);
  vtkChart* chart = model.stage.cell(position, ChartPart::parameter);
  fixView(chart);
  chart->SetActionToButton(vtkChart::SELECT, -1);
  chart->SetTitle("");
  setParameterAxis(chart, model, column);

  double highest = addCurve(chart, model, 0, name, black);
  std::size_t series = 0;
  for (std::size_t ranked = 3; ranked + 1 < model.sideTables.size(); ranked += 3, ++series) {
    if (!model.sideTables[ranked] || !model.sideTables[ranked + 1]) continue;
    highest =
        std::max(highest, addCurve(chart, model, ranked, name, seriesColors[series % seriesColors.size()]));
    if (i < model.statistics.size()) chart->SetTitle(pValueTitle(model.statistics[i].p));
  }
  setHeightAxis(chart, model.settings.getUseDensity(), position.GetX() == 0);
  settleLogScale(chart, model.settings.getLogParameterAxes());
  return highest;
}

void scaleDensityAxis(vtkChart* chart, StyleModel const& model, double common)
{
  vtkAxis* left = chart->GetAxis(vtkAxis::LEFT);
  if (model.settings.getCommonDensityScale()) {
    left->SetUnscaledMaximum(commonScaleHeadroom * common);
    return;
  }
  double highest = 0.0;
  for (vtkIdType k = 0; k < chart->GetNumberOfPlots(); ++k)
    highest = std::max(highest, topOf(chart->GetPlot(k)));
  left->SetUnscaledMaximum(highest);
}

void buildParameters(StyleModel& model, std::vector<int> const& shown)
{
  double highest = 0.0;
  for (std::size_t k = 0; k < shown.size(); ++k)
    highest = std::max(highest, buildParameter(model, Layout::ofParameter(static_cast<int>(k)), shown[k]));
  if (!model.settings.getUseDensity()) return;
  for (std::size_t k = 0; k < shown.size(); ++k)
    scaleDensityAxis(model.stage.matrix->GetChart(Layout::ofParameter(static_cast<int>(k))), model, highest);
}

void build(StyleModel& model, vtkContextScene* scene)
{
  scene->ClearItems();
  model.stage.matrix->SetScene(scene);
  for (vtkChart* chart : chartsIn(model.stage.matrix)) chart->RemoveAllObservers();
  model.stage.item = model.stage.matrix;
  const std::vector<int> shown =
      parametersToShow(model.statistics, model.settings.parameterColumns.size(),
                       model.settings.getPThreshold(), model.settings.getKsThreshold(), model.parameterOrder);
  const Layout layout(static_cast<int>(shown.size()));
  model.stage.layOutGrid(layout.size);
  setGridMargins(model.stage.matrix, model.stage.margins, smallChartTitleSpace);
  buildRuns(model, layout);
  buildParameters(model, shown);
  model.stage.makeCellsReachable();
  scene->AddItem(model.stage.item);
}

void applyMargins(ChartStage& stage)
{
  setGridMargins(stage.matrix, stage.margins, smallChartTitleSpace);
}

} // namespace

const Style selectionCdfBuilder = {selectionCdfPlot, true, build, applyMargins, nullptr};

} // namespace runsieve
