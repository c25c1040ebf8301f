#include "app/explorer/parameters/StabilityModel.h"

#include "app/cli/RankReport.h"
#include "app/explorer/controls/PlainText.h"

#include <cmath>
#include <utility>

namespace runsieve::app {

namespace {

using Stage = Settling::Stage;

QString settledText(Settling const& settling)
{
  switch (settling.stage) {
  case Stage::Settled:
    return shareOfRuns(settling.share);
  case Stage::MoreRunsHelp:
    return "more runs";
  case Stage::WithinNoise:
    return "noise";
  case Stage::NotSignificant:
    return "n.s.";
  case Stage::Unknown:
    return "-";
  }
  return {};
}

/// What stands in the last column, in words.
QString settledWords(Settling const& settling)
{
  switch (settling.stage) {
  case Stage::Settled:
    return QString("beyond the noise floor in at least 95 % of the samples, with %1 of the runs or more")
        .arg(shareOfRuns(settling.share));
  case Stage::MoreRunsHelp:
    return "with a part of the runs it still falls into the noise at times: more runs would help";
  case Stage::WithinNoise:
    return "not beyond the noise floor of all runs: a hint, which more runs would confirm or not";
  case Stage::NotSignificant:
    return "not significant";
  case Stage::Unknown:
    return "not known";
  }
  return {};
}

QString share(double value)
{
  return std::isnan(value) ? QString("-") : QString::asprintf("%.0f %%", 100.0 * value);
}

} // namespace

void StabilityModel::show(std::shared_ptr<StabilityOfRuns const> found)
{
  beginResetModel();
  shown = std::move(found);
  settling = shown ? settlingOf(*shown->comparison, shown->stability) : std::vector<Settling>();
  endResetModel();
}

int StabilityModel::rowCount(QModelIndex const& parent) const
{
  return parent.isValid() ? 0 : static_cast<int>(settling.size());
}

int StabilityModel::columnCount(QModelIndex const& parent) const
{
  return parent.isValid() ? 0 : static_cast<int>(columns);
}

QString StabilityModel::cellText(std::size_t row, int column) const
{
  ParameterComparison const& parameter = shown->comparison->parameters[row];
  SureDistance const& sure = shown->stability.parameters[row];
  switch (column) {
  case Name:
    return QString::fromStdString(parameter.name);
  case Distance:
    return std::isnan(parameter.d) ? QString("-") : QString::asprintf("%+.3f", parameter.d);
  case Interval:
    return std::isnan(sure.low) ? QString("-") : QString::asprintf("%.3f..%.3f", sure.low, sure.high);
  case Top:
    return share(sure.topShare);
  default:
    return settledText(settling[row]);
  }
}

QVariant StabilityModel::data(QModelIndex const& index, int role) const
{
  if (!index.isValid() || !shown) return {};
  const auto row = static_cast<std::size_t>(index.row());
  if (role == Qt::DisplayRole) return cellText(row, index.column());
  if (role == Qt::ToolTipRole) return toolTipText(cellText(row, Name) + ": " + settledWords(settling[row]));
  if (role == Qt::TextAlignmentRole && index.column() > Name)
    return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  return {};
}

QString StabilityModel::columnTip(int column) const
{
  const StabilityMethod method = shown ? shown->stability.method : StabilityMethod();
  switch (column) {
  case Name:
    return "The parameters, the one that differs most first";
  case Distance:
    return "Largest distance of the distributions; + where passing runs are larger";
  case Interval:
    return QString("Confidence interval of |d| (%1), from %L2 resamples of the runs")
        .arg(QString::fromStdString(percentText(method.confidence)))
        .arg(method.resamples);
  case Top:
    return QString(
               "Share of the resamples in which the parameter is among the first %1: near 100 % its place is "
               "no accident of these runs")
        .arg(method.top);
  default:
    return "The part of the runs from which on |d| is beyond the noise floor in at least 95 % of the samples";
  }
}

QVariant StabilityModel::headerData(int section, Qt::Orientation orientation, int role) const
{
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  static const char* const titles[] = {"Parameter", "d", "|d| 95 %", "Top", "Settled at"};
  if (role == Qt::DisplayRole) return titles[section];
  if (role == Qt::ToolTipRole) return columnTip(section);
  return {};
}

} // namespace runsieve::app
