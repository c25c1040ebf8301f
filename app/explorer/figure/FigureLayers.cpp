#include "app/explorer/figure/FigureLayers.h"

namespace runsieve::app {

std::vector<FigureLayer> figureLayers(FigureContent const& content, Theme const& theme)
{
  constexpr double pale = 0.3;
  std::vector<FigureLayer> layers;
  const RunSet all(content.scan->runs.size(), true);
  const bool faded = content.sieves && content.focus == Focus::Faded;
  if (!content.sieves || content.focus != Focus::Hidden)
    layers.push_back({"all runs", theme.all, all, faded ? pale : 1.0});
  if (content.sieves) layers.push_back({"passing runs", theme.passing, content.passing, 1.0});
  for (NamedSet const& set : content.sets)
    layers.push_back(
        {QString::fromStdString(set.name), theme.sets[set.color % theme.sets.size()], set.runs, 1.0});
  return layers;
}

QString legendText(FigureLayer const& layer, FigureOptions const& options)
{
  return options.counts ? QString("%1 (%2)").arg(layer.name, QString::number(layer.runs.count()))
                        : layer.name;
}

} // namespace runsieve::app
