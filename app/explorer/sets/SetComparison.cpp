#include "app/explorer/sets/SetComparison.h"

#include "app/explorer/controls/Keys.h"
#include "app/explorer/controls/PlainText.h"
#include "app/explorer/controls/TableColumns.h"
#include "app/explorer/tables/ParameterColumns.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace runsieve::app {

SetComparison::SetComparison(Document& ofDocument, NamedSet const& a, NamedSet const& b, QWidget* parent)
    : QDialog(parent), document(ofDocument)
{
  setWindowTitle("Compare two sets");
  build(a, b);
  connect(&work, &Background::failed, below, &QLabel::setText);
  connect(&document, &Document::opened, this, &QDialog::reject);
  start(a.runs, b.runs);
}

void SetComparison::build(NamedSet const& a, NamedSet const& b)
{
  RunSet both = a.runs;
  both &= b.runs;
  QString text = QString("A: %1, %2\nB: %3, %4")
                     .arg(shownText(a.name), plural(a.runs.count(), "run"), shownText(b.name),
                          plural(b.runs.count(), "run"));
  if (both.count() > 0) text += QString("\nIn both, and counted with A: %1").arg(plural(both.count(), "run"));
  above = new QLabel;
  above->setTextFormat(Qt::PlainText);
  above->setWordWrap(true);
  above->setText(text);
  rows = new QTableWidget;
  rows->setAccessibleName("Parameters of both sets");
  styleTable(*rows);
  auto const copy = [this] {
    if (!rows->selectionModel()->hasSelection()) rows->selectAll();
    QGuiApplication::clipboard()->setText(selectedRowsText(*rows));
  };
  (new Keys(*rows))->on(QKeySequence::Copy, copy);
  below = new QLabel(QString::fromUtf8("Comparing \u2026"));
  below->setTextFormat(Qt::PlainText);
  below->setWordWrap(true);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  connect(buttons->addButton("Copy", QDialogButtonBox::ActionRole), &QPushButton::clicked, this, copy);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(above);
  layout->addWidget(rows, 1);
  layout->addWidget(below);
  layout->addWidget(buttons);
  const int letter = fontMetrics().averageCharWidth();
  resize(letter * 100, letter * 65);
}

void SetComparison::start(RunSet const& a, RunSet const& b)
{
  RunSet either = a;
  either |= b;
  work.start([this, scan = document.sharedScan(), a, either, method = document.state().method](
                 Background::Cancelled const& cancelled) -> std::function<void()> {
    ComparisonWork options;
    options.cancelled = cancelled;
    auto result = std::make_shared<Comparison const>(compareParameters(*scan, a, either, method, options));
    return [this, result] { fill(*result); };
  });
}

void SetComparison::fill(Comparison const& comparison)
{
  std::vector<ParameterColumn> const& columns = parameterColumns();
  rows->setColumnCount(static_cast<int>(columns.size()));
  rows->setRowCount(static_cast<int>(comparison.parameters.size()));
  for (int c = 0; c < rows->columnCount(); ++c) {
    ParameterColumn const& column = columns[static_cast<std::size_t>(c)];
    auto* title = new QTableWidgetItem(QString(column.title).replace("passing", "A").replace("others", "B"));
    title->setToolTip(QString(column.hint)
                          .replace("the passing runs", "A")
                          .replace("passing runs", "A")
                          .replace("Passing runs", "Runs of A")
                          .replace("the other runs", "B")
                          .replace("Other runs", "Runs of B")
                          .replace("others", "B"));
    title->setTextAlignment(static_cast<int>(Qt::AlignVCenter | (c == 0 ? Qt::AlignLeft : Qt::AlignRight)));
    rows->setHorizontalHeaderItem(c, title);
    for (int r = 0; r < rows->rowCount(); ++r) {
      ParameterComparison const& parameter = comparison.parameters[static_cast<std::size_t>(r)];
      auto* item = new QTableWidgetItem(column.text(parameter, comparison.method.adjustment));
      item->setToolTip(toolTipText(item->text()));
      item->setTextAlignment(static_cast<int>(Qt::AlignVCenter | (c == 0 ? Qt::AlignLeft : Qt::AlignRight)));
      rows->setItem(r, c, item);
    }
  }
  rows->resizeColumnsToContents();
  const int letter = fontMetrics().averageCharWidth();
  for (int c = 1; c < rows->columnCount(); ++c) { // short titles need room for the edges of the header
    const int title = fontMetrics().horizontalAdvance(rows->horizontalHeaderItem(c)->text());
    rows->setColumnWidth(c, std::max(rows->columnWidth(c), title + 4 * letter));
  }
  rows->setColumnWidth(0, std::min(rows->columnWidth(0), 32 * letter));
  std::size_t significant = 0;
  for (ParameterComparison const& parameter : comparison.parameters)
    significant += parameter.significant ? 1 : 0;
  QString text = QString("%1 of %2 parameters differ").arg(significant).arg(comparison.parameters.size());
  if (!comparison.leftOut.empty())
    text += QString("; %1 left out, which do not vary or have too few values").arg(comparison.leftOut.size());
  below->setText(text);
}

QString SetComparison::summary() const
{
  return above->text();
}

} // namespace runsieve::app
