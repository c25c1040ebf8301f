#include "app/explorer/tables/RunExport.h"

#include "app/cli/OutputFiles.h"
#include "app/explorer/controls/PlainText.h"

#include <runsieve/core/write/WriteScan.h>

#include <QClipboard>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>

#include <utility>

namespace runsieve::app {

RunExport::RunExport(QObject* parent) : QObject(parent)
{
  connect(&work, &Background::busyChanged, this, &RunExport::busyChanged);
  connect(&work, &Background::failed, this, &RunExport::failed);
}

void RunExport::writeCsv(RunCells const& cells, std::vector<std::size_t> runs,
                         std::vector<std::size_t> columns, QString const& path)
{
  work.start([this, cells, runs = std::move(runs), columns = std::move(columns),
              path](Background::Cancelled const& cancelled) -> std::function<void()> {
    const std::string text = cells.csv(runs, columns, cancelled);
    if (cancelled()) return {};
    writeText(QFile::encodeName(path).toStdString(), text);
    return [this, path, count = runs.size()] {
      Q_EMIT done(plural(count, "run") + " written to " + QFileInfo(path).fileName());
    };
  });
}

void RunExport::writeScan(std::shared_ptr<Scan const> const& scan, std::vector<std::size_t> const& runs,
                          QString const& path)
{
  RunSet members(scan->runs.size());
  for (std::size_t run : runs) members.set(run);
  work.start([this, scan, members, path](Background::Cancelled const&) -> std::function<void()> {
    runsieve::writeScan(*scan, QFile::encodeName(path).toStdString(), &members);
    return [this, path, count = members.count()] {
      Q_EMIT done(plural(count, "run") + " written as scan to " + QFileInfo(path).fileName());
    };
  });
}

void RunExport::copy(RunCells const& cells, std::vector<std::size_t> runs, std::vector<std::size_t> columns)
{
  work.start([this, cells, runs = std::move(runs),
              columns = std::move(columns)](Background::Cancelled const& cancelled) -> std::function<void()> {
    const QString text = QString::fromStdString(cells.tabbed(runs, columns, cancelled));
    if (cancelled()) return {};
    return [this, text, count = runs.size()] {
      QGuiApplication::clipboard()->setText(text);
      Q_EMIT done(plural(count, "run") + " copied");
    };
  });
}

} // namespace runsieve::app
