#include "app/explorer/gates/GateFields.h"

#include "app/explorer/charts/AxisTicks.h"
#include "app/explorer/controls/SearchableBox.h"
#include "app/explorer/gates/GateKinds.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>

namespace runsieve::app {

namespace {

constexpr int mostOfUnit = 8; // characters

} // namespace

GateFields::GateFields(Scan const& ofScan, QWidget* parent) : QWidget(parent), scan(ofScan)
{
  build();
  listColumns();
  showRows();
}

QWidget* GateFields::rowOf(QString const& title, QWidget* field) const
{
  auto* row = new QWidget;
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* label = new QLabel(title);
  label->setBuddy(field);
  const QString unit = QString::fromStdString(scan.time.unit).left(mostOfUnit);
  label->setFixedWidth(label->fontMetrics().horizontalAdvance("Times []M" + unit));
  layout->addWidget(label);
  layout->addWidget(field, 1);
  return row;
}

void GateFields::addRow(QString const& title, QWidget* field, QString const& tip)
{
  field->setToolTip(tip);
  if (field->accessibleName().isEmpty()) field->setAccessibleName(title);
  form->addWidget(rowOf(title, field));
}

void GateFields::addPair(QString const& title, QWidget*& row, QLineEdit*& from, QLineEdit*& to)
{
  row = new QWidget;
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  from = new QLineEdit;
  to = new QLineEdit;
  from->setAccessibleName(title + " from");
  to->setAccessibleName(title + " to");
  layout->addWidget(from, 1);
  layout->addWidget(new QLabel("to"));
  layout->addWidget(to, 1);
  for (QLineEdit* edit : {from, to}) connect(edit, &QLineEdit::textEdited, this, &GateFields::edited);
}

void GateFields::build()
{
  form = new QVBoxLayout(this);
  form->setContentsMargins(0, 0, 0, 0);
  kinds = new QComboBox;
  for (GateKindEntry const& entry : gateKinds()) {
    if (entry.startsGroup) kinds->insertSeparator(kinds->count());
    kinds->addItem(entry.words, static_cast<int>(entry.kind));
    kinds->setItemData(kinds->count() - 1, entry.hint, Qt::ToolTipRole);
  }
  columns = new SearchableBox;
  addPair("Times", times, firstTime, lastTime);
  addPair("Values", values, low, high);
  if (!scan.times.empty()) {
    firstTime->setPlaceholderText(numberText(scan.times.front()));
    lastTime->setPlaceholderText(numberText(scan.times.back()));
  }
  low->setPlaceholderText("any");
  high->setPlaceholderText("any");
  buildLists();
  addRows();
}

void GateFields::buildLists()
{
  texts = new QLineEdit;
  runs = new QLineEdit;
  runs->setPlaceholderText("3, 5, 10-15");
  statuses = new QWidget;
  auto* statusRow = new QHBoxLayout(statuses);
  statusRow->setContentsMargins(0, 0, 0, 0);
  for (RunStatus status : {RunStatus::Complete, RunStatus::Short, RunStatus::Failed}) {
    statusChecks.push_back(new QCheckBox(statusName(status)));
    statusRow->addWidget(statusChecks.back());
    connect(statusChecks.back(), &QCheckBox::clicked, this, &GateFields::edited);
  }
  statusRow->addStretch(1);
  cluster = new QWidget;
  auto* clusterRow = new QHBoxLayout(cluster);
  clusterRow->setContentsMargins(0, 0, 0, 0);
  clusterNumber = new QSpinBox;
  clusterNumber->setRange(0, Gate::mostClusters - 1);
  clusterNumber->setAccessibleName("Number of the cluster");
  clusterCount = new QSpinBox;
  clusterCount->setRange(1, Gate::mostClusters);
  clusterCount->setValue(4);
  clusterCount->setAccessibleName("Number of clusters");
  clusterMode = new QComboBox;
  clusterMode->addItems({"curves", "phase", "magnitude"});
  clusterMode->setAccessibleName("What the shape of a run is");
  clusterRow->addWidget(clusterNumber);
  clusterRow->addWidget(new QLabel("of"));
  clusterRow->addWidget(clusterCount);
  clusterRow->addWidget(new QLabel("by"));
  clusterRow->addWidget(clusterMode, 1);
}

void GateFields::addRows()
{
  const QString unit = QString::fromStdString(scan.time.unit).left(mostOfUnit);
  inverted = new QCheckBox("exactly the other runs pass");
  addRow("Asks for", kinds, "What a run must do to pass");
  addRow("Of", columns, "An output or a parameter; type a part of its name to find it");
  addRow(unit.isEmpty() ? QString("Times") : QString("Times [%1]").arg(unit), times,
         "Open ends are empty; twice the same number is a single time");
  addRow("Values", values, "Both ends belong to the range; open ends are empty");
  addRow("Values", texts, "Values of the parameter, with commas between; in double quotes if they hold any");
  addRow("Status", statuses, "How runs ended");
  addRow("Runs", runs, "Keys of runs with commas between, and spans of numbers");
  addRow("Cluster", cluster, "Counted from 0");
  addRow("Invert", inverted, "Exactly the runs pass that would not");
  connect(kinds, qOverload<int>(&QComboBox::activated), this, [this] {
    unknownColumn.clear();
    listColumns();
    showRows();
    Q_EMIT edited();
  });
  connect(columns, qOverload<int>(&QComboBox::activated), this, [this] {
    unknownColumn.clear();
    showRows();
    Q_EMIT edited();
  });
  for (QLineEdit* edit : {texts, runs}) connect(edit, &QLineEdit::textEdited, this, &GateFields::edited);
  for (QSpinBox* spin : {clusterNumber, clusterCount})
    connect(spin, qOverload<int>(&QSpinBox::valueChanged), this, &GateFields::edited);
  connect(clusterMode, qOverload<int>(&QComboBox::activated), this, &GateFields::edited);
  connect(inverted, &QCheckBox::clicked, this, &GateFields::edited);
}

GateKind GateFields::kind() const
{
  return static_cast<GateKind>(kinds->currentData().toInt());
}

GateFields::Column const* GateFields::column() const
{
  const int index = columns->currentIndex();
  if (index < 0 || static_cast<std::size_t>(index) >= offered.size()) return nullptr;
  return &offered[static_cast<std::size_t>(index)];
}

void GateFields::showRows()
{
  const GateKind now = kind();
  const bool onParameter = column() && column()->isParameter;
  auto const show = [](QWidget* field, bool on) { field->parentWidget()->setVisible(on); };
  show(columns, isOnOutput(now) || mayBeOnParameter(now));
  show(times, hasValues(now) && !onParameter);
  show(values, hasValues(now));
  show(texts, now == GateKind::Is);
  show(statuses, now == GateKind::Status);
  show(runs, now == GateKind::Runs);
  show(cluster, now == GateKind::Cluster);
  if (now == GateKind::Is && onParameter) {
    ScanParameter const& parameter = scan.parameters[column()->position];
    texts->setPlaceholderText(
        parameter.isText() ? QString::fromStdString(parameter.texts.front()).left(40) + ", ..." : "1, 2.5");
  }
}

} // namespace runsieve::app
