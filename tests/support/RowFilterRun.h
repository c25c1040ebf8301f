#pragma once

#include "Selections.h"

#include <vtkAnnotationLayers.h>
#include <vtkInformation.h>
#include <vtkNew.h>

namespace runsieve::test {

/// A row filter with its table and the reports that it makes.
template <class Filter> struct RowFilterRun
{
  vtkSmartPointer<vtkTable> table;
  vtkNew<Filter> filter;
  ErrorLog errors{filter};

  void setTable(vtkSmartPointer<vtkTable> input)
  {
    table = input;
    filter->SetInputData(0, table);
  }

  void selectBy(vtkSelection* selection) { filter->SetInputData(1, selection); }
  void select(Rows const& rows) { selectBy(selectionOf(rows)); }

  void annotate(std::vector<vtkSmartPointer<vtkAnnotation>> const& annotations)
  {
    vtkNew<vtkAnnotationLayers> layers;
    for (auto const& annotation : annotations) layers->AddAnnotation(annotation);
    filter->SetInputData(2, layers);
  }

  /// Runs even if nothing is newer: the filter itself has changed its input.
  void run()
  {
    filter->Modified();
    filter->Update();
  }

  vtkTable* output(int port) { return vtkTable::SafeDownCast(filter->GetOutputDataObject(port)); }
  std::vector<double> output(int port, std::string const& column) { return numbers(output(port), column); }
  std::vector<double> flags(std::string const& name) { return numbers(table, name); }
};

/// An annotation that selects rows and carries the keys given; a negative value means no key.
inline vtkSmartPointer<vtkAnnotation> annotationWith(Rows const& rows, int enable, int hide)
{
  auto annotation = annotationOf(rows);
  if (enable >= 0) annotation->GetInformation()->Set(vtkAnnotation::ENABLE(), enable);
  if (hide >= 0) annotation->GetInformation()->Set(vtkAnnotation::HIDE(), hide);
  return annotation;
}

} // namespace runsieve::test
