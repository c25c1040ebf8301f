#include <runsieve/plot/PlotContainer.h>

#include <runsieve/plot/TableAccess.h>

#include <vtkFloatArray.h>
#include <vtkNew.h>

#include <cmath>

using namespace runsieve;

namespace {

constexpr int exampleRows = 400;
constexpr double sixPi = 18.84955592153876;
constexpr double eighteenPi = 56.548667764616276;

void addBlock(vtkTable* table, const char* name, float* block)
{
  vtkNew<vtkFloatArray> column;
  column->SetName(name);
  column->SetArray(block, exampleRows, 0, vtkFloatArray::VTK_DATA_ARRAY_DELETE);
  table->AddColumn(column);
}

void addFloats(vtkTable* table, const char* name, std::vector<double> const& values)
{
  vtkNew<vtkFloatArray> column;
  column->SetName(name);
  for (double value : values) column->InsertNextValue(static_cast<float>(value));
  table->AddColumn(column);
}

} // namespace

void PlotContainer::setSimpleXYPlot(std::vector<double>& x, std::vector<double>& y,
                                    std::vector<double>& errors)
{
  metaData->blockSignals(true);
  replacePlotData(vtkSmartPointer<vtkTable>::New());
  if (x.size() != y.size()) {
    if (chartXY) chartXY->SetTitle("SimpleXYPlot: x and y sizes differ.");
    return; // the settings stay blocked until the next redraw
  }
  addFloats(plotData, "x", x);
  addFloats(plotData, "y", y);
  const bool withErrors = errors.size() == x.size();
  if (withErrors) addFloats(plotData, "error", errors);
  metaData->setPlotStyle(withErrors ? scatterPlotWithErrorBars : scatterPlot);
  setEntry0(metaData->zColumns, withErrors ? 2 : 0);
  setEntry0(metaData->xColumns, 0);
  setEntry0(metaData->yColumns, 1);
  setLineWidth(1.0);
  setPointSize(2.0);
  setMarkerStyle(3);
  redraw();
  metaData->blockSignals(false);
}

int PlotContainer::addColumn(std::vector<double> const& values, std::string const& name)
{
  if (static_cast<vtkIdType>(values.size()) != plotData->GetNumberOfRows()) return -1;
  vtkNew<vtkDoubleArray> column;
  column->SetName(name.c_str());
  for (double value : values) column->InsertNextValue(value);
  plotData->AddColumn(column);
  return static_cast<int>(plotData->GetNumberOfColumns()) - 1;
}

void PlotContainer::example()
{
  auto* xs = new float[exampleRows];
  auto* ys = new float[exampleRows];
  auto* zs = new float[exampleRows];
  for (int i = 0; i < exampleRows; ++i) {
    const float x = static_cast<float>(i) / 400;
    const double wide = x;
    const auto y =
        static_cast<float>(0.16 * std::cos(eighteenPi * wide) + (0.4 * std::cos(sixPi * wide) + x * x) - 0.7);
    xs[i] = x;
    ys[i] = y;
    zs[i] = static_cast<float>(std::sin(static_cast<double>(y)) * std::cos(wide));
  }
  auto table = vtkSmartPointer<vtkTable>::New();
  addBlock(table, "x", xs);
  addBlock(table, "y", ys);
  addBlock(table, "z", zs);
  replacePlotData(table);
  setPlotCols(0, 1, 0, false);
  setPlotTitle("Example Plot");
}
