#include <runsieve/plot/PlotContainer.h>

#include <runsieve/persist/EvenTable.h>

#include <vtkDelimitedTextReader.h>
#include <vtkDelimitedTextWriter.h>
#include <vtkNew.h>

using namespace runsieve;

char* PlotContainer::saveData(std::string fileName, bool keepAllColumns)
{
  vtkNew<vtkDelimitedTextWriter> writer;
  writer->SetFileName(fileName.c_str());
  if (!keepAllColumns) shrinkToColumnSelection();
  writer->SetInputData(evenTable(plotData));
  writer->SetWriteToOutputString(fileName.empty());
  writer->Write();
  return fileName.empty() ? writer->RegisterAndGetOutputString() : nullptr;
}

void PlotContainer::loadData(std::string fileName)
{
  vtkNew<vtkDelimitedTextReader> reader;
  reader->SetFileName(fileName.c_str());
  reader->SetHaveHeaders(true);
  reader->SetDetectNumericColumns(true);
  reader->SetForceDouble(true);
  reader->Update();
  replacePlotData(evenTable(reader->GetOutput(0)));
}
