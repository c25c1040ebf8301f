#pragma once

#include "app/explorer/document/Document.h"
#include "app/explorer/document/Opening.h"
#include "app/explorer/session/Autosave.h"
#include "app/explorer/session/FileWatch.h"
#include "app/explorer/session/SessionLoader.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <functional>
#include <optional>

namespace runsieve::app {

/// What a window shows that is in no state of a document: zooms, pages.
struct WindowView
{
  std::function<void(Session&)> keep;       ///< adds it to a session
  std::function<void(Session const&)> show; ///< of a session whose scan is open
};

/// The files of a window: opens scans and sessions, saves sessions, keeps what would be lost, and asks the
/// user where it must.
class Files : public QObject
{
  Q_OBJECT

public:
  Files(Document& document, WindowView view, QWidget& window);

  /// Begins to open a scan, a stored plot or a session; what is open stays until all is read. Asks before
  /// that, and once more if there is new work by then, if something would be lost.
  void open(QString const& path, ReadOptions const& options = {});
  void openExample();
  /// Begins to read the data of the document again; gates, sets and view stay.
  void reread();
  void cancel();
  /// Saves the session where it was saved last, or asks for a place. \return false if it was not saved
  bool save();
  bool saveAs();
  bool saveTo(QString const& path);
  /// Begins to open what a window that ended unexpectedly has left.
  void recover(RecoverableSession const& crashed);
  /// Whether the window may close: asks if something would be lost. What is being read is given up.
  [[nodiscard]] bool mayClose();

  /// Whether a file is being read.
  [[nodiscard]] bool isReading() const { return reader.isBusy() || loader.isReading(); }
  /// The same, or work on what was read.
  [[nodiscard]] bool isBusy() const { return reader.isBusy() || loader.isBusy(); }
  /// What is open, for a title: "scan.csv"; empty if nothing is.
  [[nodiscard]] QString title() const;
  /// The folder that it is in, without those above; empty if it is in none.
  [[nodiscard]] QString folder() const;
  [[nodiscard]] Opening& opening() { return reader; }
  [[nodiscard]] SessionLoader& sessions() { return loader; }

public Q_SLOTS:
  /// These ask for a place.
  void chooseFile();
  void chooseFolder();

Q_SIGNALS:
  void begun(QString const& path);
  /// The share that is read, 0 to 1.
  void progressed(double share);
  /// Something was opened, saved, or given up.
  void changed();
  /// The file of the scan has changed since it was read.
  void changedOnDisk(QString const& path);
  void goneFromDisk(QString const& path);
  void backOnDisk();
  /// Something to tell that needs no answer.
  void told(QString const& text);

private:
  /// Where a session that is being opened is from.
  enum class Origin
  {
    File,
    Crash, ///< what a window has left that ended unexpectedly
    Reread ///< what was open
  };

  [[nodiscard]] bool hasUnsavedWork() const;
  /// Asks whether work is to be saved. \return false if the user thought better of what he began
  [[nodiscard]] bool askToSave();
  /// Whether another scan may take the place of this one.
  [[nodiscard]] bool mayReplace();
  /// Whether the file of the session is as it was left here, or the user wants to replace it all the same.
  [[nodiscard]] bool mayWriteOver(QString const& path);
  void connectReader();
  void connectSessions();
  void take(Session const& opened, QString const& path);
  void findData(QString const& path, QString const& data);

  Document& document;
  WindowView view;
  QWidget& window;
  Opening reader;
  SessionLoader loader;
  Autosave autosave;
  FileWatch watch;
  Origin origin = Origin::File;
  QString left;               ///< of Origin::Crash: the file
  bool unsaved = false;       ///< of Origin::Reread: whether work would have been lost
  bool hadSteps = false;      ///< of Origin::Reread: whether there was something to undo
  QString name;               ///< of what is open
  QString session;            ///< where it was saved, or read from; empty if it was not
  QByteArray digest;          ///< of that file as it was read or written here
  std::optional<int> givenUp; ///< step of the work that the user agreed to lose
};

} // namespace runsieve::app
