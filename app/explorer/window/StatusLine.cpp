#include "app/explorer/window/StatusLine.h"

#include "app/explorer/controls/PlainText.h"
#include "app/explorer/document/Document.h"
#include "app/explorer/window/Files.h"
#include "app/scan/ReadingText.h"

#include <QFileInfo>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTimer>
#include <QToolButton>

namespace runsieve::app {

namespace {

QString differenceText(Comparison const& compared)
{
  if (compared.passing == 0 || compared.others == 0) return "nothing to compare";
  std::size_t significant = 0;
  for (ParameterComparison const& parameter : compared.parameters)
    significant += parameter.significant ? 1 : 0;
  return QString("%1 of %2 parameters differ").arg(significant).arg(compared.parameters.size());
}

} // namespace

StatusLine::StatusLine(Document& ofDocument, Files& ofFiles, QStatusBar& ofBar)
    : QObject(&ofBar), document(ofDocument), files(ofFiles), bar(ofBar)
{
  constexpr int steps = 1000;
  status = new QLabel;
  status->setTextFormat(Qt::PlainText); // names in a file are no markup, whatever they look like
  bar.addWidget(status, 1);
  progress = new QProgressBar;
  progress->setRange(0, steps);
  progress->setMaximumWidth(180);
  progress->setAccessibleName("Reading");
  cancelling = new QToolButton;
  cancelling->setText("Cancel");
  cancelling->setToolTip("Give up reading");
  notes = new QPushButton;
  notes->setFlat(true);
  notes->setToolTip("What the file was taken for, and what was guessed, dropped or put in order");
  for (QWidget* widget :
       {static_cast<QWidget*>(progress), static_cast<QWidget*>(cancelling), static_cast<QWidget*>(notes)}) {
    bar.addPermanentWidget(widget);
    widget->hide();
  }
  limitTips();
  connect(notes, &QPushButton::clicked, this, &StatusLine::notesWanted);
  connect(cancelling, &QToolButton::clicked, &files, &Files::cancel);
  forgetting = new QTimer(this);
  forgetting->setSingleShot(true);
  constexpr int longEnough = 8000; // ms, to read a line
  forgetting->setInterval(longEnough);
  connect(forgetting, &QTimer::timeout, this, [this] {
    news.clear();
    refresh();
  });
  connect(&files, &Files::begun, this, [this](QString const& path) {
    news.clear();
    status->setText(QString("Reading %1 ...").arg(QFileInfo(path).fileName()));
    progress->setValue(0);
    progress->show();
    cancelling->show();
  });
  connect(&files, &Files::progressed, this,
          [this](double share) { progress->setValue(static_cast<int>(steps * share)); });
  connect(&files, &Files::changed, this, [this] {
    progress->setVisible(files.isReading());
    cancelling->setVisible(files.isReading());
    refresh();
  });
  connect(&files, &Files::told, this, [this](QString const& text) {
    news = text;
    forgetting->start();
    tell(text);
  });
  connect(&document, &Document::opened, this, &StatusLine::refreshNotes);
  for (auto changed :
       {&Document::opened, &Document::stateChanged, &Document::passingChanged, &Document::comparisonChanged})
    connect(&document, changed, this, &StatusLine::refresh);
  refresh();
}

/// Tips of commands cover the line, and a menu that goes away does not always take its tip with it.
void StatusLine::limitTips()
{
  constexpr int longEnough = 4000; // ms, to read a tip
  auto* away = new QTimer(this);
  away->setSingleShot(true);
  away->setInterval(longEnough);
  connect(away, &QTimer::timeout, &bar, &QStatusBar::clearMessage);
  connect(&bar, &QStatusBar::messageChanged, away, [away](QString const& text) {
    if (text.isEmpty())
      away->stop();
    else
      away->start();
  });
}

void StatusLine::tell(QString const& text)
{
  bar.clearMessage();
  if (text.isEmpty())
    refresh();
  else
    status->setText(text);
}

QString StatusLine::text() const
{
  return status->text();
}

void StatusLine::refreshNotes()
{
  const std::size_t toTell = document.isOpen() ? remarks(document.scan(), document.source().report) : 0;
  notes->setText(plural(toTell, "note") + " on reading");
  notes->setVisible(toTell > 0);
}

void StatusLine::refresh()
{
  bar.clearMessage();
  if (files.isReading()) return;
  if (!document.isOpen()) {
    status->setText("Open a scan: File, Open (Ctrl+O)");
    return;
  }
  Scan const& scan = document.scan();
  QString text = news.isEmpty() ? QString() : news + "   |   ";
  text += plural(scan.runs.size(), "run") + ", " + plural(scan.times.size(), "time");
  if (document.sieves())
    text += "   |   " + plural(document.passing().count(), "run") +
            (document.passing().count() == 1 ? " passes" : " pass");
  const std::vector<std::string> idle = gatesWithoutEffect(document.state().gates, document.outcomes());
  if (!idle.empty())
    text += idle.size() == 1
                ? QString("   |   %1 does not fit the data: not counted").arg(QString::fromStdString(idle[0]))
                : QString("   |   %L1 gates do not fit the data: not counted").arg(idle.size());
  if (Comparison const* compared = document.comparison()) {
    text += "   |   " + differenceText(*compared);
    if (!document.isCompared()) text += " ...";
  }
  const std::size_t left = scan.runs.size() - document.eligible().count();
  if (left == scan.runs.size())
    text += "   |   no run is complete: none is compared, unless a gate asks for the status";
  else if (left > 0)
    text += "   |   " + plural(left, "run") + " not complete, not compared";
  status->setText(text);
}

} // namespace runsieve::app
