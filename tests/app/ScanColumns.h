#pragma once

#include "app/scan/ColumnName.h"
#include "support/ScanBuilder.h"

#include <runsieve/records/LinePlotTable.h>

#include <cstddef>
#include <string>
#include <vector>

namespace runsieve::test {

inline ScanShape shapeOf(int runs, int times, int species, int parameters)
{
  ScanShape shape;
  shape.runs = runs;
  shape.times = times;
  shape.species = species;
  shape.parameters = parameters;
  return shape;
}

inline std::vector<std::string> namesOf(LinePlotTable const& scan)
{
  std::vector<std::string> names;
  for (auto const& name : scan.columnNames) names.push_back(app::columnName(name));
  return names;
}

inline std::vector<double> column(LinePlotTable const& scan, std::string const& name)
{
  for (std::size_t i = 0; i < scan.columnNames.size(); ++i)
    if (app::columnName(scan.columnNames[i]) == name)
      return {scan.columnData[i], scan.columnData[i] + scan.rows()};
  return {};
}

} // namespace runsieve::test
