#include "app/explorer/session/Autosave.h"

#include "app/explorer/session/SessionFile.h"

#include <runsieve/core/sieve/Fingerprint.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QStandardPaths>
#include <QUuid>

#include <algorithm>
#include <exception>
#include <utility>

namespace runsieve::app {

namespace {

constexpr int usualDelay = 3000; ///< ms
constexpr char ending[] = ".sieve";

QString folder()
{
  return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/recovery";
}

QString lockOf(QString const& path)
{
  return path + ".lock";
}

std::unique_ptr<QLockFile> lockFor(QString const& path)
{
  auto lock = std::make_unique<QLockFile>(lockOf(path));
  lock->setStaleLockTime(0); // stale only if its process is gone
  return lock;
}

} // namespace

Autosave::Autosave(Document& ofDocument, std::function<void(Session&)> completing, QObject* parent)
    : QObject(parent), document(ofDocument), complete(std::move(completing))
{
  file = folder() + '/' + QUuid::createUuid().toString(QUuid::WithoutBraces) + ending;
  timer.setSingleShot(true);
  timer.setInterval(usualDelay);
  connect(&timer, &QTimer::timeout, this, &Autosave::save);
  connect(&document, &Document::opened, this, &Autosave::reopen);
  // The state changes before the step that changed it counts as done.
  connect(&document.undoStack(), &QUndoStack::indexChanged, this, &Autosave::changed);
  connect(&document.undoStack(), &QUndoStack::cleanChanged, this, &Autosave::changed);
  connect(&document, &Document::highlightChanged, this, &Autosave::highlighted);
  reopen();
}

Autosave::~Autosave()
{
  document.disconnect(this);
  document.undoStack().disconnect(this);
  finding.cancel();
  remove();
}

void Autosave::reopen()
{
  timer.stop();
  remove();
  known.clear();
  pinned.clear();
  if (!document.isOpen()) {
    finding.cancel();
    return;
  }
  finding.start([this, scan = document.sharedScan()](Background::Cancelled const&) -> std::function<void()> {
    return [this, scan, found = fingerprintOf(*scan)] {
      if (document.sharedScan() == scan) known = found;
    };
  });
}

void Autosave::adopt(QString const& left)
{
  remove();
  file = left;
  takeLock();
  changed();
}

void Autosave::takeLock()
{
  lock = lockFor(file);
  if (!lock->tryLock(0)) lock.reset();
}

void Autosave::changed()
{
  const bool isWorthIt = document.isOpen() && !document.source().path.empty() &&
                         (document.undoStack().canUndo() || !document.undoStack().isClean() ||
                          !document.pinnedRuns().empty() || QFileInfo::exists(file));
  if (isWorthIt && !timer.isActive()) timer.start();
}

void Autosave::highlighted()
{
  if (document.pinnedRuns() == pinned) return; // a run under the pointer, or the selected gate
  pinned = document.pinnedRuns();
  changed();
}

void Autosave::save()
{
  if (!document.isOpen()) return;
  if (known.empty()) { // not found yet
    timer.start();
    return;
  }
  QDir().mkpath(folder());
  if (!lock) takeLock();
  Session session = sessionOf(document, known);
  if (complete) complete(session);
  if (!writing) writing = std::make_unique<Background>();
  writing->start([path = file, session](Background::Cancelled const&) -> std::function<void()> {
    try {
      writeSession(path, session);
    } catch (std::exception const&) {
      // A full disk or a home that cannot be written must not disturb the work: the user saves by hand.
    }
    return {};
  });
}

void Autosave::remove()
{
  writing.reset(); // waits for what is being written
  QFile::remove(file);
  if (lock) lock->unlock();
  lock.reset();
}

std::vector<RecoverableSession> recoverableSessions()
{
  std::vector<RecoverableSession> sessions;
  const QDir place(folder());
  for (QFileInfo const& info : place.entryInfoList({QString("*") + ending}, QDir::Files)) {
    auto const lock = lockFor(info.absoluteFilePath());
    if (!lock->tryLock(0)) continue; // its window lives
    lock->unlock();
    try {
      const Session session = readSession(info.absoluteFilePath());
      sessions.push_back(
          {info.absoluteFilePath(), QString::fromStdString(session.path), info.lastModified()});
    } catch (std::exception const&) {
      continue;
    }
  }
  std::sort(sessions.begin(), sessions.end(),
            [](RecoverableSession const& a, RecoverableSession const& b) { return a.savedAt > b.savedAt; });
  return sessions;
}

void discardRecoverable(RecoverableSession const& session)
{
  QFile::remove(session.path);
  QFile::remove(lockOf(session.path));
}

} // namespace runsieve::app
