#include <runsieve/plot/PlotContainer.h>

#include <runsieve/items/VtkVersion.h>
#include <runsieve/plot/ChartLifetime.h>
#include <runsieve/plot/ChartRole.h>
#include <runsieve/plot/MarginChart.h>
#include <runsieve/plot/vtkShiftScaleCallback.h>
#include <runsieve/selection/vtkSelectionUpdateCallback.h>
#include <runsieve/stats/RunIndex.h>

#include <vtkChartXY.h>
#include <vtkCommand.h>

using namespace runsieve;

namespace {

constexpr const char* selectedPoints = "selected points";

void growTo(std::vector<int>& list, int index, int value)
{
  if (index < 0) return;
  const auto i = static_cast<std::size_t>(index);
  if (i < list.size())
    list[i] = value;
  else
    list.resize(i + 1, value);
}

/// The number of the last column of a name, 0 without one.
int columnByName(vtkTable* table, std::string const& name)
{
  int found = 0;
  for (vtkIdType c = 0; c < table->GetNumberOfColumns(); ++c) {
    const char* column = table->GetColumnName(c);
    if (column && name == column) found = static_cast<int>(c);
  }
  return found;
}

} // namespace

PlotContainer::PlotContainer(QObject* parent)
    : QObject(parent), metaData(new PlotMetaData(this)), chartLifetime(std::make_unique<ChartLifetime>()),
      runIndex(std::make_unique<RunIndex>())
{
  connect(metaData, &PlotMetaData::redrawNeeded, this, &PlotContainer::redraw);
  plotData = vtkSmartPointer<vtkTable>::New();
  createCharts();
  chartParallelCoordinates = vtkSmartPointer<vtkChartParallelCoordinates>::New();
  observeSelection();
}

PlotContainer::PlotContainer(PlotContainer const& other)
    : QObject(other.parent()), typedColumnNames(other.typedColumnNames),
      showDecorationPlots(other.showDecorationPlots), parameterBounds(other.parameterBounds),
      metaData(new PlotMetaData(*other.metaData)), coordinateWindows(other.coordinateWindows),
      leftMargin(other.leftMargin), topMargin(other.topMargin), bottomMargin(other.bottomMargin),
      rightMargin(other.rightMargin), horizontalGutter(other.horizontalGutter),
      verticalGutter(other.verticalGutter), selectionUpdatePending(true),
      useIndexForXSeries(other.useIndexForXSeries), chartLifetime(std::make_unique<ChartLifetime>()),
      runIndex(std::make_unique<RunIndex>())
{
  metaData->setParent(this);
  metaData->rankedParametersValid = false; // the side tables do not come along
  connect(metaData, &PlotMetaData::redrawNeeded, this, &PlotContainer::redraw);
  plotData = vtkSmartPointer<vtkTable>::New();
  plotData->DeepCopy(other.plotData);
  createCharts();
  observeSelection();
  if (auto flags = vtkSmartPointer<vtkIntArray>::Take(other.getCurrentSelection())) {
    // Replaced in place the column would not be the last, where the selection is looked for.
    plotData->RemoveColumnByName(selectedPoints);
    plotData->AddColumn(flags);
  }
  selectionFromFlagColumn();
  redraw();
}

PlotContainer::~PlotContainer()
{
  // Charts and link may outlive this object in a scene or a host.
  selectionCallback->plotContainer = nullptr;
  shiftScaleCallback->plotContainer = nullptr;
  annotationLink->RemoveObserver(selectionCallback);
  if (chartXY) chartXY->RemoveObserver(shiftScaleCallback);
  metaData->blockSignals(true);
  delete metaData;
}

void PlotContainer::createCharts()
{
  annotationLink = vtkSmartPointer<vtkAnnotationLink>::New();
  ensureChart();
  scatterPlotMatrix = makeScatterPlotMatrix();
  chartXYZ = vtkSmartPointer<vtkChartXYZ>::New();
  chartMatrix = vtkSmartPointer<vtkChartMatrix>::New();
  extractSelectedRows = vtkSmartPointer<vtkExtractSelectedRows>::New();
  item = chartXY;
}

void PlotContainer::observeSelection()
{
  selectionCallback = vtkSmartPointer<vtkSelectionUpdateCallback>::Take(vtkSelectionUpdateCallback::New());
  selectionCallback->plotContainer = this;
  annotationLink->AddObserver(vtkCommand::AnnotationChangedEvent, selectionCallback, 0.0);
  shiftScaleCallback = vtkSmartPointer<vtkShiftScaleCallback>::Take(vtkShiftScaleCallback::New());
  shiftScaleCallback->plotContainer = this;
}

vtkChart* PlotContainer::ensureChart()
{
  if (!chartXY) {
    chartXY = MarginChart::create();
    chartXY->SetSelectionMode(vtkContextScene::SELECTION_ADDITION);
    makeSelectable(chartXY, annotationLink);
    addPointPlot(chartXY);
  }
  return chartXY;
}

vtkChart* PlotContainer::ensureStandaloneChart()
{
  const bool isCell = chartXY && chartXY->GetLayoutStrategy() == vtkChart::AXES_TO_RECT &&
                      !dynamic_cast<MarginChart*>(chartXY.GetPointer());
  if (isCell) chartXY = nullptr;
  return ensureChart();
}

vtkChart* PlotContainer::ensureNeutralChart()
{
  if (chartXY && chartXY.GetPointer() == shapedChart) {
    shapedChart = nullptr;
    if (dynamic_cast<MarginChart*>(chartXY.GetPointer()))
      resetLooks(chartXY);
    else
      chartXY = nullptr;
  }
  return ensureStandaloneChart();
}

vtkChart* PlotContainer::chartToFill()
{
  if (!chartXY) {
    // Nothing shows the chart yet.
    vtkContextScene* scene = item->GetScene();
    item = ensureChart();
    item->SetScene(scene);
  } else if (chartXY.GetPointer() == shapedChart) {
    shapedChart = nullptr;
    resetLooks(chartXY);
  }
  return chartXY;
}

void PlotContainer::replacePlotData(vtkSmartPointer<vtkTable> data)
{
  plotData = data;
  metaData->rankedParametersValid = false;
  runIndex->clear();
}

void PlotContainer::setPlotData(vtkSmartPointer<vtkTable> data)
{
  if (!data) return;
  tables.clear();
  replacePlotData(data);
  findParameterColumns();
  if (metaData->getPlotStyle() == selectionCdfPlot) generateRankedParameters(plotData, 0);
}

void PlotContainer::findParameterColumns()
{
  metaData->parameterColumns.clear();
  for (std::size_t i = 0; i < typedColumnNames.size(); ++i)
    if (typedColumnNames[i].first == Kestrane::Parameter)
      metaData->parameterColumns.push_back(static_cast<int>(i));
}

void PlotContainer::setPlotStyle(plotStyles plotStyle)
{
  metaData->setPlotStyle(plotStyle);
}

void PlotContainer::setPlotCols(int x, int y, int plotIndex, bool quartiles)
{
  growTo(metaData->xColumns, plotIndex, x);
  growTo(metaData->yColumns, plotIndex, y);
  if (quartiles) generateQuartiles();
  redraw();
}

void PlotContainer::setPlotCols(std::string x, std::string y, int plotIndex, int tableIndex, bool quartiles)
{
  vtkTable* table = plotData;
  if (tableIndex >= 0 && static_cast<std::size_t>(tableIndex) < tables.size() && tables[tableIndex])
    table = tables[tableIndex];
  setPlotCols(columnByName(table, x), columnByName(table, y), plotIndex, quartiles);
}

QStringList PlotContainer::getLabels() const
{
  QStringList labels;
  for (vtkIdType c = 0; c < plotData->GetNumberOfColumns(); ++c)
    labels << QString::fromLatin1(plotData->GetColumnName(c));
  return labels;
}

void PlotContainer::setScene(vtkContextScene* scene)
{
  if (!item) return;
  if (vtkContextScene* former = item->GetScene()) former->ClearItems();
  item->SetScene(scene);
}

void PlotContainer::dirty()
{
  if (item && item->GetScene()) item->GetScene()->SetDirty(true);
}

void PlotContainer::annotationUpdate()
{
  selectionCallback->Execute(annotationLink, 0, nullptr);
}
