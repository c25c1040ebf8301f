#include "app/explorer/figure/FigureSettings.h"

#include <QSettings>

namespace runsieve::app {

namespace {

/// Passes what is kept with its name to a function, for writing and reading alike.
template <class Options, class Function> void eachOption(Options& options, Function&& option)
{
  option("width", options.width);
  option("height", options.height);
  option("dpi", options.dpi);
  option("family", options.family);
  option("fontSize", options.fontSize);
  option("lineWidth", options.lineWidth);
  option("gates", options.gates);
  option("legend", options.legend);
  option("counts", options.counts);
  option("thresholds", options.thresholds);
  option("scaleBar", options.scaleBar);
  option("ground", options.ground);
}

} // namespace

FigureOptions lastFigureOptions()
{
  QSettings settings;
  settings.beginGroup("figure");
  FigureOptions options;
  eachOption(options, [&](char const* name, auto& value) {
    const QVariant kept = settings.value(name);
    if (kept.isValid()) value = kept.value<std::decay_t<decltype(value)>>();
  });
  options.strongest = settings.value("strongest", static_cast<uint>(options.strongest)).toUInt();
  if (settings.value("palette").toString() == "colour-blind") options.palette = FigurePalette::ColourBlind;
  return withinLimits(options);
}

void keepFigureOptions(FigureOptions const& options)
{
  QSettings settings;
  settings.beginGroup("figure");
  eachOption(options, [&](char const* name, auto const& value) { settings.setValue(name, value); });
  settings.setValue("strongest", static_cast<uint>(options.strongest));
  settings.setValue("palette", options.palette == FigurePalette::ColourBlind ? "colour-blind" : "standard");
}

} // namespace runsieve::app
