#include "Selections.h"

#include <vtkCommand.h>
#include <vtkDataSetAttributes.h>
#include <vtkExecutive.h>
#include <vtkInformation.h>
#include <vtkLogger.h>

namespace runsieve::test {
namespace {

vtkSmartPointer<vtkSelectionNode> indexNode(Rows const& rows, int fieldType)
{
  auto node = vtkSmartPointer<vtkSelectionNode>::New();
  node->SetFieldType(fieldType);
  node->SetContentType(vtkSelectionNode::INDICES);
  node->SetSelectionList(makeIds(rows));
  return node;
}

} // namespace

vtkSmartPointer<vtkSelectionNode> rowNode(Rows const& rows, bool inverse)
{
  auto node = indexNode(rows, vtkSelectionNode::ROW);
  if (inverse) node->GetProperties()->Set(vtkSelectionNode::INVERSE(), 1);
  return node;
}

vtkSmartPointer<vtkSelectionNode> pointNode(Rows const& rows)
{
  return indexNode(rows, vtkSelectionNode::POINT);
}

vtkSmartPointer<vtkSelection> selectionOf(std::vector<vtkSmartPointer<vtkSelectionNode>> const& nodes)
{
  auto selection = vtkSmartPointer<vtkSelection>::New();
  for (auto const& node : nodes) selection->AddNode(node);
  return selection;
}

vtkSmartPointer<vtkSelection> selectionOf(Rows const& rows)
{
  return selectionOf({rowNode(rows)});
}

vtkSmartPointer<vtkAnnotation> annotationOf(Rows const& rows)
{
  auto annotation = vtkSmartPointer<vtkAnnotation>::New();
  annotation->SetSelection(selectionOf(rows));
  return annotation;
}

std::vector<double> numbers(vtkTable* table, std::string const& column)
{
  return numbers(table ? vtkDataArray::SafeDownCast(table->GetColumnByName(column.c_str())) : nullptr);
}

std::vector<double> numbers(vtkDataArray* column)
{
  std::vector<double> values;
  for (vtkIdType i = 0; column && i < column->GetNumberOfTuples(); ++i)
    values.push_back(column->GetComponent(i, 0));
  return values;
}

std::vector<std::string> columnNames(vtkTable* table)
{
  std::vector<std::string> names;
  for (vtkIdType i = 0; table && i < table->GetNumberOfColumns(); ++i)
    names.emplace_back(table->GetColumnName(i));
  return names;
}

int countColumns(vtkTable* table, std::string const& name)
{
  int count = 0;
  for (auto const& other : columnNames(table)) count += other == name;
  return count;
}

ErrorLog::ErrorLog(vtkAlgorithm* algorithm)
{
  observer->SetClientData(&messages);
  observer->SetCallback([](vtkObject*, unsigned long, void* messages, void* text) {
    *static_cast<std::string*>(messages) += static_cast<char const*>(text);
  });
  algorithm->AddObserver(vtkCommand::ErrorEvent, observer);
  algorithm->GetExecutive()->AddObserver(vtkCommand::ErrorEvent, observer);
}

OutputWindowLog::OutputWindowLog()
{
  vtkOutputWindow::SetInstance(window);
  vtkLogger::SetStderrVerbosity(vtkLogger::VERBOSITY_OFF); // the log gets each report beside the window
}

OutputWindowLog::~OutputWindowLog()
{
  vtkLogger::SetStderrVerbosity(vtkLogger::VERBOSITY_INFO);
  vtkOutputWindow::SetInstance(former);
}

} // namespace runsieve::test
