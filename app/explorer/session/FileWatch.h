#pragma once

#include "app/explorer/document/Document.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

namespace runsieve::app {

/// Watches the file, or the folder of files, that the scan of a document was read from.
class FileWatch : public QObject
{
  Q_OBJECT

public:
  explicit FileWatch(Document& document, QObject* parent = nullptr);

  /// How long a file must stay as it is before its change is told, in ms: programs write in pieces.
  void setPatience(int milliseconds) { settling.setInterval(milliseconds); }

Q_SIGNALS:
  /// The file has other contents than those that were read, by its size and time; told once for each change.
  void changedOnDisk(QString const& path);
  /// The file is not there any more, and stays away; told once until it comes back.
  void goneFromDisk(QString const& path);
  /// It has come back as it was.
  void backOnDisk();

private:
  void reopen();
  void look();
  void watch();
  [[nodiscard]] QByteArray stateOfFiles() const;

  Document& document;
  QFileSystemWatcher watcher;
  QTimer settling;
  QStringList paths; ///< of the scan, and of the table of its parameters if it is another file
  QByteArray read;   ///< state when it was read, or when it was told last
  QByteArray seen;   ///< at the last look; empty if a file was not there
  bool gone = false; ///< told
};

} // namespace runsieve::app
