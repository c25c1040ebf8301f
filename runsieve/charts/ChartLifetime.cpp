#include <runsieve/charts/ChartLifetime.h>

#include <runsieve/charts/Cells.h>

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

namespace {

/// The scene of a chart that is no longer shown can be gone, and clearing would mark it dirty.
void clearUnseen(vtkChart* chart)
{
  vtkContextScene* scene = chart->GetScene();
  chart->SetScene(nullptr);
  chart->ClearPlots();
  chart->SetScene(scene);
}

} // namespace

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
  for (vtkChart* chart : chartsIn(matrix)) keep(chart);
}

void ChartLifetime::dropPlotsOfUnheld()
{
  if (!holder) return;
  for (vtkChart* chart : kept().charts)
    if (chart->GetReferenceCount() == 1) clearUnseen(chart);
}

} // namespace runsieve
