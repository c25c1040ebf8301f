#include "app/explorer/session/RecentFiles.h"

#include <QFileInfo>
#include <QSettings>

namespace runsieve::app {

namespace {

constexpr char key[] = "recent/files";

QStringList kept()
{
  return QSettings("runsieve", "runsieve").value(key).toStringList();
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
  QSettings("runsieve", "runsieve").setValue(key, files);
}

void RecentFiles::clear()
{
  QSettings("runsieve", "runsieve").remove(key);
}

} // namespace runsieve::app
