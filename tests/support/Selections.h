#pragma once

#include "TableBuilder.h"

#include <vtkAlgorithm.h>
#include <vtkAnnotation.h>
#include <vtkCallbackCommand.h>
#include <vtkOutputWindow.h>
#include <vtkSelection.h>
#include <vtkSelectionNode.h>
#include <vtkSmartPointer.h>
#include <vtkStringOutputWindow.h>
#include <vtkTable.h>

#include <string>
#include <vector>

namespace runsieve::test {

using Rows = std::vector<vtkIdType>;

/// A selection node that names rows, or with `inverse` all rows but these.
vtkSmartPointer<vtkSelectionNode> rowNode(Rows const& rows, bool inverse = false);
/// The same as a chart writes it: of field type POINT.
vtkSmartPointer<vtkSelectionNode> pointNode(Rows const& rows);
vtkSmartPointer<vtkSelection> selectionOf(std::vector<vtkSmartPointer<vtkSelectionNode>> const& nodes);
vtkSmartPointer<vtkSelection> selectionOf(Rows const& rows);
/// An annotation that selects rows; it has neither of the keys ENABLE and HIDE.
vtkSmartPointer<vtkAnnotation> annotationOf(Rows const& rows);

/// The values of a numeric column as doubles; empty if there is no such column.
std::vector<double> numbers(vtkTable* table, std::string const& column);
std::vector<double> numbers(vtkDataArray* column);
std::vector<std::string> columnNames(vtkTable* table);
/// How many columns bear a name.
int countColumns(vtkTable* table, std::string const& name);

/// Collects the error reports of an algorithm and of its executive instead of letting them reach the log.
class ErrorLog
{
public:
  explicit ErrorLog(vtkAlgorithm* algorithm);
  [[nodiscard]] std::string const& text() const { return messages; }

private:
  std::string messages;
  vtkNew<vtkCallbackCommand> observer;
};

/// Collects what objects without an observer report, as long as it lives.
class OutputWindowLog
{
public:
  OutputWindowLog();
  ~OutputWindowLog();
  OutputWindowLog(OutputWindowLog const&) = delete;
  OutputWindowLog& operator=(OutputWindowLog const&) = delete;
  [[nodiscard]] std::string text() { return window->GetOutput(); }

private:
  vtkSmartPointer<vtkOutputWindow> former = vtkOutputWindow::GetInstance();
  vtkNew<vtkStringOutputWindow> window;
};

} // namespace runsieve::test
