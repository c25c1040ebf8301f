#pragma once

#include "TableBuilder.h"

#include <runsieve/records/vtkPrepareKMeansTable.h>

#include <vtkDataObject.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkOrderStatistics.h>
#include <vtkTransposeTable.h>

namespace runsieve::test {

/// Minimum, quartiles and maximum of each column by the filter of VTK: a column of labels, then one for each.
inline vtkSmartPointer<vtkTable> filteredQuantiles(vtkTable* samples)
{
  vtkNew<vtkOrderStatistics> filter;
  filter->SetInputData(samples);
  for (vtkIdType c = 0; c < samples->GetNumberOfColumns(); ++c) filter->AddColumn(samples->GetColumnName(c));
  filter->SetQuantize(true);
  filter->SetLearnOption(true);
  filter->SetDeriveOption(true);
  filter->Update();
  auto* blocks = vtkMultiBlockDataSet::SafeDownCast(filter->GetOutputDataObject(1));
  return vtkTable::SafeDownCast(blocks->GetBlock(blocks->GetNumberOfBlocks() - 1));
}

/// The same of each time point of a column of stacked runs: a row per time.
inline vtkSmartPointer<vtkTable> filteredQuartilesByTime(vtkTable* stacked, std::string const& column,
                                                         int stride)
{
  auto runs = vtkSmartPointer<vtkPrepareKMeansTable>::Take(vtkPrepareKMeansTable::New());
  runs->SetInputData(0, stacked);
  runs->SetInputArrayToProcess(0, 0, 0, vtkDataObject::FIELD_ASSOCIATION_ROWS, column.c_str());
  runs->SetStride(stride);
  runs->Update();
  vtkNew<vtkTransposeTable> transpose;
  transpose->SetUseIdColumn(true);
  transpose->SetInputData(0, filteredQuantiles(runs->GetOutput()));
  transpose->Update();
  return transpose->GetOutput();
}

} // namespace runsieve::test
