#include "app/explorer/document/ReadFiles.h"

#include "app/cli/OutputFiles.h"
#include "app/explorer/document/Document.h"

#include <runsieve/core/read/ReadScan.h>

#include <QFile>
#include <QFileInfo>

namespace runsieve::app {

void requireOtherFile(ScanSource const& source, QString const& path)
{
  if (source.path.empty() || !QFileInfo::exists(path)) return;
  requireNotRead(QFile::encodeName(path).toStdString(), filesOfScan(source.path, source.read));
}

} // namespace runsieve::app
