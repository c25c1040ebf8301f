#include <runsieve/plot/PlotContainerPrivate.h>

#include <runsieve/items/LineSetPicture.h>
#include <runsieve/items/VtkVersion.h>
#include <runsieve/plot/vtkShiftScaleCallback.h>
#include <runsieve/records/LinePlotTable.h>
#include <runsieve/records/PlotMetaData.h>
#include <runsieve/selection/LinkedSelection.h>
#include <runsieve/selection/vtkSelectionUpdateCallback.h>

#include <vtkAnnotationLink.h>
#include <vtkChartMatrix.h>
#include <vtkChartParallelCoordinates.h>
#include <vtkChartXYZ.h>
#include <vtkCommand.h>
#include <vtkContextScene.h>
#include <vtkDoubleArray.h>
#include <vtkExtractSelectedRows.h>
#include <vtkIntArray.h>
#include <vtkScatterPlotMatrix.h>
#include <vtkStringArray.h>
#include <vtkTable.h>

#include <QStringList>

#include <utility>

using namespace runsieve;

namespace {

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
    : QObject(parent), d(std::make_unique<Private>(*this)), metaData(new PlotMetaData(this))
{
  connect(metaData, &PlotMetaData::redrawNeeded, this, &PlotContainer::redraw);
  plotData = vtkSmartPointer<vtkTable>::New();
  d->createCharts();
  chartParallelCoordinates = vtkSmartPointer<vtkChartParallelCoordinates>::New();
  d->observeSelection();
}

PlotContainer::PlotContainer(PlotContainer const& other)
    : QObject(other.parent()), d(std::make_unique<Private>(*this)), typedColumnNames(other.typedColumnNames),
      showDecorationPlots(other.showDecorationPlots), parameterBounds(other.parameterBounds),
      metaData(new PlotMetaData(*other.metaData)), coordinateWindows(other.coordinateWindows),
      leftMargin(other.leftMargin), topMargin(other.topMargin), bottomMargin(other.bottomMargin),
      rightMargin(other.rightMargin), horizontalGutter(other.horizontalGutter),
      verticalGutter(other.verticalGutter), selectionUpdatePending(true),
      useIndexForXSeries(other.useIndexForXSeries), parameterOrder(other.parameterOrder),
      densityColors(other.densityColors)
{
  metaData->setParent(this);
  metaData->rankedParametersValid = false; // the side tables do not come along
  setRunner(other.d->runner);
  connect(metaData, &PlotMetaData::redrawNeeded, this, &PlotContainer::redraw);
  plotData = vtkSmartPointer<vtkTable>::New();
  plotData->DeepCopy(other.plotData);
  d->createCharts();
  d->observeSelection();
  if (const vtkSmartPointer<vtkIntArray> flags = selectionFlags(other.annotationLink, other.plotData)) {
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

void PlotContainer::Private::createCharts()
{
  plot.annotationLink = vtkSmartPointer<vtkAnnotationLink>::New();
  stage().alone();
  plot.scatterPlotMatrix = makeScatterPlotMatrix();
  plot.chartXYZ = vtkSmartPointer<vtkChartXYZ>::New();
  plot.chartMatrix = vtkSmartPointer<vtkChartMatrix>::New();
  plot.extractSelectedRows = vtkSmartPointer<vtkExtractSelectedRows>::New();
  plot.item = plot.chartXY;
}

void PlotContainer::Private::observeSelection()
{
  plot.selectionCallback =
      vtkSmartPointer<vtkSelectionUpdateCallback>::Take(vtkSelectionUpdateCallback::New());
  plot.selectionCallback->plotContainer = &plot;
  plot.annotationLink->AddObserver(vtkCommand::AnnotationChangedEvent, plot.selectionCallback, 0.0);
  plot.shiftScaleCallback = vtkSmartPointer<vtkShiftScaleCallback>::Take(vtkShiftScaleCallback::New());
  plot.shiftScaleCallback->plotContainer = &plot;
}

void PlotContainer::setRunner(BlockRunner runner)
{
  d->linePicture->setRunner(runner);
  d->runner = std::move(runner);
}

void PlotContainer::setPlotData(vtkSmartPointer<vtkTable> data)
{
  if (!data) return;
  tables.clear();
  d->replaceTable(data);
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

vtkAbstractContextItem* PlotContainer::getItem() const
{
  return item;
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
