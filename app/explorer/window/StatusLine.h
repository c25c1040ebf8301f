#pragma once

#include <QObject>
#include <QString>

class QLabel;
class QProgressBar;
class QPushButton;
class QStatusBar;
class QTimer;
class QToolButton;

namespace runsieve::app {

class Document;
class Files;

/// What the status bar tells: of the scan and the runs that pass, or for a moment of something else; how far
/// reading is; and that there is something to know about how the file was read.
class StatusLine : public QObject
{
  Q_OBJECT

public:
  StatusLine(Document& document, Files& files, QStatusBar& bar);

  /// Tells something else until the next change; empty ends that.
  void tell(QString const& text);
  [[nodiscard]] QString text() const;

Q_SIGNALS:
  void notesWanted();

private:
  void refresh();
  void refreshNotes();
  void limitTips();

  Document& document;
  Files& files;
  QStatusBar& bar;
  QLabel* status = nullptr;
  QString news; ///< told of files a moment ago: beside what is told of the runs, which changes soon
  QTimer* forgetting = nullptr;
  QPushButton* notes = nullptr;     ///< hidden if there is nothing to tell
  QProgressBar* progress = nullptr; ///< hidden while nothing is read
  QToolButton* cancelling = nullptr;
};

} // namespace runsieve::app
