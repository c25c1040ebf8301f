#include <runsieve/plot/PlotContainer.h>

#include <vtkFloatArray.h>
#include <vtkNew.h>

#include <cmath>

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

} // namespace

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
  metaData->plotTitle = "Example Plot";
  ensureChart()->SetTitle(metaData->plotTitle);
}
