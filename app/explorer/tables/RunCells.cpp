#include "app/explorer/tables/RunCells.h"

#include "app/cli/RankReport.h"
#include "app/explorer/sets/ClusterOrigin.h"
#include "app/explorer/tables/NaturalOrder.h"

#include <runsieve/core/write/RowWriter.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace runsieve::app {

namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();
constexpr std::size_t piece = 1024; ///< runs between questions whether to give up

/// The places of texts among all of them when they are in order; equal texts have equal ones.
std::vector<double> placesOf(std::vector<std::string> const& texts)
{
  std::vector<std::size_t> order(texts.size());
  std::iota(order.begin(), order.end(), std::size_t(0));
  std::sort(order.begin(), order.end(),
            [&](std::size_t a, std::size_t b) { return standsBefore(texts[a], texts[b]); });
  std::vector<double> places(texts.size());
  for (std::size_t i = 0; i < order.size(); ++i) {
    const bool equal = i > 0 && texts[order[i]] == texts[order[i - 1]];
    places[order[i]] = equal ? places[order[i - 1]] : static_cast<double>(i);
  }
  return places;
}

std::string joined(std::vector<NamedSet> const& sets, std::size_t run)
{
  std::string names;
  for (NamedSet const& set : sets)
    if (set.runs.contains(run)) names += (names.empty() ? "" : ", ") + set.name;
  return names;
}

double clusterNumber(std::vector<NamedSet> const& sets, std::size_t run)
{
  for (NamedSet const& set : sets)
    if (auto const cluster = clusterOf(set.origin); cluster && set.runs.contains(run)) return *cluster;
  return missing;
}

} // namespace

double RunCells::number(std::size_t run, std::size_t column) const
{
  RunColumn const& asked = columns[column];
  if (asked.kind == RunColumn::Kind::Parameter) return scan->parameters[asked.position].values[run];
  if (asked.kind == RunColumn::Kind::Feature) return featureOf(*scan, asked.position, run, asked.feature);
  return asked.kind == RunColumn::Kind::Cluster ? clusterNumber(sets, run) : missing;
}

std::string RunCells::text(std::size_t run, std::size_t column, bool allDigits) const
{
  RunColumn const& asked = columns[column];
  switch (asked.kind) {
  case RunColumn::Kind::Key:
    return scan->runs[run].key;
  case RunColumn::Kind::Status:
    return statusName(scan->runs[run].status);
  case RunColumn::Kind::Passes:
    if (allDigits) return passing.contains(run) ? "true" : "false";
    return passing.contains(run) ? "yes" : "no";
  case RunColumn::Kind::Sets:
    return joined(sets, run);
  default:
    break;
  }
  const double value = number(run, column);
  if (std::isnan(value)) return {};
  if (!asked.isNumber) return scan->parameters[asked.position].texts[static_cast<std::size_t>(value)];
  return allDigits ? exact(value) : formatted(value, "%.6g", "");
}

std::vector<double> RunCells::ranks(std::size_t column) const
{
  RunColumn const& asked = columns[column];
  const std::size_t runs = scan->runs.size();
  std::vector<double> ranks(runs, missing);
  if (asked.kind == RunColumn::Kind::Key || asked.kind == RunColumn::Kind::Sets) {
    std::vector<std::string> texts(runs);
    for (std::size_t run = 0; run < runs; ++run) texts[run] = text(run, column, true);
    ranks = placesOf(texts);
    if (asked.kind == RunColumn::Kind::Sets)
      for (std::size_t run = 0; run < runs; ++run)
        if (texts[run].empty()) ranks[run] = missing;
  } else if (asked.kind == RunColumn::Kind::Status) {
    for (std::size_t run = 0; run < runs; ++run) ranks[run] = static_cast<double>(scan->runs[run].status);
  } else if (asked.kind == RunColumn::Kind::Passes) {
    for (std::size_t run = 0; run < runs; ++run) ranks[run] = passing.contains(run) ? 0.0 : 1.0;
  } else {
    ScanParameter const& parameter = scan->parameters[asked.position];
    const std::vector<double> places = placesOf(parameter.texts);
    for (std::size_t run = 0; run < runs; ++run)
      if (!std::isnan(parameter.values[run]))
        ranks[run] = places[static_cast<std::size_t>(parameter.values[run])];
  }
  return ranks;
}

std::vector<std::size_t> RunCells::sorted(std::size_t column, bool rising, Cancelled const& cancelled) const
{
  std::vector<std::size_t> order(scan->runs.size());
  std::iota(order.begin(), order.end(), std::size_t(0));
  std::vector<double> values;
  if (columns[column].isNumber) {
    values.resize(order.size());
    for (std::size_t run = 0; run < order.size(); ++run) {
      if (run % piece == 0 && cancelled && cancelled()) return order;
      values[run] = number(run, column);
    }
  } else {
    values = ranks(column);
  }
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    if (std::isnan(values[a]) || std::isnan(values[b]))
      return !std::isnan(values[a]) && std::isnan(values[b]);
    return rising ? values[a] < values[b] : values[a] > values[b];
  });
  return order;
}

std::string RunCells::csv(std::vector<std::size_t> const& runs, std::vector<std::size_t> const& ofColumns,
                          Cancelled const& cancelled) const
{
  std::string csv;
  for (std::size_t i = 0; i < ofColumns.size(); ++i)
    csv += (i > 0 ? "," : "") + quotedField(columns[ofColumns[i]].name);
  csv += '\n';
  for (std::size_t r = 0; r < runs.size(); ++r) {
    if (r % piece == 0 && cancelled && cancelled()) break;
    for (std::size_t i = 0; i < ofColumns.size(); ++i) {
      const std::string cell = text(runs[r], ofColumns[i], true);
      csv += (i > 0 ? "," : "") + (columns[ofColumns[i]].isNumber ? cell : quotedField(cell));
    }
    csv += '\n';
  }
  return csv;
}

std::string RunCells::tabbed(std::vector<std::size_t> const& runs, std::vector<std::size_t> const& ofColumns,
                             Cancelled const& cancelled) const
{
  auto const clean = [](std::string cell) {
    std::replace_if(
        cell.begin(), cell.end(), [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
    return cell;
  };
  std::string lines;
  for (std::size_t i = 0; i < ofColumns.size(); ++i)
    lines += (i > 0 ? "\t" : "") + clean(columns[ofColumns[i]].title.toStdString());
  lines += '\n';
  for (std::size_t r = 0; r < runs.size(); ++r) {
    if (r % piece == 0 && cancelled && cancelled()) break;
    for (std::size_t i = 0; i < ofColumns.size(); ++i)
      lines += (i > 0 ? "\t" : "") + clean(text(runs[r], ofColumns[i], false));
    lines += '\n';
  }
  return lines;
}

} // namespace runsieve::app
