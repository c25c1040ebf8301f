#pragma once

#include "app/explorer/session/Session.h"

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

class QLockFile;

namespace runsieve::app {

/// Keeps what the user has made of a scan in a file, some seconds after each change, so that it outlives a
/// crash: one file for each window. When the window ends as it should the file goes.
class Autosave : public QObject
{
  Q_OBJECT

public:
  /// \param complete adds to a session what the document does not know, such as the zoom
  explicit Autosave(Document& document, std::function<void(Session&)> complete = {},
                    QObject* parent = nullptr);
  /// A clean end.
  ~Autosave() override;

  /// How long after a change it is written, in ms.
  void setDelay(int milliseconds) { timer.setInterval(milliseconds); }
  /// Goes on with what a window has left that lives no more, now that it is open: it stays until this window
  /// ends or opens another scan.
  void adopt(QString const& left);
  /// Where it is, or will be.
  [[nodiscard]] QString path() const { return file; }
  /// Of the open scan; empty until it is known, soon after the scan was opened.
  [[nodiscard]] std::string const& fingerprint() const { return known; }

private:
  void reopen();
  void changed();
  void highlighted();
  void takeLock();
  void save();
  void remove();

  Document& document;
  std::function<void(Session&)> complete;
  QString file;
  std::unique_ptr<QLockFile> lock; ///< tells others that this window lives
  QTimer timer;
  std::set<std::size_t> pinned; ///< that are known to be kept, or will be
  Background finding;           ///< the fingerprint
  std::string known;
  std::unique_ptr<Background> writing; ///< a disk may be slow
};

/// What a window that ended unexpectedly has left.
struct RecoverableSession
{
  QString path;      ///< of the session
  QString data;      ///< of its scan
  QDateTime savedAt; ///< last
};

/// Sessions of windows that live no more, the newest first. Files that cannot be read are left out.
[[nodiscard]] std::vector<RecoverableSession> recoverableSessions();

/// Removes a session that is recovered or not wanted.
void discardRecoverable(RecoverableSession const& session);

} // namespace runsieve::app
