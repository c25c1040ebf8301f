#include "app/store/StoredPlot.h"

#include "app/scan/ColumnName.h"
#include "app/scan/ScanLayout.h"
#include "app/store/PlotSettings.h"
#include "app/view/QuietLibrary.h"

#include <runsieve/adapters/ScanTable.h>
#include <runsieve/core/files/MappedFile.h>
#include <runsieve/core/files/SafeFile.h>
#include <runsieve/core/scan/ParameterBounds.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/items/vtkPlotLineSet.h>

#include <vtkDoubleArray.h>
#include <vtkIntArray.h>
#include <vtkNew.h>
#include <vtkTable.h>

#include <boost/make_shared.hpp>

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string_view>

namespace runsieve::app {

namespace {

constexpr const char* selectionColumn = "selected points";

vtkSmartPointer<vtkTable> tableOf(StoredPlot const& stored)
{
  LinePlotTable const& scan = *stored.scan;
  auto table = vtkSmartPointer<vtkTable>::New();
  for (std::size_t c = 0; c < scan.columnData.size(); ++c) {
    vtkNew<vtkDoubleArray> column;
    column->SetArray(scan.columnData[c], static_cast<vtkIdType>(scan.rows()), 1); // stays the scan's
    table->AddColumn(column);
    column->SetName(
        columnName(scan.columnNames[c]).c_str()); // a name would be searched for among all columns
  }
  vtkNew<vtkIntArray> flags;
  flags->SetName(selectionColumn);
  flags->SetNumberOfTuples(static_cast<vtkIdType>(scan.rows()));
  flags->FillValue(0);
  for (long long row : stored.selectedRows) flags->SetValue(row, 1);
  table->AddColumn(flags);
  return table;
}

/// The scan of a container that has read a dump. \throw std::runtime_error if it is none
boost::shared_ptr<LinePlotTable> scanOf(PlotContainer const& plot, std::uint64_t stride)
{
  const auto rows = static_cast<std::uint64_t>(plot.plotData->GetNumberOfRows());
  const auto columns = static_cast<std::size_t>(plot.plotData->GetNumberOfColumns());
  if (rows == 0 || stride == 0 || rows % stride != 0)
    throw std::runtime_error("the dump does not hold whole runs of " + std::to_string(stride) + " rows");
  if (plot.typedColumnNames.size() + 1 != columns)
    throw std::runtime_error("the dump is damaged: names and columns don't agree");
  auto scan = boost::make_shared<LinePlotTable>();
  scan->trajectoryLength = stride;
  scan->trajectoryCount = rows / stride;
  for (std::size_t c = 0; c < plot.typedColumnNames.size(); ++c) {
    auto* column = vtkDoubleArray::SafeDownCast(plot.plotData->GetColumn(static_cast<vtkIdType>(c)));
    auto const& [type, name] = plot.typedColumnNames[c];
    if (!column || column->GetNumberOfTuples() != static_cast<vtkIdType>(rows) ||
        columnName({type, name}) != column->GetName())
      throw std::runtime_error("the dump is damaged: column " + std::to_string(c + 1) +
                               " is not what its name says");
    double* values = scan->addColumn(type, name);
    std::copy_n(column->GetPointer(0), rows, values);
    if (type == Kestrane::Parameter)
      scan->parameterBounds.push_back(boundsOfRuns(values, scan->trajectoryCount, stride));
  }
  (void)scanLayout(*scan); // it has a time and a run column
  return scan;
}

std::vector<long long> flaggedRows(PlotContainer const& plot)
{
  auto* flags = vtkIntArray::SafeDownCast(plot.plotData->GetColumnByName(selectionColumn));
  if (!flags) throw std::runtime_error("the dump is damaged: its last column is not the selection");
  std::vector<long long> rows;
  for (vtkIdType row = 0; row < flags->GetNumberOfTuples(); ++row)
    if (flags->GetValue(row) == 1) rows.push_back(row);
  return rows;
}

/// The bytes of the dump without a copy. A dump that is cut off would read as zeros, and a changed one as
/// other values: neither must pass.
QByteArray checkedDump(std::string const& line, PlotSettings const& settings, char const* begin,
                       char const* end)
{
  const auto size = static_cast<std::size_t>(end - begin);
  if (size > static_cast<std::size_t>(std::numeric_limits<int>::max()))
    throw std::runtime_error("the dump is larger than 2 GiB");
  if (size != settings.bytes)
    throw std::runtime_error("the file is cut off, or something was appended to it");
  if (checksumOf(line, begin, size) != settings.checksum) throw std::runtime_error("the file is damaged");
  return QByteArray::fromRawData(begin, static_cast<int>(size));
}

StoredPlot parse(char const* begin, char const* end)
{
  if (begin == end) throw std::runtime_error("the file is empty");
  auto const* lineEnd =
      static_cast<char const*>(std::memchr(begin, '\n', static_cast<std::size_t>(end - begin)));
  if (!lineEnd) throw std::runtime_error("the file ends in its settings");
  const std::string line(begin, lineEnd);
  const PlotSettings settings = fromJson(line);
  QByteArray dump = checkedDump(line, settings, lineEnd + 1, end);
  const QuietLibrary quiet;
  PlotContainer plot(nullptr);
  plot.readDump(&dump);
  StoredPlot stored;
  stored.scan = scanOf(plot, settings.stride);
  stored.selectedRows = flaggedRows(plot);
  stored.view = settings.view;
  stored.window = settings.window;
  stored.gates = settings.gates;
  stored.join = settings.join;
  stored.notes = settings.notes;
  if (!stored.notes.isEmpty()) {
    Scan scan = runsieve::scanOf(stored.scan);
    applyNotes(stored.notes, scan); // throws if they don't fit
  }
  const auto outputs = scanLayout(*stored.scan).outputs;
  if (std::find(outputs.begin(), outputs.end(), stored.view.output) == outputs.end())
    throw std::runtime_error("the settings name an output that the dump does not hold");
  return stored;
}

ReducedMetaData currentKey(PlotContainer const& plot)
{
  return {plot.metaData->xColumns[0], plot.metaData->yColumns[0], plot.metaData->getPlotStyle()};
}

} // namespace

void writePlot(StoredPlot const& stored, std::string const& path)
{
  PlotContainer plot(nullptr);
  plot.plotData = tableOf(stored);
  plot.typedColumnNames = stored.scan->columnNames;
  std::unique_ptr<QByteArray> dump;
  try {
    dump.reset(plot.binaryDump());
  } catch (std::length_error const& error) {
    throw ScanError(path, error.what());
  }
  SafeFile file(path);
  const auto size = static_cast<std::size_t>(dump->size());
  PlotSettings settings{stored.view, stored.window, stored.scan->trajectoryLength, size, 0, stored.gates,
                        stored.join, stored.notes};
  settings.checksum = checksumOf(toJson(settings), dump->constData(), size);
  file.write(toJson(settings) + '\n');
  file.write({dump->constData(), size});
  file.commit();
}

StoredPlot readPlot(std::string const& path)
{
  const MappedFile map(path);
  try {
    return parse(map.begin(), map.end());
  } catch (std::bad_alloc const&) {
    throw ScanError(path, "the dump is damaged: it claims more than there is memory for");
  } catch (std::exception const& error) {
    throw ScanError(path, error.what());
  }
}

void showPlot(PlotContainer& plot, StoredPlot const& stored)
{
  showScan(plot, stored.scan, stored.view);
  if (stored.window.valid) {
    plot.coordinateWindows[currentKey(plot)] = stored.window;
    plot.redraw();
  }
  if (!stored.selectedRows.empty()) selectRows(plot, stored.selectedRows);
}

StoredPlot storedPlot(PlotContainer const& plot, boost::shared_ptr<LinePlotTable> scan)
{
  StoredPlot stored;
  stored.scan = std::move(scan);
  PlotMetaData const& settings = *plot.metaData;
  stored.view.output = static_cast<std::size_t>(settings.yColumns[0]);
  stored.view.density = settings.getUseDensity();
  stored.view.commonScale = settings.getCommonDensityScale();
  stored.view.quantiles = settings.getShowQuantiles();
  stored.view.logAxes = settings.getLogParameterAxes();
  stored.view.points = !settings.getPlotLine();
  stored.view.plainLines = plot.densityColors == vtkPlotLineSet::DENSITY_OFF;
  stored.view.pThreshold = settings.getPThreshold();
  stored.view.ksThreshold = settings.getKsThreshold();
  auto window = plot.coordinateWindows.find(currentKey(plot));
  if (window != plot.coordinateWindows.end()) stored.window = window->second;
  stored.selectedRows = selectedRows(plot);
  return stored;
}

} // namespace runsieve::app
