#include "app/explorer/tables/ParameterTable.h"

#include "app/cli/OutputFiles.h"
#include "app/cli/RankReport.h"
#include "app/explorer/controls/Keys.h"
#include "app/explorer/controls/PlainText.h"
#include "app/explorer/controls/TableColumns.h"
#include "app/explorer/document/ReadFiles.h"
#include "app/explorer/tables/ParameterTableModel.h"

#include <QClipboard>
#include <QFile>
#include <QFileDialog>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

#include <sstream>

namespace runsieve::app {

ParameterTable::ParameterTable(Document& ofDocument, QWidget* parent) : QWidget(parent), document(ofDocument)
{
  setAccessibleName("Table of parameters");
  build();
  for (auto changed : {&Document::opened, &Document::comparisonChanged})
    connect(&document, changed, this, &ParameterTable::refresh);
  refresh();
}

void ParameterTable::build()
{
  model = new ParameterTableModel(document, this);
  view = new QTableView;
  view->setModel(model);
  view->setAccessibleName("Parameters");
  styleTable(*view);
  view->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
  view->setSortingEnabled(true);
  sortAsRanked();
  new TableColumns(*view);
  filter = new QLineEdit;
  filter->setPlaceholderText("Filter by name");
  filter->setAccessibleName("Filter by name");
  filter->setToolTip("Shows the parameters whose name holds this text");
  filter->setClearButtonEnabled(true);
  exporting = new QToolButton;
  exporting->setText("Export...");
  exporting->setToolTip("Write all numbers with all digits as CSV, as the rank command does");
  empty = new QLabel;
  empty->setAlignment(Qt::AlignCenter);
  empty->setWordWrap(true);
  empty->setEnabled(false);
  below = new QLabel;
  below->setTextFormat(Qt::PlainText);
  below->setWordWrap(true);
  below->setAccessibleName("Remarks on the comparison");
  auto* bar = new QHBoxLayout;
  bar->addWidget(filter, 1);
  bar->addWidget(exporting);
  auto* layout = new QVBoxLayout(this);
  constexpr int margin = 6;
  layout->setContentsMargins(margin, margin, margin, margin);
  layout->setSpacing(margin);
  layout->addLayout(bar);
  layout->addWidget(view, 1);
  layout->addWidget(empty, 1);
  layout->addWidget(below);
  connect(filter, &QLineEdit::textChanged, model, &ParameterTableModel::setFilter);
  connect(exporting, &QToolButton::clicked, this, &ParameterTable::exportCsv);
  connect(view, &QWidget::customContextMenuRequested, this, &ParameterTable::showMenu);
  connect(view, &QAbstractItemView::activated, this,
          [this](QModelIndex const& index) { Q_EMIT parameterWanted(model->parameterAt(index.row())); });
  auto* hotKeys = new Keys(*view);
  hotKeys->on(QKeySequence::Copy, [this] { copy(); });
  hotKeys->on(Qt::Key_Delete, [] {}); // else the window would delete the selected gate
}

QString ParameterTable::remarks() const
{
  Comparison const* compared = document.comparison();
  if (!compared) return {};
  QStringList lines;
  if (!compared->leftOut.empty()) {
    QStringList names;
    constexpr std::size_t most = 6;
    for (std::size_t i = 0; i < compared->leftOut.size() && i < most; ++i)
      names << shownText(compared->leftOut[i].name) + " (" + shownText(compared->leftOut[i].reason) + ")";
    if (compared->leftOut.size() > most)
      names << QString("and %L1 more").arg(compared->leftOut.size() - most);
    lines << "Left out: " + names.join(", ");
  }
  for (ComparisonWarning const& warning : compared->warnings)
    lines << shownText(warning.text) + ": " + shownText(warning.advice);
  return lines.join('\n');
}

void ParameterTable::refresh()
{
  Comparison const* compared = document.comparison();
  view->setVisible(compared != nullptr);
  empty->setVisible(compared == nullptr);
  empty->setText(!document.isOpen()         ? "No scan is open."
                 : document.previewedGate() ? "Parameters are compared when the gate is placed."
                 : document.sieves()
                     ? "Comparing ..."
                     : "Without gates all runs pass.\nDraw or type a gate to compare the runs "
                       "that pass it with the others.");
  filter->setEnabled(compared != nullptr);
  exporting->setEnabled(compared && document.isCompared());
  const QString text = remarks();
  constexpr int most = 300;
  below->setText(text.size() > most ? text.left(most) + QString::fromUtf8("\u2026") : text);
  below->setToolTip(toolTipText(text));
  below->setVisible(!text.isEmpty());
}

void ParameterTable::writeCsv(QString const& path) const
{
  requireOtherFile(document.source(), path);
  std::ostringstream text;
  printRankCsv(text, *document.comparison());
  writeText(QFile::encodeName(path).toStdString(), text.str());
}

void ParameterTable::exportCsv()
{
  if (!document.comparison()) return;
  const QString path =
      QFileDialog::getSaveFileName(this, "Export the table of parameters", "comparison.csv", "CSV (*.csv)");
  if (path.isEmpty() || !document.comparison()) return;
  try {
    writeCsv(path);
  } catch (std::exception const& error) {
    tellFailure(this, "The table could not be written.", QString::fromUtf8(error.what()));
  }
}

void ParameterTable::copy()
{
  if (!view->selectionModel()->hasSelection()) view->selectAll();
  const QString text = selectedRowsText(*view);
  if (!text.isEmpty()) QGuiApplication::clipboard()->setText(text);
}

void ParameterTable::sortAsRanked()
{
  view->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
  model->sort(-1, Qt::AscendingOrder);
}

void ParameterTable::showMenu(QPoint const& at)
{
  QMenu menu(this);
  menu.addAction("Copy", this, &ParameterTable::copy)->setEnabled(model->rowCount() > 0);
  menu.addAction("Select all", view, &QTableView::selectAll);
  menu.addAction("Order by significance", this, &ParameterTable::sortAsRanked);
  menu.addSeparator();
  menu.addAction("Export...", this, &ParameterTable::exportCsv)->setEnabled(exporting->isEnabled());
  menu.exec(view->viewport()->mapToGlobal(at));
}

} // namespace runsieve::app
