#pragma once

#include "app/scan/ColumnName.h"
#include "app/scan/ScanLayout.h"

#include <runsieve/core/scan/Scan.h>
#include <runsieve/records/LinePlotTable.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

namespace runsieve::test {

/// A record of the plots as a scan of the core, all runs on the times of the first.
inline Scan coreScan(LinePlotTable const& record)
{
  const app::ScanLayout layout = app::scanLayout(record);
  const std::size_t stride = record.trajectoryLength;
  Scan scan;
  scan.times.assign(record.columnData[layout.time], record.columnData[layout.time] + stride);
  for (std::size_t run = 0; run < record.trajectoryCount; ++run) {
    ScanRun entry;
    entry.key = std::to_string(run);
    scan.runs.push_back(entry);
  }
  auto labelOf = [&](std::size_t column) {
    ColumnLabel label;
    label.name = record.columnNames[column].second;
    return label;
  };
  for (std::size_t column : layout.outputs)
    std::copy_n(record.columnData[column], scan.rows(), scan.addOutput(labelOf(column)));
  for (std::size_t column : layout.parameters) {
    ScanParameter parameter;
    parameter.label = labelOf(column);
    for (std::size_t run = 0; run < scan.runs.size(); ++run)
      parameter.values.push_back(record.columnData[column][run * stride]);
    scan.parameters.push_back(parameter);
  }
  return scan;
}

/// Equal to the last bit, all NaN being one value.
inline bool sameNumber(double a, double b)
{
  return std::memcmp(&a, &b, sizeof a) == 0 || (std::isnan(a) && std::isnan(b));
}

} // namespace runsieve::test
