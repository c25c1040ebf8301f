#pragma once

#include "PlotScene.h"
#include "ScanBuilder.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace runsieve::test {

/// A record of one run of two rows with the given columns.
inline boost::shared_ptr<LinePlotTable> recordOf(std::vector<Kestrane::TypedConcentrationName> const& columns)
{
  auto record = boost::make_shared<LinePlotTable>();
  record->trajectoryCount = 1;
  record->trajectoryLength = 2;
  for (auto const& column : columns) {
    double* values = record->addColumn(column.first, column.second);
    values[0] = 1;
    values[1] = 2;
  }
  return record;
}

/// A plot in a scene that takes records of stacked runs.
struct LoadedTable : testing::Test, PlotScene
{
  void load(boost::shared_ptr<LinePlotTable> record) { container.setLinePlotTable(std::move(record), false); }
};

} // namespace runsieve::test
