#include "app/explorer/session/SessionLoader.h"

#include "app/cli/GatedScan.h"
#include "app/explorer/session/SessionFile.h"

#include <runsieve/core/read/ParametersFile.h>

#include <QFile>

#include <exception>
#include <utility>

namespace runsieve::app {

SessionLoader::SessionLoader(Document& ofDocument, QObject* parent) : QObject(parent), document(ofDocument)
{
  connect(&reader, &Opening::finished, this, &SessionLoader::take);
  connect(&reader, &Opening::failed, this, [this](QString const&, QString const& message) {
    wanted.reset();
    Q_EMIT failed(message);
  });
}

void SessionLoader::open(QString const& path)
{
  Session session;
  try {
    session = readSession(path);
  } catch (std::exception const& error) {
    Q_EMIT failed(QString::fromUtf8(error.what()));
    return;
  }
  const QString data = dataOf(session, path);
  if (!data.isEmpty()) {
    open(std::move(session), data, path);
    return;
  }
  const QString place = QString::fromStdString(session.path);
  reader.cancel();
  wanted = std::move(session);
  file = path;
  Q_EMIT dataMissing(path, place);
}

void SessionLoader::useData(QString const& path)
{
  if (wanted) open(*wanted, path, file);
}

void SessionLoader::open(Session session, QString const& data, QString const& path)
{
  const ReadOptions options = foundOptions(QFile::encodeName(data).toStdString(), session.read);
  wanted = std::move(session);
  file = path;
  sameDataExpected = true;
  comparing.cancel();
  reader.start(data, options);
}

void SessionLoader::reread(std::function<void(Session&)> const& complete)
{
  if (!document.isOpen() || document.source().path.empty()) return;
  completing = complete;
  open(shownSession(), QFile::decodeName(document.source().path.c_str()));
  sameDataExpected = false;
}

Session SessionLoader::shownSession() const
{
  Session session = sessionOf(document, std::string()); // other data are expected: theirs tells nothing
  if (completing) completing(session);
  return session;
}

void SessionLoader::take(std::shared_ptr<Scan const> const& scan, ScanSource const& source)
{
  if (!wanted) return;
  // What was changed while the data were read is kept as well.
  const Session asked = *std::exchange(wanted, std::nullopt);
  const Session session = sameDataExpected ? asked : shownSession();
  const QString path = file;
  if (sameDataExpected && mayTake && !mayTake()) return;
  const QStringList notes = applySession(document, session, scan, source);
  if (sameDataExpected) {
    SieveFile sieve;
    std::vector<std::string> names;
    for (NamedGate const& gate : session.gates) {
      if (!gate.on) continue;
      sieve.gates.push_back(gate.gate);
      names.push_back('"' + gate.name + '"');
    }
    sieve.join = session.join;
    sieve.fingerprint = session.fingerprint;
    sieve.counts = session.counts;
    comparing.start([this, scan, sieve, names, notes](Background::Cancelled const&) -> std::function<void()> {
      QStringList lines = notes;
      for (std::string const& line : compareWith(sieve, *scan, gateContext(), names))
        lines << QString::fromStdString(line);
      return [this, lines] {
        if (!lines.isEmpty()) Q_EMIT differs(lines);
      };
    });
  }
  Q_EMIT opened(session, path, notes);
  if (!sameDataExpected && !notes.isEmpty()) Q_EMIT differs(notes);
}

} // namespace runsieve::app
