#include "app/explorer/controls/PlainText.h"
#include "app/explorer/tables/RunCells.h"

namespace runsieve::app {

namespace {

QString unitText(ColumnLabel const& label)
{
  return label.unit.empty() ? QString() : " [" + shownText(label.unit) + "]";
}

RunColumn parameterColumn(Scan const& scan, std::size_t parameter)
{
  ColumnLabel const& label = scan.parameters[parameter].label;
  RunColumn column;
  column.kind = RunColumn::Kind::Parameter;
  column.position = parameter;
  column.name = label.name;
  column.title = shownText(label.name);
  column.hint = "Parameter " + column.title + unitText(label);
  column.isNumber = !scan.parameters[parameter].isText();
  return column;
}

RunColumn featureColumn(Scan const& scan, std::size_t output, RunFeature feature)
{
  static constexpr std::array<char const*, 5> words = {"last", "max", "min", "mean", "time of max"};
  static constexpr std::array<char const*, 5> hints = {"The last value of ", "The largest value of ",
                                                       "The smallest value of ", "The mean of the values of ",
                                                       "The time of the largest value of "};
  ColumnLabel const& label = scan.outputs[output].label;
  const auto which = static_cast<std::size_t>(feature);
  RunColumn column;
  column.kind = RunColumn::Kind::Feature;
  column.position = output;
  column.feature = feature;
  column.name = std::string(featureWord(feature)) + '(' + label.name + ')';
  column.title = QString(words.at(which)) + ' ' + shownText(label.name);
  column.hint = hints.at(which) + shownText(label.name) +
                unitText(feature == RunFeature::TimeOfMax ? scan.time : label);
  column.isNumber = true;
  return column;
}

RunColumn plainColumn(RunColumn::Kind kind, char const* name, char const* title, char const* hint)
{
  RunColumn column;
  column.kind = kind;
  column.name = name;
  column.title = title;
  column.hint = hint;
  return column;
}

} // namespace

std::vector<RunColumn> runColumns(Scan const& scan, std::vector<std::size_t> const& outputs,
                                  bool withClusters)
{
  using Kind = RunColumn::Kind;
  std::vector<RunColumn> columns = {
      plainColumn(Kind::Key, "run", "Run", "Its number or name in the file"),
      plainColumn(Kind::Status, "status", "Status", "How the run ended: complete, short or failed"),
      plainColumn(Kind::Passes, "passes", "Passes", "Whether the run passes the gates")};
  if (withClusters) {
    columns.push_back(plainColumn(Kind::Cluster, "cluster", "Cluster",
                                  "The cluster of the run, of the sets that are clusters"));
    columns.back().isNumber = true;
  }
  columns.push_back(plainColumn(Kind::Sets, "sets", "Sets", "The sets that the run belongs to"));
  for (std::size_t i = 0; i < scan.parameters.size(); ++i) columns.push_back(parameterColumn(scan, i));
  for (std::size_t output : outputs)
    for (RunFeature feature : runFeatures)
      if (output < scan.outputs.size()) columns.push_back(featureColumn(scan, output, feature));
  return columns;
}

} // namespace runsieve::app
