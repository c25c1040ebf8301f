#include "app/explorer/parameters/ParallelRuns.h"

#include <limits>

namespace runsieve::app {

namespace {

double placeOfText(ScanParameter const& parameter, std::size_t run)
{
  return (parameter.values[run] + 0.5) / static_cast<double>(parameter.texts.size());
}

} // namespace

double parallelPlace(ParameterRuns const& runs, std::size_t parameter, std::size_t run)
{
  ScanParameter const& values = runs.ofDocument().scan().parameters[parameter];
  if (values.isText()) return placeOfText(values, run);
  RunColumns const& columns = runs.columns(parameter);
  if (!columns.isOn(run)) return std::numeric_limits<double>::quiet_NaN();
  return (static_cast<double>(columns.of(run)) + 0.5) / static_cast<double>(RunColumns::columns);
}

std::shared_ptr<Scan const> parallelRuns(ParameterRuns const& runs,
                                         std::vector<std::size_t> const& parameters)
{
  Scan const& scan = runs.ofDocument().scan();
  auto lines = std::make_shared<Scan>();
  for (std::size_t i = 0; i < parameters.size(); ++i) lines->times.push_back(static_cast<double>(i));
  lines->runs.resize(scan.runs.size());
  double* const values = lines->addOutput({});
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    ScanParameter const& parameter = scan.parameters[parameters[i]];
    if (parameter.isText()) {
      for (std::size_t run = 0; run < scan.runs.size(); ++run)
        values[run * parameters.size() + i] = placeOfText(parameter, run);
      continue;
    }
    RunColumns const& columns = runs.columns(parameters[i]);
    for (std::size_t run = 0; run < scan.runs.size(); ++run)
      values[run * parameters.size() + i] =
          columns.isOn(run) ? (static_cast<double>(columns.of(run)) + 0.5) / RunColumns::columns
                            : std::numeric_limits<double>::quiet_NaN();
  }
  return lines;
}

} // namespace runsieve::app
