#include "app/explorer/session/SessionFile.h"

#include "app/explorer/session/WindowJson.h"

#include <runsieve/core/read/ParametersFile.h>
#include <runsieve/core/scan/ScanError.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <exception>
#include <utility>

namespace runsieve::app {

namespace {

constexpr char largestP[] = "p_threshold";
constexpr char smallestD[] = "ks_threshold";

SieveFile sieveOf(Session const& session)
{
  SieveFile sieve;
  sieve.program = session.program;
  bool named = false;
  for (std::size_t i = 0; i < session.gates.size(); ++i) {
    NamedGate const& gate = session.gates[i];
    if (!gate.on) {
      sieve.off.push_back({gate.gate, gate.name, i});
      continue;
    }
    sieve.gates.push_back(gate.gate);
    sieve.names.push_back(gate.name);
    named = named || !gate.name.empty();
  }
  if (!named) sieve.names.clear();
  sieve.join = session.join;
  sieve.thresholds = {{largestP, session.method.thresholds.largestP},
                      {smallestD, session.method.thresholds.smallestD}};
  sieve.method = session.method;
  sieve.read = keptOptions(session.path, session.read);
  sieve.fingerprint = session.fingerprint;
  sieve.absolutePath = session.path;
  sieve.path = session.nearPath;
  sieve.counts = session.counts;
  sieve.window = windowJson(session);
  return sieve;
}

/// A threshold that is out of range is not taken.
void takeThreshold(SieveFile const& sieve, char const* name, double& value)
{
  auto const found = sieve.thresholds.find(name);
  if (found != sieve.thresholds.end() && found->second >= 0.0 && found->second <= 1.0) value = found->second;
}

std::vector<NamedGate> gatesOf(SieveFile const& sieve)
{
  std::vector<NamedGate> gates;
  for (std::size_t i = 0; i < sieve.gates.size(); ++i) {
    std::string name = i < sieve.names.size() ? sieve.names[i] : std::string();
    if (name.empty()) name = "Gate " + std::to_string(i + 1);
    gates.push_back({std::move(name), sieve.gates[i], true});
  }
  for (GateThatIsOff const& off : sieve.off) {
    const std::size_t place = std::min(off.place, gates.size());
    gates.insert(gates.begin() + static_cast<std::ptrdiff_t>(place), {off.name, off.gate, false});
  }
  return gates;
}

} // namespace

void writeSession(QString const& path, Session const& session)
{
  Session placed = session;
  if (!placed.path.empty())
    placed.nearPath =
        QFileInfo(path).absoluteDir().relativeFilePath(QString::fromStdString(placed.path)).toStdString();
  writeSieve(QFile::encodeName(path).toStdString(), sieveOf(placed));
}

Session readSession(QString const& path)
{
  const std::string name = QFile::encodeName(path).toStdString();
  const SieveFile sieve = loadSieve(name);
  Session session;
  session.program = sieve.program;
  session.path = sieve.absolutePath;
  session.nearPath = sieve.path;
  session.fingerprint = sieve.fingerprint;
  session.read = sieve.read;
  session.counts = sieve.counts;
  session.gates = gatesOf(sieve);
  session.join = sieve.join;
  session.method = sieve.method.value_or(ComparisonMethod());
  takeThreshold(sieve, largestP, session.method.thresholds.largestP);
  takeThreshold(sieve, smallestD, session.method.thresholds.smallestD);
  if (sieve.window.empty()) return session;
  try {
    readWindowJson(sieve.window, session);
  } catch (std::exception const& error) {
    throw ScanError(name, error.what());
  }
  return session;
}

bool isSessionFile(QString const& path)
{
  constexpr qint64 enough = 512;
  const QFileInfo info(path);
  QFile file(path);
  if (!info.isFile() || !file.open(QIODevice::ReadOnly)) return false;
  if (info.suffix().compare("sieve", Qt::CaseInsensitive) == 0) return true; // a damaged one is no scan
  const QByteArray begin = file.read(enough).trimmed();
  return begin.startsWith('{') && begin.contains("\"runsieve sieve\"");
}

QString dataOf(Session const& session, QString const& path)
{
  const QDir folder = QFileInfo(path).absoluteDir();
  const QString absolute = QString::fromStdString(session.path);
  QStringList places;
  if (!session.nearPath.empty())
    places << QDir::cleanPath(folder.absoluteFilePath(QString::fromStdString(session.nearPath)));
  if (!absolute.isEmpty()) places << absolute << folder.absoluteFilePath(QFileInfo(absolute).fileName());
  for (QString const& place : places)
    if (QFileInfo::exists(place)) return place;
  return {};
}

QByteArray sessionDigest(QString const& path)
{
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  return QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha1);
}

} // namespace runsieve::app
