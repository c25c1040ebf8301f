#pragma once

#include <vtkSmartPointer.h>

#include <QPointer>

class QObject;
class vtkChart;
class vtkChartMatrix;

namespace runsieve {

class KeptCharts;

/// Keeps charts alive that an event may still be running in.
///
/// A selection rebuilds the view from inside the mouse event of the chart that was dragged on, and the
/// rebuild can drop that very chart. Charts given to keep() live until control is back in the event loop from
/// which the event came.
class ChartLifetime
{
public:
  ChartLifetime() = default;
  ~ChartLifetime();

  void keep(vtkChart* chart);
  void keepAll(vtkChartMatrix* matrix);
  /// Empties the charts that nobody else holds any more: their plots hold tables, and an event loop may be
  /// long in coming.
  void dropPlotsOfUnheld();

private:
  KeptCharts& kept();

  QPointer<QObject> holder;
};

} // namespace runsieve
