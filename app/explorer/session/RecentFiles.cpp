#include "app/explorer/session/RecentFiles.h"

#include <QFileInfo>
#include <QHash>
#include <QSettings>

namespace runsieve::app {

namespace {

constexpr char key[] = "recent/files";

QStringList kept()
{
  return QSettings().value(key).toStringList();
}

} // namespace

QStringList RecentFiles::list()
{
  QStringList files;
  for (QString const& path : kept())
    if (files.size() < most && QFileInfo::exists(path)) files << path;
  return files;
}

void RecentFiles::add(QString const& path)
{
  const QString file = QFileInfo(path).absoluteFilePath();
  QStringList files = kept(); // a file on a disk that is not there at the moment stays
  files.removeAll(file);
  files.prepend(file);
  while (files.size() > 2 * most) files.removeLast();
  QSettings().setValue(key, files);
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
}

} // namespace runsieve::app
