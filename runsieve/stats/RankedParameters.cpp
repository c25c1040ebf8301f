#include <runsieve/plot/PlotContainer.h>

#include <runsieve/plot/TableAccess.h>
#include <runsieve/selection/RowSpans.h>
#include <runsieve/stats/RankedSample.h>
#include <runsieve/stats/RunIndex.h>
#include <runsieve/stats/SampleDensity.h>
#include <runsieve/stats/SortedSample.h>

#include <vtkNew.h>

#include <algorithm>
#include <iostream>
#include <memory>
#include <string>

using namespace runsieve;

namespace {

/// The values of a numeric column; none for any other column.
std::vector<double> valuesOf(vtkTable* table, int column, long long step)
{
  std::vector<double> values;
  auto* array = vtkDataArray::SafeDownCast(table->GetColumn(column));
  if (!array) return values;
  const vtkIdType rows = array->GetNumberOfTuples();
  values.reserve(static_cast<std::size_t>(rows / step + 1));
  for (vtkIdType row = 0; row < rows; row += step) values.push_back(array->GetComponent(row, 0));
  return values;
}

void addColumn(vtkTable* table, std::string const& name, std::unique_ptr<double[]> values, std::size_t count)
{
  vtkNew<vtkDoubleArray> column;
  column->SetName(name.c_str());
  column->SetArray(values.release(), static_cast<vtkIdType>(count), 0, vtkDoubleArray::VTK_DATA_ARRAY_DELETE);
  table->AddColumn(column);
}

std::unique_ptr<double[]> newValues(std::size_t count)
{
  return std::unique_ptr<double[]>(new double[count]);
}

/// Whether a table holds any column but those of the given names.
bool holdsOthers(vtkTable* table, std::vector<std::string> const& names)
{
  for (vtkIdType c = 0; c < table->GetNumberOfColumns(); ++c)
    if (std::find(names.begin(), names.end(), columnName(table, c)) == names.end()) return true;
  return false;
}

} // namespace

bool PlotContainer::rankedTablesStand() const
{
  return metaData->rankedParametersValid && rankedFrom.GetPointer() == plotData.GetPointer() &&
         tables.size() >= 2 && tables[0] && tables[1];
}

std::string PlotContainer::parameterName(std::size_t parameter) const
{
  const int column = metaData->parameterColumns[parameter];
  const auto i = static_cast<std::size_t>(column);
  if (column >= 0 && i < typedColumnNames.size()) return typedColumnNames[i].second;
  return bareParameterName(columnName(plotData, column));
}

void PlotContainer::generateRankedParameters(vtkSmartPointer<vtkTable> table, std::size_t index)
{
  if (!table) return;
  // Whoever asks for all runs anew may have written to columns without a word.
  if (index == 0) runIndex->clear();
  rankParameters(table, index, nullptr);
}

void PlotContainer::clearRankedTables(std::size_t index, std::vector<std::string> const& names)
{
  if (tables.size() <= index + 1) tables.resize(index + 2);
  std::vector<std::string> locations;
  for (std::string const& name : names) {
    if (tables[index]) {
      tables[index]->RemoveColumnByName(("Rank of " + name).c_str());
      tables[index]->RemoveColumnByName(("Sorted " + name).c_str());
    }
    if (tables[index + 1]) tables[index + 1]->RemoveColumnByName(("Density of " + name).c_str());
    locations.push_back("Locations of " + name);
  }
  // Leftovers of other parameters would shift the positions by which the columns are read.
  if (!tables[index] || holdsOthers(tables[index], {})) tables[index] = vtkSmartPointer<vtkTable>::New();
  const bool densityUsable =
      tables[index + 1] && !holdsOthers(tables[index + 1], locations) &&
      (tables[index + 1]->GetNumberOfColumns() == 0 || tables[index + 1]->GetNumberOfRows() == densityPoints);
  if (!densityUsable) tables[index + 1] = vtkSmartPointer<vtkTable>::New();
}

std::vector<std::vector<double>> PlotContainer::parameterSamples(vtkTable* table, bool allRuns,
                                                                 RowSpans const* rows, std::size_t count)
{
  const long long stride = std::max(metaData->getStride(), 1);
  std::vector<RunPart> parts;
  std::vector<unsigned char> runMask;
  if (rows) {
    parts = runParts(*rows, stride);
    runMask.assign(static_cast<std::size_t>(plotData->GetNumberOfRows() / stride + 1), 0);
    for (RunPart part : parts) runMask[static_cast<std::size_t>(part.run)] = 1;
  }
  std::vector<std::vector<double>> samples(count);
  for (std::size_t i = 0; i < count; ++i) {
    const int column = metaData->parameterColumns[i];
    vtkDoubleArray* source = doubleColumn(plotData, column);
    vtkDoubleArray* values = doubleColumn(table, column);
    const bool ordered = source && values && (rows || (allRuns && table == plotData));
    ParameterOrder const* order = ordered ? runIndex->order(source, stride) : nullptr;
    if (order && allRuns) {
      samples[i] = order->sorted();
    } else if (order && order->constantWithinRuns() && order->agreesWith(parts, values->GetPointer(0))) {
      order->distinctOf(runMask.data(), samples[i]);
    } else if (allRuns) {
      samples[i] = valuesOf(table, column, stride);
      sortSample(samples[i]);
    } else if (values) {
      samples[i] =
          sortedDistinct(values->GetPointer(0), static_cast<std::size_t>(values->GetNumberOfTuples()));
    } else {
      const std::vector<double> converted = valuesOf(table, column, 1);
      samples[i] = sortedDistinct(converted.data(), converted.size());
    }
  }
  return samples;
}

void PlotContainer::rankParameters(vtkTable* table, std::size_t index, RowSpans const* rows)
{
  // Columns past the end of the table are those of an earlier, wider one.
  std::vector<std::string> names;
  for (std::size_t i = 0; i < metaData->parameterColumns.size(); ++i)
    if (hasColumn(table, metaData->parameterColumns[i]))
      names.push_back(parameterName(i));
    else
      break;
  clearRankedTables(index, names);

  const bool bounded = metaData->parameterColumns.size() == parameterBounds.size();
  if (!bounded && !names.empty())
    std::cerr << "Warning "
              << "void PlotContainer::generateRankedParameters(vtkSmartPointer<vtkTable>, size_t)"
              << ": the number of parameter columns does not match the number of parameter bounds"
              << std::endl;

  std::vector<std::vector<double>> samples = parameterSamples(table, index == 0, rows, names.size());
  std::size_t M = 0;
  for (auto const& sample : samples) M = std::max(M, sample.size());
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (samples[i].size() != M)
      std::cout << "Huston we have a problem. Encountered a parameter list with size " << samples[i].size()
                << ", expected " << M << std::endl;
    ParameterRange range;
    if (bounded) {
      const ParameterBound bound{parameterBounds[i].first, parameterBounds[i].second};
      range = rangeOf(samples[i], &bound);
    } else {
      range = rangeOf(samples[i], nullptr);
    }
    // A column without numbers among others: a step in the middle, the same in every sample.
    if (samples[i].empty() && M > 0) range = {0.0, 1.0, 1.0, true};
    const std::vector<double> sorted = stretchTo(samples[i], M);

    auto rank = newValues(M);
    auto values = newValues(M);
    rankSample(sorted, range, rank.get(), values.get());
    ::addColumn(tables[index], "Rank of " + names[i], std::move(rank), M);
    ::addColumn(tables[index], "Sorted " + names[i], std::move(values), M);

    auto density = newValues(densityPoints);
    auto locations = newValues(densityPoints);
    sampleDensity(sorted, range, locations.get(), density.get());
    ::addColumn(tables[index + 1], "Density of " + names[i], std::move(density), densityPoints);
    ::addColumn(tables[index + 1], "Locations of " + names[i], std::move(locations), densityPoints);
  }
  if (table == plotData) {
    metaData->rankedParametersValid = true;
    rankedFrom = plotData;
  }
}
