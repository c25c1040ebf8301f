#include "app/explorer/session/RecentFiles.h"

#include "app/explorer/controls/PlainText.h"
#include "app/explorer/session/ShellCommand.h"

#include <runsieve/core/read/ParametersFile.h>
#include <runsieve/core/sieve/SieveFile.h>

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSettings>
#include <QVariantMap>

#include <exception>

namespace runsieve::app {

namespace {

constexpr char key[] = "recent/files";
constexpr char readingKey[] = "recent/reading"; ///< by file: a sieve file without gates

QStringList kept()
{
  return QSettings().value(key).toStringList();
}

std::string nameOf(QString const& file)
{
  return QFile::encodeName(file).toStdString();
}

} // namespace

QStringList RecentFiles::list()
{
  QStringList files;
  for (QString const& path : kept())
    if (files.size() < most && QFileInfo::exists(path)) files << path;
  return files;
}

void RecentFiles::add(QString const& path, ReadOptions const& read)
{
  const QString file = QFileInfo(path).absoluteFilePath();
  QStringList files = kept(); // a file on a disk that is not there at the moment stays
  files.removeAll(file);
  files.prepend(file);
  while (files.size() > 2 * most) files.removeLast();
  QSettings().setValue(key, files);
  QVariantMap reading;
  const QVariantMap former = QSettings().value(readingKey).toMap();
  for (QString const& one : files)
    if (one != file && former.contains(one)) reading[one] = former[one];
  if (!readingWords(read).empty()) {
    SieveFile sieve;
    sieve.read = keptOptions(nameOf(file), read);
    reading[file] = QString::fromStdString(toSieveText(sieve));
  }
  QSettings().setValue(readingKey, reading);
}

ReadOptions RecentFiles::optionsOf(QString const& path)
{
  const QString file = QFileInfo(path).absoluteFilePath();
  const QString text = QSettings().value(readingKey).toMap().value(file).toString();
  if (text.isEmpty()) return {};
  try {
    return foundOptions(nameOf(file), readSieve(text.toStdString()).read);
  } catch (std::exception const&) {
    return {}; // settings that somebody has edited
  }
}

QString RecentFiles::tipOf(QString const& path)
{
  const std::string reading = shellLine(readingWords(optionsOf(path)));
  const QString place = QFileInfo(path).absoluteFilePath();
  return toolTipText(
      reading.empty() ? place : QString("%1\nread with %2").arg(place, QString::fromStdString(reading)));
}

QStringList RecentFiles::namesOf(QStringList const& files)
{
  QHash<QString, int> count;
  for (QString const& file : files) ++count[QFileInfo(file).fileName()];
  QStringList names;
  for (QString const& file : files) {
    const QFileInfo info(file);
    const bool isAlone = count[info.fileName()] == 1;
    names << (isAlone ? info.fileName() : QString("%1 (%2)").arg(info.fileName(), info.absolutePath()));
  }
  return names;
}

void RecentFiles::clear()
{
  QSettings().remove(key);
  QSettings().remove(readingKey);
}

} // namespace runsieve::app
