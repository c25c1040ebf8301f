#include <runsieve/adapters/DensityTable.h>

#include <runsieve/records/Distribution.h>

#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkTable.h>

#include <algorithm>
#include <cmath>

namespace runsieve {

namespace {

constexpr int densityPoints = 50;
constexpr double mostDrawable = 1e30; ///< beyond it the axes of VTK, which reckon in floats, find no ticks

/// Two columns, "x" and "pdf".
struct Samples
{
  vtkNew<vtkFloatArray> x;
  vtkNew<vtkFloatArray> pdf;

  Samples()
  {
    x->SetName("x");
    pdf->SetName("pdf");
  }

  void add(double at, double density)
  {
    x->InsertNextValue(static_cast<float>(at));
    pdf->InsertNextValue(static_cast<float>(density));
  }

  [[nodiscard]] vtkSmartPointer<vtkTable> table() const
  {
    auto made = vtkSmartPointer<vtkTable>::New();
    made->AddColumn(x);
    made->AddColumn(pdf);
    return made;
  }

  /// Whether the range of x is one in which the axes of VTK find ticks.
  [[nodiscard]] bool isDrawable() const
  {
    double range[2];
    x->GetRange(range, 0);
    return std::abs(range[0]) <= mostDrawable && std::abs(range[1]) <= mostDrawable;
  }
};

DensityTable pointTable(double at)
{
  Samples samples;
  samples.add(0.5 * at, 0.0);
  samples.add(0.98 * at, 0.0);
  samples.add(at, 1.0);
  samples.add(at / 0.98, 0.0);
  samples.add(2.0 * at, 0.0);
  const vtkSmartPointer<vtkTable> table = samples.table();
  return {table, samples.isDrawable() ? table : nullptr, at, at, 0.0};
}

/// Whether the density at x is infinite, or stands for one that is: rounding can put the last sample just
/// beside the end of the range.
bool isEndless(Distribution& distribution, double density, double end)
{
  constexpr double suspicious = 1e6;
  return std::isinf(density) || (density > suspicious && std::isinf(distribution.getPdf(end)));
}

} // namespace

DensityTable densityTable(Distribution& distribution)
{
  const auto [lower, upper] = distribution.getRange(Distribution::shown);
  if (distribution.getType() == Distribution::pointValue) {
    DensityTable made = pointTable(lower);
    made.upper = upper;
    return made;
  }
  const double step = (upper - lower) / (densityPoints - 1.0);
  Samples raw;
  Samples drawn;
  double height = 0.0;
  bool altered = false;
  for (int i = 0; i < densityPoints; ++i) {
    const double x = i * step + lower;
    const bool isLast = i == densityPoints - 1;
    const double density = distribution.getPdf(x);
    // What is a little further inside stands for an end without a height.
    const bool endless = isEndless(distribution, density, isLast ? upper : x);
    const double shown =
        std::min(endless ? distribution.getPdf(x + (isLast ? -0.1 : 0.1) * step) : density, mostDrawable);
    raw.add(x, density);
    drawn.add(x, shown);
    altered = altered || shown < density;
    height = shown > height ? shown : height;
  }
  const vtkSmartPointer<vtkTable> table = raw.table();
  if (!raw.isDrawable()) return {table, nullptr, lower, upper, height};
  return {table, altered ? drawn.table() : table, lower, upper, height};
}

} // namespace runsieve
