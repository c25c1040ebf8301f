#include <runsieve/stats/RankedTables.h>

#include <runsieve/core/kernels/RankedSample.h>
#include <runsieve/core/kernels/RowSpans.h>
#include <runsieve/core/kernels/SampleDensity.h>
#include <runsieve/core/kernels/SortedSample.h>
#include <runsieve/stats/RunIndex.h>
#include <runsieve/tables/ParameterNames.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkDoubleArray.h>
#include <vtkNew.h>
#include <vtkTable.h>

#include <algorithm>
#include <iostream>
#include <memory>
#include <string>

namespace runsieve {

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

/// The names of the parameters that a table has; columns past its end are those of an earlier, wider one.
std::vector<std::string> namesIn(ParameterSource const& source, vtkTable* table)
{
  std::vector<std::string> names;
  for (int column : source.columns) {
    if (!hasColumn(table, column)) break;
    names.push_back(parameterName(source.columnNames, source.allRuns, column));
  }
  return names;
}

/// Makes a pair of tables empty for the given parameters. Former columns are removed; leftovers of other
/// parameters would shift the positions by which the columns are read, and such a table is made anew.
void clearRankedTables(vtkSmartPointer<vtkTable>& ranks, vtkSmartPointer<vtkTable>& densities,
                       std::vector<std::string> const& names)
{
  std::vector<std::string> locations;
  for (std::string const& name : names) {
    if (ranks) {
      ranks->RemoveColumnByName(("Rank of " + name).c_str());
      ranks->RemoveColumnByName(("Sorted " + name).c_str());
    }
    if (densities) densities->RemoveColumnByName(("Density of " + name).c_str());
    locations.push_back("Locations of " + name);
  }
  if (!ranks || holdsOthers(ranks, {})) ranks = vtkSmartPointer<vtkTable>::New();
  const bool usable = densities && !holdsOthers(densities, locations) &&
                      (densities->GetNumberOfColumns() == 0 || densities->GetNumberOfRows() == densityPoints);
  if (!usable) densities = vtkSmartPointer<vtkTable>::New();
}

/// The sorted samples of the parameters of one table, by the orders of the runs where these are known to
/// hold.
class Samples
{
public:
  Samples(ParameterSource const& itsSource, vtkTable* itsTable, RowSpans const* itsRows, bool areAllRuns,
          RunIndex& itsOrders)
      : source(itsSource), table(itsTable), rows(itsRows), allRuns(areAllRuns), orders(itsOrders),
        stride(std::max(itsSource.stride, 1))
  {
    if (!rows) return;
    parts = runParts(*rows, stride);
    runMask.assign(static_cast<std::size_t>(source.allRuns->GetNumberOfRows() / stride + 1), 0);
    for (RunPart part : parts) runMask[static_cast<std::size_t>(part.run)] = 1;
  }

  std::vector<double> of(int column)
  {
    vtkDoubleArray* all = doubleColumn(source.allRuns, column);
    vtkDoubleArray* values = doubleColumn(table, column);
    const bool ordered = all && values && (rows || (allRuns && table == source.allRuns));
    ParameterOrder const* order = ordered ? orders.order(all, stride) : nullptr;
    if (order && allRuns) return order->sorted();
    std::vector<double> sample;
    if (order && order->constantWithinRuns() && order->agreesWith(parts, values->GetPointer(0))) {
      order->distinctOf(runMask.data(), sample);
    } else if (allRuns) {
      sample = valuesOf(table, column, stride);
      sortSample(sample);
    } else if (values) {
      sample = sortedDistinct(values->GetPointer(0), static_cast<std::size_t>(values->GetNumberOfTuples()));
    } else {
      const std::vector<double> converted = valuesOf(table, column, 1);
      sample = sortedDistinct(converted.data(), converted.size());
    }
    return sample;
  }

private:
  ParameterSource const& source;
  vtkTable* table;
  RowSpans const* rows;
  bool allRuns;
  RunIndex& orders;
  long long stride;
  std::vector<RunPart> parts;
  std::vector<unsigned char> runMask;
};

std::vector<std::vector<double>> samplesOf(ParameterSource const& source, vtkTable* table,
                                           RowSpans const* rows, bool allRuns, RunIndex& orders,
                                           std::size_t count)
{
  Samples samples(source, table, rows, allRuns, orders);
  std::vector<std::vector<double>> list;
  for (std::size_t i = 0; i < count; ++i) list.push_back(samples.of(source.columns[i]));
  return list;
}

AlignedSample alignedSample(ParameterSource const& source, std::size_t i, std::vector<double> const& sample,
                            std::size_t length)
{
  if (source.columns.size() != source.bounds.size()) return alignSample(sample, length, nullptr);
  const ParameterBound bound{source.bounds[i].first, source.bounds[i].second};
  return alignSample(sample, length, &bound);
}

void addRanks(vtkTable* table, std::string const& name, std::vector<double> const& sorted,
              ParameterRange const& range)
{
  auto rank = newValues(sorted.size());
  auto values = newValues(sorted.size());
  rankSample(sorted, range, rank.get(), values.get());
  addColumn(table, "Rank of " + name, std::move(rank), sorted.size());
  addColumn(table, "Sorted " + name, std::move(values), sorted.size());
}

void addDensity(vtkTable* table, std::string const& name, std::vector<double> const& sorted,
                ParameterRange const& range)
{
  auto density = newValues(densityPoints);
  auto locations = newValues(densityPoints);
  sampleDensity(sorted, range, locations.get(), density.get());
  addColumn(table, "Density of " + name, std::move(density), densityPoints);
  addColumn(table, "Locations of " + name, std::move(locations), densityPoints);
}

} // namespace

void rankParameters(ParameterSource const& source, vtkTable* table, RowSpans const* rows, RunIndex& orders,
                    std::vector<vtkSmartPointer<vtkTable>>& tables, std::size_t index)
{
  if (tables.size() <= index + 1) tables.resize(index + 2);
  const std::vector<std::string> names = namesIn(source, table);
  clearRankedTables(tables[index], tables[index + 1], names);
  if (source.columns.size() != source.bounds.size() && !names.empty())
    std::cerr << "Warning "
              << "void PlotContainer::generateRankedParameters(vtkSmartPointer<vtkTable>, size_t)"
              << ": the number of parameter columns does not match the number of parameter bounds"
              << std::endl;

  const std::vector<std::vector<double>> samples =
      samplesOf(source, table, rows, index == 0, orders, names.size());
  std::size_t M = 0;
  for (auto const& sample : samples) M = std::max(M, sample.size());
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (samples[i].size() != M)
      std::cout << "Huston we have a problem. Encountered a parameter list with size " << samples[i].size()
                << ", expected " << M << std::endl;
    // What stands in for missing values is free: the quantiles of the shorter list are stretched.
    const auto [sorted, range] = alignedSample(source, i, samples[i], M);
    addRanks(tables[index], names[i], sorted, range);
    addDensity(tables[index + 1], names[i], sorted, range);
  }
}

} // namespace runsieve
