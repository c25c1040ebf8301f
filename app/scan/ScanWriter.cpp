#include "app/scan/ScanWriter.h"

#include "app/scan/ColumnName.h"

#include <runsieve/core/files/SafeFile.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/write/RowWriter.h>

#include <ostream>

namespace runsieve::app {

namespace {

void write(LinePlotTable const& scan, TextSink const& sink)
{
  std::vector<WrittenColumn> columns;
  for (std::size_t i = 0; i < scan.columnData.size(); ++i)
    columns.push_back({columnName(scan.columnNames[i]), scan.columnData[i], {}, WrittenColumn::Each::Row});
  writeRows(columns, scan.trajectoryCount, scan.trajectoryLength, sink);
}

} // namespace

void writeScan(LinePlotTable const& scan, std::string const& path)
{
  SafeFile file(path);
  write(scan, [&](std::string_view text) { file.write(text); });
  file.commit();
}

void writeScan(LinePlotTable const& scan, std::ostream& stream)
{
  write(scan, [&](std::string_view text) {
    if (!stream.write(text.data(), static_cast<std::streamsize>(text.size())))
      throw ScanError("output stream", "cannot be written");
  });
  if (!stream.flush()) throw ScanError("output stream", "cannot be written");
}

} // namespace runsieve::app
