#include <runsieve/persist/TableText.h>

#include <runsieve/persist/EvenTable.h>

#include <vtkDelimitedTextReader.h>
#include <vtkDelimitedTextWriter.h>
#include <vtkNew.h>
#include <vtkTable.h>

#include <cstddef>
#include <fstream>

namespace runsieve {

namespace {

/// The time of the reader grows with the square of the columns, to minutes beyond this number.
constexpr std::ptrdiff_t mostColumns = 30000;

/// Commas in the first line of a file, none if it cannot be read.
std::ptrdiff_t commasInHeader(std::string const& fileName)
{
  std::ifstream file(fileName, std::ios::binary);
  std::ptrdiff_t commas = 0;
  // Not by iterators on the buffer, which throw for a folder.
  for (char c = 0; file.get(c) && c != '\n' && c != '\r';) commas += c == ',' ? 1 : 0;
  return commas;
}

} // namespace

char* writeText(vtkTable* table, std::string const& fileName)
{
  vtkNew<vtkDelimitedTextWriter> writer;
  writer->SetFileName(fileName.c_str());
  writer->SetInputData(evenTable(table));
  writer->SetWriteToOutputString(fileName.empty());
  writer->Write();
  return fileName.empty() ? writer->RegisterAndGetOutputString() : nullptr;
}

vtkSmartPointer<vtkTable> readText(std::string const& fileName)
{
  if (commasInHeader(fileName) >= mostColumns) {
    vtkGenericWarningMacro(<< fileName << " has more than " << mostColumns << " columns and is not read.");
    return vtkSmartPointer<vtkTable>::New();
  }
  vtkNew<vtkDelimitedTextReader> reader;
  reader->SetFileName(fileName.c_str());
  reader->SetHaveHeaders(true);
  reader->SetDetectNumericColumns(true);
  reader->SetForceDouble(true);
  reader->Update();
  return evenTable(reader->GetOutput(0));
}

} // namespace runsieve
