#pragma once

#include "app/explorer/document/Opening.h"
#include "app/explorer/session/Session.h"

#include <QObject>
#include <QStringList>

#include <functional>
#include <optional>
#include <utility>

namespace runsieve::app {

/// Opens sessions: finds and reads their data beside the interface, and puts them into a document. What is
/// open stays as it is until all has been read.
class SessionLoader : public QObject
{
  Q_OBJECT

public:
  explicit SessionLoader(Document& document, QObject* parent = nullptr);

  /// \param may asked when data have been read, before they take the place of what is open: false gives them
  /// up. Not for data that are read again
  void askBeforeTaking(std::function<bool()> may) { mayTake = std::move(may); }
  /// Opens the session in a file. Without its data dataMissing() is told, and useData() goes on.
  void open(QString const& path);
  /// Goes on with data at another place.
  void useData(QString const& path);
  /// Opens a session whose data are at a place. \param path of the file of the session, for messages; may be
  /// empty
  void open(Session session, QString const& data, QString const& path = {});
  /// Reads the data of the document again and keeps gates, sets and view as they are by then. \param complete
  /// adds what the document does not know, such as the zoom, when the data have been read
  void reread(std::function<void(Session&)> const& complete = {});

  /// What reads the data: its progress can be shown, and it can be given up.
  [[nodiscard]] Opening& opening() { return reader; }
  [[nodiscard]] bool isReading() const { return reader.isBusy(); }
  /// Whether data are read, or compared with those that the session was made for.
  [[nodiscard]] bool isBusy() const { return reader.isBusy() || comparing.isBusy(); }

Q_SIGNALS:
  /// The data of a session are not where they were. \param data where they were; empty if it is not known
  void dataMissing(QString const& path, QString const& data);
  /// A session is open in the document. \param path of its file; empty if it is from none \param notes what
  /// of it the scan does not have
  void opened(Session const& session, QString const& path, QStringList const& notes);
  /// How the data differ from those that the session was made for, with what of it they don't have, after
  /// opened(); not told if there is nothing to tell.
  void differs(QStringList const& lines);
  void failed(QString const& message);

private:
  void take(std::shared_ptr<Scan const> const& scan, ScanSource const& source);
  [[nodiscard]] Session shownSession() const;

  Document& document;
  Opening reader;
  Background comparing;
  std::optional<Session> wanted; ///< whose data are missing or being read
  QString file;                  ///< of `wanted`
  bool sameDataExpected = true;
  std::function<void(Session&)> completing; ///< what is read again
  std::function<bool()> mayTake;
};

} // namespace runsieve::app
