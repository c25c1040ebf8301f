#include <runsieve/stats/RankedTables.h>

#include <runsieve/core/kernels/RankedSample.h>
#include <runsieve/core/kernels/RunParts.h>
#include <runsieve/core/kernels/SampleDensity.h>
#include <runsieve/core/kernels/SortedSample.h>
#include <runsieve/selection/RunIndex.h>
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
  /// Makes the orders of the first `count` parameters.
  Samples(ParameterSource const& source, vtkTable* itsTable, RowSpans const* rows, bool areAllRuns,
          RunIndex& index, std::size_t count)
      : table(itsTable), allRuns(areAllRuns), stride(std::max(source.stride, 1))
  {
    const auto runs = static_cast<std::size_t>(source.allRuns->GetNumberOfRows() / stride + 1);
    if (rows) marked = runsOf(runParts(*rows, stride), runs);
    for (std::size_t i = 0; i < count; ++i) {
      const int number = source.columns[i];
      vtkDoubleArray* all = doubleColumn(source.allRuns, number);
      const bool ordered =
          all && all->GetNumberOfTuples() == source.allRuns->GetNumberOfRows() &&
          doubleColumn(table, number) &&
          (allRuns ? table == source.allRuns : rows && isConstantWithinRuns(index.values(all, stride)));
      columns.push_back({number, ordered ? index.order(all, stride) : nullptr});
    }
  }

  [[nodiscard]] std::size_t count() const { return columns.size(); }

  /// The sample of a parameter. Any number of threads may ask.
  [[nodiscard]] std::vector<double> of(std::size_t i) const
  {
    const auto [number, order] = columns[i];
    if (order && allRuns) return order->sorted();
    std::vector<double> sample;
    if (order) {
      order->distinctOf(marked.data(), sample);
    } else if (allRuns) {
      sample = valuesOf(table, number, stride);
      sortSample(sample);
    } else if (vtkDoubleArray* values = doubleColumn(table, number)) {
      sample = sortedDistinct(values->GetPointer(0), static_cast<std::size_t>(values->GetNumberOfTuples()));
    } else {
      const std::vector<double> converted = valuesOf(table, number, 1);
      sample = sortedDistinct(converted.data(), converted.size());
    }
    return sample;
  }

private:
  struct Column
  {
    int number;
    ParameterOrder const* order; ///< null: its values are sorted
  };

  static bool isConstantWithinRuns(RunValues const* runs) { return runs && runs->constantWithinRuns(); }

  vtkTable* table;
  bool allRuns;
  long long stride;
  std::vector<unsigned char> marked; ///< runs that have a row
  std::vector<Column> columns;
};

std::vector<std::vector<double>> samplesOf(Samples const& samples, BlockRunner const& runner)
{
  std::vector<std::vector<double>> list(samples.count());
  runBlocks(runner, list.size(), [&](std::size_t i) { list[i] = samples.of(i); });
  return list;
}

AlignedSample alignedSample(ParameterSource const& source, std::size_t i, std::vector<double> const& sample,
                            std::size_t length)
{
  if (source.columns.size() != source.bounds.size()) return alignSample(sample, length, nullptr);
  const ParameterBound bound{source.bounds[i].first, source.bounds[i].second};
  return alignSample(sample, length, &bound);
}

/// What a parameter adds to both tables.
struct RankedColumns
{
  std::size_t count = 0; ///< of ranks and of sorted values
  std::unique_ptr<double[]> rank;
  std::unique_ptr<double[]> sorted;
  std::unique_ptr<double[]> density; ///< on densityPoints locations
  std::unique_ptr<double[]> locations;
};

RankedColumns rankedColumns(AlignedSample const& sample)
{
  const std::size_t count = sample.sorted.size();
  RankedColumns columns = {count, newValues(count), newValues(count), newValues(densityPoints),
                           newValues(densityPoints)};
  rankSample(sample.sorted, sample.range, columns.rank.get(), columns.sorted.get());
  sampleDensity(sample.sorted, sample.range, columns.locations.get(), columns.density.get());
  return columns;
}

} // namespace

void rankParameters(ParameterSource const& source, vtkTable* table, RowSpans const* rows, RunIndex& orders,
                    std::vector<vtkSmartPointer<vtkTable>>& tables, std::size_t index,
                    BlockRunner const& runner)
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
      samplesOf(Samples(source, table, rows, index == 0, orders, names.size()), runner);
  std::size_t M = 0;
  for (auto const& sample : samples) M = std::max(M, sample.size());
  std::vector<RankedColumns> ranked(names.size());
  // What stands in for missing values is free: the quantiles of the shorter list are stretched.
  runBlocks(runner, ranked.size(),
            [&](std::size_t i) { ranked[i] = rankedColumns(alignedSample(source, i, samples[i], M)); });
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (samples[i].size() != M)
      std::cout << "Huston we have a problem. Encountered a parameter list with size " << samples[i].size()
                << ", expected " << M << std::endl;
    RankedColumns& columns = ranked[i];
    addColumn(tables[index], "Rank of " + names[i], std::move(columns.rank), columns.count);
    addColumn(tables[index], "Sorted " + names[i], std::move(columns.sorted), columns.count);
    addColumn(tables[index + 1], "Density of " + names[i], std::move(columns.density), densityPoints);
    addColumn(tables[index + 1], "Locations of " + names[i], std::move(columns.locations), densityPoints);
  }
}

} // namespace runsieve
