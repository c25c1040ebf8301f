#include <runsieve/plot/ChartLifetime.h>

#include <vtkChart.h>
#include <vtkChartMatrix.h>

#include <QObject>

#include <set>

namespace runsieve {

/// Deferred deletion of a QObject waits for the event loop in which it was asked for, also across nested
/// loops, such as that of a dialog which a host opens from a selection.
class KeptCharts : public QObject
{
public:
  std::set<vtkSmartPointer<vtkChart>> charts;
};

ChartLifetime::~ChartLifetime() = default; // the holder outlives this object, as the event that it serves may

KeptCharts& ChartLifetime::kept()
{
  if (!holder) {
    holder = new KeptCharts;
    holder->deleteLater();
  }
  return static_cast<KeptCharts&>(*holder);
}

void ChartLifetime::keep(vtkChart* chart)
{
  if (chart) kept().charts.insert(chart);
}

void ChartLifetime::keepAll(vtkChartMatrix* matrix)
{
  const vtkVector2i size = matrix->GetSize();
  for (int row = 0; row < size.GetY(); ++row)
    for (int column = 0; column < size.GetX(); ++column) keep(matrix->GetChart({column, row}));
}

} // namespace runsieve
