#include <runsieve/selection/RunNumbers.h>

#include <runsieve/tables/TableAccess.h>

#include <vtkDoubleArray.h>
#include <vtkIdTypeArray.h>
#include <vtkIntArray.h>
#include <vtkTable.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>

namespace runsieve {

namespace {

/// A run number, unless the value is no number that fits.
std::optional<int> runNumber(double value)
{
  constexpr double lowest = std::numeric_limits<int>::min();
  constexpr double highest = std::numeric_limits<int>::max();
  if (!(value > lowest - 1.0 && value < highest + 1.0)) return std::nullopt;
  return static_cast<int>(value);
}

std::uint64_t extended(int value)
{
  return static_cast<std::uint64_t>(static_cast<std::int64_t>(value));
}

template <class Flags> std::set<int> flaggedRuns(Flags* flags, vtkDoubleArray* runColumn)
{
  std::set<int> runs;
  const vtkIdType rows = std::min(flags->GetNumberOfTuples(), runColumn->GetNumberOfTuples());
  for (vtkIdType i = 0; i < rows; ++i) {
    if (flags->GetValue(i) == 0) continue;
    // Rows of one run stand together, so the hint makes insertion cheap.
    if (auto run = runNumber(runColumn->GetValue(i))) runs.insert(runs.end(), *run);
  }
  return runs;
}

} // namespace

std::set<int> runsOfFlags(vtkIdTypeArray* flags, vtkDoubleArray* runColumn)
{
  return flaggedRuns(flags, runColumn);
}

std::set<int> runsOfFlags(vtkIntArray* flags, vtkDoubleArray* runColumn)
{
  return flaggedRuns(flags, runColumn);
}

vtkDoubleArray* findIndexColumn(vtkTable* table, int otherwise)
{
  for (vtkIdType c = 0; c < table->GetNumberOfColumns(); ++c)
    if (columnName(table, c).find("Index") != std::string::npos) return doubleColumn(table, c);
  return doubleColumn(table, otherwise);
}

vtkSmartPointer<vtkIdTypeArray> rowsOfRuns(std::set<int> const& runs, vtkDoubleArray* runColumn, int stride,
                                           int timeIndex)
{
  const std::uint64_t step = extended(stride);
  const std::uint64_t offset = extended(timeIndex) % step;
  const auto rows = static_cast<std::uint64_t>(runColumn->GetNumberOfTuples());
  auto found = vtkSmartPointer<vtkIdTypeArray>::New();
  std::uint64_t row = 0;
  for (int run : runs) {
    while (row < rows && runColumn->GetValue(static_cast<vtkIdType>(row)) < run)
      row = rows - row > step ? row + step : rows;
    if (row < rows && runColumn->GetValue(static_cast<vtkIdType>(row)) == run)
      found->InsertNextValue(static_cast<vtkIdType>(row + offset));
  }
  return found;
}

RowSpans firstRowsOfRuns(std::set<int> const& runs, vtkDoubleArray* runColumn, long long stride)
{
  const long long rows = runColumn->GetNumberOfTuples();
  RowSpans found;
  long long row = 0;
  for (int run : runs) {
    while (row < rows && runColumn->GetValue(row) != run) row += stride;
    if (row >= rows) break;
    found.append(row);
  }
  return found;
}

} // namespace runsieve
