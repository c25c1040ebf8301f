#include <runsieve/plot/PlotContainerPrivate.h>

#include <runsieve/persist/DumpStream.h>
#include <runsieve/persist/TableText.h>
#include <runsieve/records/PlotMetaData.h>
#include <runsieve/tables/WindowKey.h>

#include <vtkTable.h>

using namespace runsieve;

QByteArray* PlotContainer::binaryDump()
{
  return new QByteArray(writeDump(typedColumnNames, plotData));
}

void PlotContainer::readDump(QByteArray* dump)
{
  if (!dump) return;
  d->replaceTable(vtkSmartPointer<vtkTable>::New());
  typedColumnNames.clear();
  runsieve::readDump(*dump, typedColumnNames, plotData);
  selectionFromFlagColumn();
  if (metaData->coordinateWindow.valid) coordinateWindows[windowKey(*metaData)] = metaData->coordinateWindow;
  generateQuartiles();
  selectionUpdatePending = false;
}

char* PlotContainer::saveData(std::string fileName, bool keepAllColumns)
{
  if (!keepAllColumns) shrinkToColumnSelection();
  return writeText(plotData, fileName);
}

void PlotContainer::loadData(std::string fileName)
{
  d->replaceTable(readText(fileName));
}
