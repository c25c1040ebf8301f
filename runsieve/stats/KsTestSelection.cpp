#include <runsieve/plot/PlotContainer.h>

#include <runsieve/plot/TableAccess.h>
#include <runsieve/stats/KolmogorovSmirnov.h>

#include <algorithm>
#include <cmath>

using namespace runsieve;
using Ks = KolmogorovSmirnov<double*, double*>;

void PlotContainer::ksTestSelection(std::size_t first, std::size_t second)
{
  ksStatistics.clear();
  auto at = [this](std::size_t i) { return i < tables.size() ? tables[i].GetPointer() : nullptr; };
  vtkTable* a = at(first);
  vtkTable* b = at(second);
  if (!a || !b) return;
  const vtkIdType pairs = std::min(a->GetNumberOfColumns(), b->GetNumberOfColumns()) / 2;
  const auto nA = static_cast<double>(a->GetNumberOfRows());
  const auto nB = static_cast<double>(b->GetNumberOfRows());
  const double effective = std::floor(nA * nB / (nA + nB)); // NaN for two empty samples
  const std::size_t n = effective > 0.0 ? static_cast<std::size_t>(effective) : 0;
  for (vtkIdType i = 0; i < pairs; ++i) {
    vtkDoubleArray* x = doubleColumn(a, 2 * i + 1);
    vtkDoubleArray* y = doubleColumn(b, 2 * i + 1);
    double d = 0.0;
    if (x && y && nA > 0.0 && nB > 0.0)
      d = Ks::statistic(x->GetPointer(0), x->GetPointer(0) + x->GetNumberOfTuples(), y->GetPointer(0),
                        y->GetPointer(0) + y->GetNumberOfTuples());
    ksStatistics.push_back({std::min(Ks::p(d, n), 1.0), d});
  }
}
