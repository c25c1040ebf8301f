#include "app/explorer/controls/SearchableBox.h"
#include "app/explorer/gates/GateFields.h"
#include "app/explorer/gates/GateKinds.h"

#include <runsieve/core/gate/GateText.h>
#include <runsieve/core/text/Decimal.h>
#include <runsieve/core/text/FieldText.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

/// The number in a field; nothing if it is empty. \throw GateError
std::optional<double> numberIn(QLineEdit const& field)
{
  const std::string text = field.text().trimmed().toStdString();
  if (text.empty()) return std::nullopt;
  auto const number = parseNumber(text);
  if (!number || std::isnan(*number))
    throw GateError(field.accessibleName().toStdString() + ": " + numberFault(text));
  return number;
}

QString numberOrEmpty(std::optional<double> number)
{
  return number && std::isfinite(*number) ? QString::fromStdString(decimal(*number)) : QString();
}

/// Whether a name is that of an output, of several even.
bool isOutput(Scan const& scan, std::string const& name)
{
  return std::any_of(scan.outputs.begin(), scan.outputs.end(), [&](ScanOutput const& output) {
    return output.label.name == name || output.label.fullName() == name;
  });
}

bool isParameter(Scan const& scan, std::string const& name)
{
  return std::any_of(scan.parameters.begin(), scan.parameters.end(), [&](ScanParameter const& parameter) {
    return parameter.label.name == name || parameter.label.fullName() == name;
  });
}

/// What stands behind the words with which the text of a gate begins.
QString listOf(Gate gate)
{
  gate.negated = false;
  gate.column = "x";
  const QString text = QString::fromStdString(formatGate(gate));
  const QString word = gate.kind == GateKind::Is ? " is " : "runs ";
  return text.mid(text.indexOf(word) + word.size());
}

} // namespace

void GateFields::listColumns()
{
  const QString before = columns->currentText();
  const QSignalBlocker quiet(columns);
  columns->clear();
  offered.clear();
  const GateKind now = kind();
  if (isOnOutput(now))
    for (std::size_t i = 0; i < scan.outputs.size(); ++i) {
      offered.push_back({scan.outputs[i].label.fullName(), false, i});
      columns->addItem(QString::fromStdString(scan.outputs[i].label.name));
    }
  if (mayBeOnParameter(now))
    for (std::size_t i = 0; i < scan.parameters.size(); ++i) {
      ScanParameter const& parameter = scan.parameters[i];
      if (now == GateKind::Inside && parameter.isText()) continue; // texts lie in no range
      const std::string name = parameter.label.fullName();
      offered.push_back({isOutput(scan, name) ? "Parameter: " + name : name, true, i});
      columns->addItem(QString::fromStdString(parameter.label.name) + " (parameter)");
    }
  const int same = columns->findText(before);
  columns->setCurrentIndex(same >= 0 ? same : offered.empty() ? -1 : 0);
}

void GateFields::takeTimes(Gate& gate) const
{
  const GateSpan span{numberIn(*firstTime), numberIn(*lastTime)};
  // Without a span the name of a parameter would mean that.
  if (span.first || span.last || (gate.kind == GateKind::Inside && isParameter(scan, gate.column)))
    gate.span = span;
}

void GateFields::takeList(Gate& gate) const
{
  const bool is = gate.kind == GateKind::Is;
  const std::string typed = (is ? texts : runs)->text().trimmed().toStdString();
  if (typed.empty()) throw GateError(is ? "values are missing" : "runs are missing: write 3, 5, 10-15");
  const Gate read = parseGate((is ? "x is " : "runs ") + typed);
  if (read.kind != gate.kind) throw GateError("that is no list: " + quoted(typed));
  gate.texts = read.texts;
  gate.runs = read.runs;
}

Gate GateFields::gate() const
{
  Gate gate;
  gate.kind = kind();
  gate.negated = inverted->isChecked();
  if (isOnOutput(gate.kind) || mayBeOnParameter(gate.kind)) {
    if (!column() && unknownColumn.empty())
      throw GateError("the scan has nothing that such a gate could be on");
    gate.column = unknownColumn.empty() ? column()->name : unknownColumn;
  }
  if (hasValues(gate.kind)) {
    if (!column() || !column()->isParameter) takeTimes(gate);
    gate.range.low = numberIn(*low).value_or(gate.range.low);
    gate.range.high = numberIn(*high).value_or(gate.range.high);
  }
  if (gate.kind == GateKind::Is || gate.kind == GateKind::Runs) takeList(gate);
  if (gate.kind == GateKind::Status)
    for (std::size_t i = 0; i < statusChecks.size(); ++i)
      if (statusChecks[i]->isChecked()) gate.statuses.push_back(static_cast<RunStatus>(i));
  if (gate.kind == GateKind::Status && gate.statuses.empty())
    throw GateError("a status is missing: choose one or several");
  if (gate.kind == GateKind::Cluster) {
    gate.cluster = clusterNumber->value();
    gate.clusters = clusterCount->value();
    gate.mode = static_cast<ClusterMode>(clusterMode->currentIndex());
  }
  return gate;
}

void GateFields::choose(Gate const& gate)
{
  kinds->setCurrentIndex(kinds->findData(static_cast<int>(gate.kind)));
  listColumns();
  // A bare name means what the core takes it for: an output, or without one a parameter.
  auto const means = [&](Column const& offer) {
    ColumnLabel const& label =
        offer.isParameter ? scan.parameters[offer.position].label : scan.outputs[offer.position].label;
    return offer.name == gate.column || label.fullName() == gate.column || label.name == gate.column ||
           (offer.isParameter && gate.column == "Parameter: " + label.name);
  };
  auto const found = std::find_if(offered.begin(), offered.end(), means);
  unknownColumn = found == offered.end() ? gate.column : std::string();
  columns->setCurrentIndex(found == offered.end() ? -1 : static_cast<int>(found - offered.begin()));
  if (!unknownColumn.empty()) columns->setEditText(QString::fromStdString(unknownColumn));
}

void GateFields::setGate(Gate const& gate)
{
  const QSignalBlocker quiet(this);
  choose(gate);
  const GateSpan span = gate.span.value_or(GateSpan());
  firstTime->setText(numberOrEmpty(span.first));
  lastTime->setText(numberOrEmpty(span.last));
  low->setText(numberOrEmpty(gate.range.low));
  high->setText(numberOrEmpty(gate.range.high));
  texts->setText(gate.kind == GateKind::Is ? listOf(gate) : QString());
  runs->setText(gate.kind == GateKind::Runs ? listOf(gate) : QString());
  for (std::size_t i = 0; i < statusChecks.size(); ++i)
    statusChecks[i]->setChecked(
        std::count(gate.statuses.begin(), gate.statuses.end(), static_cast<RunStatus>(i)) > 0);
  if (gate.kind == GateKind::Cluster) {
    clusterCount->setValue(gate.clusters);
    clusterNumber->setValue(gate.cluster);
    clusterMode->setCurrentIndex(static_cast<int>(gate.mode));
  }
  inverted->setChecked(gate.negated);
  showRows();
}

} // namespace runsieve::app
