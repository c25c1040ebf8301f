#include "app/explorer/figure/FigureBandsData.h"

#include "app/cli/RankReport.h"
#include "app/explorer/charts/RunBands.h"
#include "app/explorer/figure/FigureLayers.h"

#include <runsieve/core/write/RowWriter.h>

#include <array>

namespace runsieve::app {

namespace {

using LineNames = std::array<char const*, RunBands::shares.size()>;

constexpr LineNames quantiles = {"5 %", "25 %", "50 %", "75 %", "95 %"};
constexpr LineNames wholeRuns = {"lowest", "lower half", "deepest", "upper half", "highest"};

void addLine(std::string& csv, std::string const& begin, std::string const& line,
             FigureContent const& content, std::vector<double> const& values)
{
  for (std::size_t time = 0; time < values.size(); ++time)
    if (content.showsTime(content.scan->times[time]))
      csv += begin + quotedField(line) + ',' + exact(content.scan->times[time]) + ',' + exact(values[time]) +
             '\n';
}

} // namespace

std::string figureBandsCsv(FigureContent const& content, FigureOptions const& options)
{
  auto const kind = bandsKindOf(options.runsLook);
  if (!kind) return {};
  Scan const& scan = *content.scan;
  LineNames const& names = *kind == BandsKind::Quantiles ? quantiles : wholeRuns;
  std::string csv = "output,group,line,time,value\n";
  for (std::size_t const output : content.shownOutputs(options.outputs))
    for (FigureLayer const& layer : figureLayers(content, options, Theme())) {
      if (layer.runs.count() == 0) continue;
      const std::string begin =
          quotedField(scan.outputs[output].label.name) + ',' + quotedField(layer.name.toStdString()) + ',';
      const RunBands bands = *bandsOf(scan, output, layer.runs.mask(), *kind, [] { return false; });
      for (std::size_t line = 0; line < names.size(); ++line)
        addLine(csv, begin, names[line], content, bands.lines[line]);
      for (std::size_t i = 0; i < bands.outlyingValues.size(); ++i)
        addLine(csv, begin, "run " + scan.runs[bands.outlying[i]].key, content, bands.outlyingValues[i]);
    }
  return csv;
}

} // namespace runsieve::app
