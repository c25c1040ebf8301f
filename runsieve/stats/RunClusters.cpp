#include <runsieve/stats/RunClusters.h>

#include <runsieve/core/kernels/CurveSpectra.h>
#include <runsieve/core/kernels/PearsonKMeans.h>
#include <runsieve/stats/RunsAsRows.h>
#include <runsieve/tables/TableAccess.h>

#include <vtkDoubleArray.h>
#include <vtkIntArray.h>
#include <vtkNew.h>
#include <vtkTable.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

namespace runsieve {

namespace {

constexpr int phaseMode = 2;
constexpr int magnitudeMode = 3;

bool isSpectral(int mode)
{
  return mode == phaseMode || mode == magnitudeMode;
}

/// What the search has found, as tables.
struct Clusters
{
  vtkSmartPointer<vtkTable> centres; ///< one column per cluster
  std::vector<long long> sizes;      ///< runs per cluster at the end of the search
  vtkSmartPointer<vtkIntArray> labels;
};

/// The rows of a table of doubles, one after the other.
std::vector<double> flattened(vtkTable* table)
{
  const auto rows = static_cast<std::size_t>(table->GetNumberOfRows());
  const auto columns = static_cast<std::size_t>(table->GetNumberOfColumns());
  std::vector<double> values(rows * columns);
  for (std::size_t c = 0; c < columns; ++c) {
    auto* column = vtkDataArray::SafeDownCast(table->GetColumn(static_cast<vtkIdType>(c)));
    for (std::size_t row = 0; row < rows; ++row)
      values[row * columns + c] = column->GetComponent(static_cast<vtkIdType>(row), 0);
  }
  return values;
}

/// Mean curves as rows, with the column names of the runs that they come from.
vtkSmartPointer<vtkTable> tableOfCentres(ShapeClusters const& found, vtkTable* runs)
{
  auto table = vtkSmartPointer<vtkTable>::New();
  const auto points = static_cast<std::size_t>(runs->GetNumberOfColumns());
  for (std::size_t p = 0; p < points; ++p) {
    vtkNew<vtkDoubleArray> column;
    column->SetName(runs->GetColumnName(static_cast<vtkIdType>(p)));
    for (std::size_t k = 0; k < found.sizes.size(); ++k)
      column->InsertNextValue(found.centres[k * points + p]);
    table->AddColumn(column);
  }
  return table;
}

/// By what each run is grouped, one run after the other.
std::vector<double> shapesOf(vtkTable* runs, int mode)
{
  std::vector<double> curves = flattened(runs);
  if (!isSpectral(mode)) return curves;
  const SpectrumPart part = mode == magnitudeMode ? SpectrumPart::Magnitude : SpectrumPart::Phase;
  return curveSpectra(curves.data(), static_cast<std::size_t>(runs->GetNumberOfRows()),
                      static_cast<std::size_t>(runs->GetNumberOfColumns()), part);
}

Clusters cluster(vtkTable* runs, ClusterSearch const& search)
{
  const std::vector<double> shapes = shapesOf(runs, search.mode);
  const auto points = static_cast<std::size_t>(runs->GetNumberOfColumns());
  const auto rows = static_cast<std::size_t>(runs->GetNumberOfRows());
  const auto byShape = search.finiteOnly ? clusterFiniteByShape : clusterByShape;
  const ShapeClusters found = byShape(shapes.data(), rows, points, search.clusters, {}, search.starts);
  Clusters clusters;
  clusters.sizes = found.sizes;
  clusters.labels = vtkSmartPointer<vtkIntArray>::New();
  clusters.labels->SetName("ClosestId(0)");
  for (int label : found.labels) clusters.labels->InsertNextValue(label);
  clusters.centres = transposed(tableOfCentres(found, runs));
  return clusters;
}

/// A column per cluster with as many zeros as there are time points.
vtkSmartPointer<vtkTable> emptyMeans(int clusters, vtkIdType rows)
{
  auto means = vtkSmartPointer<vtkTable>::New();
  for (int i = 0; i < clusters; ++i) {
    vtkNew<vtkDoubleArray> mean;
    mean->SetName(std::to_string(i).c_str());
    mean->SetNumberOfTuples(rows);
    mean->FillValue(0.0);
    means->AddColumn(mean);
  }
  return means;
}

/// Adds each run, divided by the size of its cluster, to the mean curve of that cluster.
void accumulateMeans(vtkTable* means, vtkTable* runs, Clusters const& found)
{
  const vtkIdType points = std::min(runs->GetNumberOfColumns(), means->GetNumberOfRows());
  const vtkIdType count = std::min(found.labels->GetNumberOfTuples(), runs->GetNumberOfRows());
  for (vtkIdType run = 0; run < count; ++run) {
    const int label = found.labels->GetValue(run);
    vtkDoubleArray* mean = doubleColumn(means, label);
    if (!mean || static_cast<std::size_t>(label) >= found.sizes.size()) continue;
    const auto size = static_cast<double>(found.sizes[static_cast<std::size_t>(label)]);
    for (vtkIdType t = 0; t < points; ++t) {
      const double value = vtkDoubleArray::SafeDownCast(runs->GetColumn(t))->GetValue(run);
      mean->SetValue(t, mean->GetValue(t) + value / size);
    }
  }
}

/// The times of the first `rows` samples; NaN beyond the end of the column.
vtkSmartPointer<vtkDoubleArray> firstTimes(vtkDataArray* column, vtkIdType rows)
{
  auto times = vtkSmartPointer<vtkDoubleArray>::New();
  times->SetName("Time");
  for (vtkIdType t = 0; t < rows; ++t)
    times->InsertNextValue(t < column->GetNumberOfTuples() ? column->GetComponent(t, 0)
                                                           : std::numeric_limits<double>::quiet_NaN());
  return times;
}

} // namespace

RunClusters clusterRuns(vtkTable* table, int x, int y, int stride, ClusterSearch const& search)
{
  RunClusters result;
  if (search.clusters < 1 || !isNumeric(table, x) || !isNumeric(table, y)) return result;
  if (stride < 1 || table->GetNumberOfRows() < stride) return result;
  const bool spectral = isSpectral(search.mode);
  const vtkSmartPointer<vtkTable> runs = runsAsRows(table, columnName(table, y), stride);
  result.curves = transposed(runs);
  const Clusters found = cluster(runs, search);
  result.labels = found.labels;
  result.means = spectral ? emptyMeans(search.clusters, found.centres->GetNumberOfRows()) : found.centres;
  if (spectral) accumulateMeans(result.means, runs, found);
  const auto time =
      firstTimes(vtkDataArray::SafeDownCast(table->GetColumn(x)), result.means->GetNumberOfRows());
  result.means->AddColumn(time);
  result.curves->AddColumn(time);
  return result;
}

} // namespace runsieve
