#include "app/explorer/session/FileWatch.h"

#include <runsieve/core/read/ParametersFile.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <string>
#include <utility>

namespace runsieve::app {

namespace {

constexpr int usualPatience = 700; ///< ms

void addStateOf(QFileInfo const& info, QByteArray& state)
{
  state += info.fileName().toUtf8() + ' ' + QByteArray::number(info.size()) + ' ' +
           QByteArray::number(info.lastModified().toMSecsSinceEpoch()) + '\n';
}

} // namespace

FileWatch::FileWatch(Document& ofDocument, QObject* parent) : QObject(parent), document(ofDocument)
{
  settling.setSingleShot(true);
  settling.setInterval(usualPatience);
  connect(&settling, &QTimer::timeout, this, &FileWatch::look);
  connect(&document, &Document::opened, this, &FileWatch::reopen);
  auto const stir = [this] { settling.start(); };
  connect(&watcher, &QFileSystemWatcher::fileChanged, this, stir);
  connect(&watcher, &QFileSystemWatcher::directoryChanged, this, stir);
  reopen();
}

void FileWatch::reopen()
{
  settling.stop();
  paths.clear();
  if (!watcher.files().isEmpty()) watcher.removePaths(watcher.files());
  if (!watcher.directories().isEmpty()) watcher.removePaths(watcher.directories());
  if (!document.isOpen() || document.source().path.empty()) return;
  paths << QFileInfo(QFile::decodeName(document.source().path.c_str())).absoluteFilePath();
  const std::string table = givenParametersFile(document.source().path, document.source().read);
  if (!table.empty()) paths << QFileInfo(QFile::decodeName(table.c_str())).absoluteFilePath();
  gone = false;
  read = seen = stateOfFiles();
  watch();
}

void FileWatch::watch()
{
  // A file that is replaced is another one: its folder tells of that.
  for (QString const& path : paths) {
    const QString folder = QFileInfo(path).absolutePath();
    if (QFileInfo::exists(path) && !watcher.files().contains(path) && !watcher.directories().contains(path))
      watcher.addPath(path);
    if (!watcher.directories().contains(folder)) watcher.addPath(folder);
  }
}

QByteArray FileWatch::stateOfFiles() const
{
  QByteArray state;
  for (QString const& path : paths) {
    QFileInfo info(path);
    info.setCaching(false);
    if (!info.exists()) return {};
    if (info.isDir())
      for (QFileInfo const& entry : QDir(path).entryInfoList(QDir::Files, QDir::Name))
        addStateOf(entry, state);
    else
      addStateOf(info, state);
  }
  return state;
}

void FileWatch::look()
{
  const QByteArray now = stateOfFiles();
  watch();
  if (now != seen) { // still being written, or about to be replaced
    seen = now;
    settling.start();
    return;
  }
  if (now.isEmpty()) {
    if (!std::exchange(gone, true)) Q_EMIT goneFromDisk(paths.first());
    return;
  }
  const bool wasGone = std::exchange(gone, false);
  if (now == read) {
    if (wasGone) Q_EMIT backOnDisk();
    return;
  }
  read = now;
  Q_EMIT changedOnDisk(paths.first());
}

} // namespace runsieve::app
