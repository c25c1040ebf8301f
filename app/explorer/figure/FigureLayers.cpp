#include "app/explorer/figure/FigureLayers.h"

#include "app/explorer/charts/RunBands.h"

#include <QStringList>

namespace runsieve::app {

std::vector<FigureLayer> figureLayers(FigureContent const& content, FigureOptions const& options,
                                      Theme const& theme)
{
  constexpr double pale = 0.3;
  std::vector<FigureLayer> layers;
  // Bands of all runs would hide how those of the passing runs differ from the others.
  const bool apart = content.sieves && bandsKindOf(options.runsLook).has_value();
  const RunSet ground = apart ? content.passing.complement() : RunSet(content.scan->runs.size(), true);
  const bool faded = content.sieves && content.focus == Focus::Faded;
  if (!content.sieves || content.focus != Focus::Hidden)
    layers.push_back({apart ? "other runs" : "all runs", theme.all, ground, faded ? pale : 1.0});
  for (NamedSet const& set : content.sets)
    layers.push_back(
        {QString::fromStdString(set.name), theme.sets[set.color % theme.sets.size()], set.runs, 1.0});
  // Above the sets, which may hold the same runs.
  if (content.sieves) layers.push_back({"passing runs", theme.passing, content.passing, 1.0});
  return layers;
}

QString othersText(FigureContent const& content, FigureOptions const& options)
{
  if (!content.sieves) return {};
  const bool isTold = content.focus != Focus::Hidden && bandsKindOf(options.runsLook);
  RunSet others = content.eligible;
  others -= content.passing;
  QStringList parts;
  if (!isTold) parts << "dark are the other runs";
  if (!isTold && options.counts) parts.last() += QString(" (%L1)").arg(others.count());
  if (const std::size_t left = content.eligible.complement().count(); left > 0)
    parts << QString("%L1 %2 no part").arg(left).arg(left == 1 ? "run takes" : "runs take");
  return parts.isEmpty() ? QString() : "parameters: " + parts.join(", ");
}

QString legendText(FigureLayer const& layer, FigureOptions const& options)
{
  return options.counts ? QString("%1 (%2)").arg(layer.name, QString("%L1").arg(layer.runs.count()))
                        : layer.name;
}

} // namespace runsieve::app
