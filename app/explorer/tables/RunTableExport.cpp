#include "app/explorer/controls/PlainText.h"
#include "app/explorer/document/ReadFiles.h"
#include "app/explorer/tables/RunSelection.h"
#include "app/explorer/tables/RunTable.h"
#include "app/explorer/tables/RunTableModel.h"

#include <runsieve/core/scan/ScanError.h>

#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QTableView>
#include <QToolButton>

namespace runsieve::app {

namespace {

constexpr char notWritten[] = "The runs could not be written.";

struct Entry
{
  char const* text;
  void (RunTable::*slot)();
  bool ofSelection;
};

constexpr Entry entries[] = {{"Rows shown as CSV...", &RunTable::exportCsv, false},
                             {"Selected rows as CSV...", &RunTable::exportSelectedCsv, true},
                             {"Rows shown as scan...", &RunTable::exportScan, false},
                             {"Selected rows as scan...", &RunTable::exportSelectedScan, true},
                             {"Copy", &RunTable::copy, false}};

} // namespace

void RunTable::buildMenu()
{
  auto* menu = new QMenu(exporting);
  for (Entry const& entry : entries) {
    QAction* action = menu->addAction(entry.text, this, entry.slot);
    connect(menu, &QMenu::aboutToShow, action, [this, action, entry] {
      action->setEnabled(entry.ofSelection ? view->selectionModel()->hasSelection() : model->rowCount() > 0);
    });
  }
  exporting->setMenu(menu);
}

void RunTable::connectWork()
{
  connect(&work, &RunExport::busyChanged, this, [this] {
    cancelling->setVisible(work.isBusy());
    if (work.isBusy()) tell(QString::fromUtf8("Writing \u2026"));
  });
  connect(cancelling, &QToolButton::clicked, this, [this] {
    work.cancel();
    tell("Cancelled.");
  });
  connect(&work, &RunExport::done, this, &RunTable::tell);
  connect(&work, &RunExport::failed, this, [this](QString const& message) {
    tell({});
    tellFailure(this, notWritten, message);
  });
}

void RunTable::tell(QString const& text)
{
  told->setText(text);
  told->setVisible(!text.isEmpty());
}

void RunTable::showMenu(QPoint const& at)
{
  QMenu menu(this);
  const bool selected = view->selectionModel()->hasSelection();
  for (Entry const& entry : entries)
    menu.addAction(entry.text, this, entry.slot)
        ->setEnabled(entry.ofSelection ? selected : model->rowCount() > 0);
  menu.addSeparator();
  menu.addAction("Select all", view, &QTableView::selectAll);
  menu.addAction("Unpin all", this, [this] { document.pin({}); })->setEnabled(!document.pinnedRuns().empty());
  menu.addAction("Order of the file", this, [this] { view->sortByColumn(-1, Qt::AscendingOrder); });
  menu.exec(view->viewport()->mapToGlobal(at));
}

bool RunTable::mayWrite(QString const& path)
{
  try {
    requireOtherFile(document.source(), path);
    return true;
  } catch (ScanError const& error) {
    tellFailure(this, notWritten, QString::fromUtf8(error.what()));
    return false;
  }
}

void RunTable::writeCsv(Rows rows, QString const& path)
{
  if (mayWrite(path)) work.writeCsv(model->cells(), runsOf(rows), shownColumns(), path);
}

void RunTable::writeScan(Rows rows, QString const& path)
{
  if (document.isOpen()) writeScan(runsOf(rows), path);
}

void RunTable::writeScan(std::vector<std::size_t> const& runs, QString const& path)
{
  if (!runs.empty() && mayWrite(path)) work.writeScan(document.sharedScan(), runs, path);
}

void RunTable::askForCsv(Rows rows)
{
  if (runsOf(rows).empty()) return;
  const QString path = QFileDialog::getSaveFileName(this, "Export runs as CSV", "runs.csv", "CSV (*.csv)");
  if (!path.isEmpty() && document.isOpen()) writeCsv(rows, path);
}

void RunTable::askForScan(std::vector<std::size_t> const& runs)
{
  if (runs.empty()) {
    tell("There are no runs to write: a scan has one at least.");
    return;
  }
  const auto scan = document.sharedScan();
  const QString path =
      QFileDialog::getSaveFileName(this, "Export runs as scan", "runs.csv", "Scans (*.csv);;All files (*)");
  if (!path.isEmpty() && document.sharedScan() == scan) writeScan(runs, path);
}

void RunTable::exportCsv()
{
  askForCsv(Rows::Shown);
}

void RunTable::exportSelectedCsv()
{
  askForCsv(Rows::Selected);
}

void RunTable::exportScan()
{
  if (document.isOpen()) askForScan(runsOf(Rows::Shown));
}

void RunTable::exportSelectedScan()
{
  if (document.isOpen()) askForScan(runsOf(Rows::Selected));
}

void RunTable::exportPassingScan()
{
  if (document.isOpen()) askForScan(document.passing().members());
}

void RunTable::copy()
{
  const Rows rows = view->selectionModel()->hasSelection() ? Rows::Selected : Rows::Shown;
  if (document.isOpen()) work.copy(model->cells(), runsOf(rows), shownColumns());
}

} // namespace runsieve::app
