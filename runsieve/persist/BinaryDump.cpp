#include <runsieve/plot/PlotContainer.h>

#include <runsieve/persist/DumpStream.h>
#include <runsieve/plot/TableAccess.h>

using namespace runsieve;

QByteArray* PlotContainer::binaryDump()
{
  return new QByteArray(writeDump(typedColumnNames, plotData));
}

void PlotContainer::readDump(QByteArray* dump)
{
  if (!dump) return;
  replacePlotData(vtkSmartPointer<vtkTable>::New());
  typedColumnNames.clear();
  runsieve::readDump(*dump, typedColumnNames, plotData);
  selectionFromFlagColumn();
  if (metaData->coordinateWindow.valid)
    coordinateWindows[ReducedMetaData{entry0(metaData->xColumns), entry0(metaData->yColumns),
                                      metaData->getPlotStyle()}] = metaData->coordinateWindow;
  generateQuartiles();
  selectionUpdatePending = false;
}
