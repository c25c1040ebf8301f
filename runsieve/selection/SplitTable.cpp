#include <runsieve/selection/SplitTable.h>

#include <runsieve/selection/FilteredRows.h>
#include <runsieve/selection/vtkCombinedFilterAndSelectedRows.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkAnnotationLink.h>
#include <vtkTable.h>

#include <string>

namespace runsieve {

namespace {

int findTimeColumn(vtkTable* table, int otherwise)
{
  for (vtkIdType c = 0; c < table->GetNumberOfColumns(); ++c) {
    const std::string name = columnName(table, c);
    for (const char* word : {"Value", "Time", "Period"})
      if (name.find(word) != std::string::npos) return static_cast<int>(c);
  }
  return otherwise;
}

} // namespace

SplitTable splitBySelection(vtkAnnotationLink* link, vtkTable* table, std::vector<int> const& parameters,
                            int stride, RunIndex& index, BlockRunner const& runner)
{
  auto filter =
      vtkSmartPointer<vtkCombinedFilterAndSelectedRows>::Take(vtkCombinedFilterAndSelectedRows::New());
  filter->ParameterColumns = parameters;
  filter->SetParaCount(static_cast<long long>(parameters.size()));
  filter->SetAnnotationLayersConnection(link->GetOutputPort(0));
  filter->SetSelectionConnection(link->GetOutputPort(2));
  filter->SetInputData(0, table);
  filter->AddOriginalRowIdsArrayOff();
  filter->SetTimeColumnIndex(findTimeColumn(table, parameters[0] - 2));
  filter->SetStride(stride);
  FilteredRows::help(*filter, index, runner);
  filter->Update();

  // The filter dies here, so its outputs are handed over instead of copied.
  SplitTable split;
  split.passing = vtkSmartPointer<vtkTable>::New();
  split.passing->ShallowCopy(vtkTable::SafeDownCast(filter->GetOutputDataObject(0)));
  split.others = vtkTable::SafeDownCast(filter->GetOutputDataObject(1));
  split.passingRows = FilteredRows::of(*filter, 0);
  split.otherRows = FilteredRows::of(*filter, 1);
  return split;
}

} // namespace runsieve
