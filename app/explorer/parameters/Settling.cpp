#include "app/explorer/parameters/Settling.h"

#include "app/cli/RankReport.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <map>

namespace runsieve::app {

namespace {

using Stage = Settling::Stage;

constexpr int mostNames = 6;

bool hasAllFloors(ComparisonStability const& stability)
{
  return !stability.sizes.empty() &&
         std::none_of(stability.sizes.begin(), stability.sizes.end(),
                      [](ComparisonAtSize const& size) { return std::isnan(size.noiseFloor); });
}

/// Of a significant parameter. \param sizes ascending, with noise floors
Settling settlingAt(std::vector<ComparisonAtSize> const& sizes, std::size_t parameter)
{
  auto const isPart = [](ComparisonAtSize const& size) { return size.share < 1.0; };
  auto const all = std::find_if_not(sizes.begin(), sizes.end(), isPart);
  if (all != sizes.end() && !all->isBeyond(parameter)) return {Stage::WithinNoise};
  if (all == sizes.begin()) return {};
  auto size = std::prev(all);
  if (!size->isBeyond(parameter)) return {Stage::MoreRunsHelp};
  while (size != sizes.begin() && std::prev(size)->isBeyond(parameter)) --size;
  return {Stage::Settled, size->share};
}

/// "k1, k2 and 3 more".
QString listed(QStringList const& names)
{
  if (names.size() <= mostNames) return names.join(", ");
  return QString("%1 and %2 more")
      .arg(QStringList(names.mid(0, mostNames - 1)).join(", "))
      .arg(names.size() - mostNames + 1);
}

} // namespace

std::vector<Settling> settlingOf(Comparison const& comparison, ComparisonStability const& stability)
{
  std::vector<Settling> result(comparison.parameters.size());
  if (!hasAllFloors(stability)) return result;
  for (std::size_t i = 0; i < result.size(); ++i) {
    ParameterComparison const& parameter = comparison.parameters[i];
    if (std::isnan(parameter.d)) continue;
    result[i] = parameter.significant ? settlingAt(stability.sizes, i) : Settling{Stage::NotSignificant};
  }
  return result;
}

QString settlingWords(Comparison const& comparison, ComparisonStability const& stability)
{
  std::map<double, QStringList> settled; // by the share
  QStringList needMore;
  const std::vector<Settling> settling = settlingOf(comparison, stability);
  for (std::size_t i = 0; i < settling.size(); ++i) {
    const QString name = QString::fromStdString(comparison.parameters[i].name);
    if (settling[i].stage == Stage::Settled) settled[settling[i].share] << name;
    if (settling[i].stage == Stage::MoreRunsHelp) needMore << name;
  }
  QStringList sentences;
  QStringList parts;
  for (auto const& [share, names] : settled)
    parts << QString("%1 with %2").arg(listed(names), shareOfRuns(share));
  if (!parts.isEmpty()) sentences << QString("Settled: %1 of the runs.").arg(parts.join("; "));
  // Those that the verdict is about are named there.
  if (!needMore.isEmpty() && stability.verdict != EnoughRuns::MoreWouldHelp)
    sentences << QString("More runs would help: %1.").arg(listed(needMore));
  if (!sentences.isEmpty() && stability.sizes.back().share == 1.0)
    sentences << QString("Differences below d = %1 cannot be told from chance with these runs.")
                     .arg(QString::number(stability.sizes.back().noiseFloor, 'f', 3));
  return sentences.join(' ');
}

QString verdictSentence(ComparisonStability const& stability)
{
  QString text = QString::fromStdString(stability.verdictText);
  if (text.isEmpty()) return text;
  text[0] = text[0].toUpper();
  return text + '.';
}

QString shareOfRuns(double share)
{
  return share < 1.0 ? QString::fromStdString(percentText(share)) : QString("all");
}

} // namespace runsieve::app
