#include <runsieve/core/read/CellParameter.h>

#include <runsieve/core/read/Cell.h>
#include <runsieve/core/read/ColumnNames.h>

#include <cmath>
#include <limits>
#include <unordered_map>
#include <utility>

namespace runsieve {

namespace {

bool hasValue(double value)
{
  return !std::isnan(value) || cell::isText(value);
}

// Numbers among texts are texts as well.
void nameTexts(CellTable const& table, ScanParameter& parameter)
{
  std::unordered_map<std::string, double> numbers;
  for (double& value : parameter.values) {
    if (!hasValue(value)) continue;
    auto const [place, isNew] =
        numbers.emplace(table.written(value), static_cast<double>(parameter.texts.size()));
    if (isNew) parameter.texts.push_back(place->first);
    value = place->second;
  }
}

} // namespace

ScanParameter parameterOf(CellTable const& table, std::size_t column, std::vector<double> cells)
{
  ScanParameter parameter;
  parameter.label = describeColumn(table.columns[column].header).label;
  parameter.label.unit = table.columns[column].unit;
  if (parameter.label.type == "Parameter") parameter.label.type.clear();
  parameter.values = std::move(cells);
  if (table.columns[column].hasText) nameTexts(table, parameter);
  for (double& value : parameter.values)
    if (cell::isMissing(value)) value = std::numeric_limits<double>::quiet_NaN();
  return parameter;
}

} // namespace runsieve
