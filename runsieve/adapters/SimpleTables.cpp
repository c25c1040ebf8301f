#include <runsieve/adapters/SimpleTables.h>

#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkTable.h>

#include <cmath>

namespace runsieve {

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

vtkSmartPointer<vtkTable> pointTable(std::vector<double> const& x, std::vector<double> const& y,
                                     std::vector<double> const& errors)
{
  auto table = vtkSmartPointer<vtkTable>::New();
  addFloats(table, "x", x);
  addFloats(table, "y", y);
  if (errors.size() == x.size()) addFloats(table, "error", errors);
  return table;
}

vtkSmartPointer<vtkTable> exampleTable()
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
  return table;
}

} // namespace runsieve
