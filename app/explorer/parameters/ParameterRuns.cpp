#include "app/explorer/parameters/ParameterRuns.h"

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

constexpr std::size_t mostPlaced = 400; ///< parameters: two bytes per run each, more than a screen shows

} // namespace

ParameterRuns::ParameterRuns(Document& ofDocument, QObject* parent) : QObject(parent), document(ofDocument)
{
  connect(&document, &Document::opened, this, &ParameterRuns::reopen);
  connect(&document, &Document::passingChanged, this, &ParameterRuns::regroup);
  connect(&document, &Document::stateChanged, this, &ParameterRuns::changed);
  connect(&document, &Document::highlightChanged, this, &ParameterRuns::changed);
  connect(&document, &Document::comparisonChanged, this, &ParameterRuns::reorder);
  reopen();
}

void ParameterRuns::reopen()
{
  spreads.clear();
  known.clear();
  shownOrder = document.parameterOrder();
  eligibleMask.clear();
  takeGroups();
  Q_EMIT opened();
  Q_EMIT orderChanged();
  Q_EMIT changed();
}

void ParameterRuns::takeGroups()
{
  std::vector<std::uint8_t> eligible;
  if (document.isOpen()) eligible = document.eligible().mask();
  std::vector<std::uint8_t> passing(eligible.size(), 0);
  if (document.isOpen() && document.sieves()) {
    std::vector<std::uint8_t> const& through = document.passing().mask();
    for (std::size_t run = 0; run < eligible.size(); ++run)
      passing[run] = static_cast<std::uint8_t>(through[run] & eligible[run]);
  }
  if (eligible != eligibleMask) ++eligibleNumber;
  if (eligible != eligibleMask || passing != passingMask) ++groupsNumber;
  eligibleMask = std::move(eligible);
  passingMask = std::move(passing);
}

void ParameterRuns::regroup()
{
  takeGroups();
  Q_EMIT changed();
}

void ParameterRuns::reorder()
{
  if (document.isCompared()) {
    std::vector<std::size_t> order = document.parameterOrder();
    if (order != shownOrder) {
      shownOrder = std::move(order);
      Q_EMIT orderChanged();
    }
  }
  Q_EMIT changed();
}

ParameterSpread const& ParameterRuns::spread(std::size_t parameter) const
{
  auto found = spreads.find(parameter);
  if (found == spreads.end())
    found = spreads.emplace(parameter, spreadOf(document.scan().parameters[parameter])).first;
  return found->second;
}

bool ParameterRuns::isLogarithmic(std::size_t parameter) const
{
  auto const& wanted = document.state().view.logParameters;
  auto const found = wanted.find(parameter);
  ParameterSpread const& values = spread(parameter);
  return found == wanted.end() ? values.isLogarithmic : found->second && values.allowsLogarithm();
}

AxisMap ParameterRuns::axis(std::size_t parameter) const
{
  return spread(parameter).axis(isLogarithmic(parameter));
}

bool ParameterRuns::isPlaced(std::size_t parameter) const
{
  auto const found = known.find(parameter);
  return found != known.end() && found->second.logarithmic == isLogarithmic(parameter);
}

ParameterRuns::Placed& ParameterRuns::placed(std::size_t parameter) const
{
  const bool logarithmic = isLogarithmic(parameter);
  auto found = known.find(parameter);
  if (found == known.end() || found->second.logarithmic != logarithmic) {
    if (known.size() >= mostPlaced) {
      auto const older = [](auto const& a, auto const& b) { return a.second.used < b.second.used; };
      known.erase(std::min_element(known.begin(), known.end(), older));
    }
    Placed fresh;
    fresh.logarithmic = logarithmic;
    fresh.columns = RunColumns(document.scan().parameters[parameter].values, axis(parameter));
    found = known.insert_or_assign(parameter, std::move(fresh)).first;
  }
  Placed& result = found->second;
  result.used = ++clock;
  if (result.countedFor != eligibleNumber) {
    result.eligible = ColumnCounts(result.columns, eligibleMask);
    result.countedFor = eligibleNumber;
  }
  return result;
}

RunColumns const& ParameterRuns::columns(std::size_t parameter) const
{
  return placed(parameter).columns;
}

ParameterGroups ParameterRuns::groups(std::size_t parameter) const
{
  Placed const& runs = placed(parameter);
  ParameterGroups groups{{}, runs.eligible};
  if (!document.sieves()) return groups;
  groups.passing = ColumnCounts(runs.columns, passingMask);
  groups.others -= groups.passing;
  return groups;
}

TextGroups ParameterRuns::textGroups(std::size_t parameter) const
{
  return textGroupsOf(document.scan().parameters[parameter], passingMask, eligibleMask);
}

} // namespace runsieve::app
