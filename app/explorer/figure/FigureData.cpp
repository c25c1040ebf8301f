#include "app/explorer/figure/FigureData.h"

#include "app/cli/FigureDataFiles.h"
#include "app/cli/RankReport.h"
#include "app/explorer/charts/RunBands.h"
#include "app/explorer/figure/FigureBandsData.h"
#include "app/explorer/figure/ParameterSamples.h"

#include <runsieve/core/files/SafeFile.h>
#include <runsieve/core/write/RowWriter.h>

#include <QFile>

#include <sstream>

namespace runsieve::app {

namespace {

/// Each different value with the share of the values up to it.
void addCurve(std::string& csv, std::string const& parameter, char const* group,
              std::vector<double> const& sorted)
{
  const auto count = static_cast<double>(sorted.size());
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    if (i + 1 < sorted.size() && sorted[i + 1] == sorted[i]) continue;
    csv += quotedField(parameter) + ',' + group + ',' + exact(sorted[i]) + ',' +
           exact(static_cast<double>(i + 1) / count) + '\n';
  }
}

/// The same of texts: the share of each.
void addShares(std::string& csv, ScanParameter const& column, char const* group,
               std::vector<std::size_t> const& runs, std::size_t all)
{
  for (std::size_t i = 0; i < runs.size() && all > 0; ++i)
    csv += quotedField(column.label.name) + ',' + group + ',' + quotedField(column.texts[i]) + ',' +
           exact(static_cast<double>(runs[i]) / static_cast<double>(all)) + '\n';
}

} // namespace

std::string figureRunsCsv(FigureContent const& content, FigureOptions const& options)
{
  Scan const& scan = *content.scan;
  const std::vector<std::size_t> outputs = content.shownOutputs(options.outputs);
  std::string csv = "\"run\",\"group\"," + quotedField(scan.time.name.empty() ? "time" : scan.time.name);
  for (std::size_t const output : outputs) csv += ',' + quotedField(scan.outputs[output].label.name);
  csv += '\n';
  for (std::size_t run = 0; run < scan.runs.size(); ++run) {
    const bool passes = content.sieves && content.passing.contains(run);
    if (content.sieves && !passes && content.focus == Focus::Hidden) continue;
    const std::string begin = quotedField(scan.runs[run].key) + (passes ? ",passing," : ",other,");
    for (std::size_t time = 0; time < scan.times.size(); ++time) {
      if (!content.showsTime(scan.times[time])) continue;
      csv += begin + exact(scan.times[time]);
      for (std::size_t const output : outputs) csv += ',' + exact(scan.valuesOf(output, run)[time]);
      csv += '\n';
    }
  }
  return csv;
}

std::string figureCurvesCsv(FigureContent const& content, FigureOptions const& options)
{
  std::string csv = "parameter,group,value,share\n";
  for (std::size_t const parameter : content.shownParameters(options.parameters, options.strongest)) {
    ScanParameter const& column = content.scan->parameters[parameter];
    if (column.isText()) {
      const TextGroups groups = textGroupsOf(content, parameter);
      addShares(csv, column, "other", groups.others, groups.allOthers);
      addShares(csv, column, "passing", groups.passing, groups.allPassing);
      continue;
    }
    const ParameterSamples samples = samplesOf(content, parameter);
    addCurve(csv, column.label.name, "other", samples.others);
    addCurve(csv, column.label.name, "passing", samples.passing);
  }
  return csv;
}

std::string figureParametersCsv(FigureContent const& content)
{
  if (!content.comparison) return {};
  std::ostringstream csv;
  printRankCsv(csv, *content.comparison);
  return csv.str();
}

QStringList figureDataFiles(FigureContent const& content, FigureOptions const& options, QString const& figure)
{
  QStringList files;
  for (std::string const& file :
       figureDataFiles(QFile::encodeName(figure).toStdString(),
                       {content.comparison != nullptr, bandsKindOf(options.runsLook).has_value()}))
    files << QFile::decodeName(file.c_str());
  return files;
}

QStringList writeFigureData(FigureContent const& content, FigureOptions const& options, QString const& figure)
{
  const QStringList files = figureDataFiles(content, options, figure);
  auto next = files.begin();
  auto const write = [&](std::string const& text) {
    SafeFile file(QFile::encodeName(*next++).toStdString());
    file.write(text);
    file.commit();
  };
  write(figureRunsCsv(content, options));
  write(figureCurvesCsv(content, options));
  if (content.comparison) write(figureParametersCsv(content));
  if (next != files.end()) write(figureBandsCsv(content, options));
  return files;
}

} // namespace runsieve::app
