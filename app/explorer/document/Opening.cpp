#include "app/explorer/document/Opening.h"

#include <QFile>
#include <QMetaObject>

#include <exception>
#include <string>
#include <utility>

namespace runsieve::app {

Opening::Opening(QObject* parent) : QObject(parent)
{
  connect(&work, &Background::busyChanged, this, [this] {
    if (!work.isBusy()) Q_EMIT ended();
  });
}

void Opening::start(QString const& path, ReadOptions const& options)
{
  work.cancel();
  file = path;
  Q_EMIT begun(path);
  work.start([this, path, options](Background::Cancelled const& cancelled) -> std::function<void()> {
    ReadOptions read = options;
    read.progress = [this, &cancelled](double share) {
      QMetaObject::invokeMethod(
          this, [this, share] { Q_EMIT progressed(share); }, Qt::QueuedConnection);
      return !cancelled();
    };
    const std::string name = QFile::encodeName(path).toStdString();
    try {
      ScanFile found = readScan(name, read);
      ScanSource source{name, options, std::move(found.report)};
      auto scan = std::make_shared<Scan const>(std::move(found.scan));
      return [this, scan, source] { Q_EMIT finished(scan, source); };
    } catch (ReadCancelled const&) {
      return {};
    } catch (std::exception const& error) {
      return [this, path, message = QString::fromUtf8(error.what())] { Q_EMIT failed(path, message); };
    }
  });
}

void Opening::cancel()
{
  work.cancel();
}

} // namespace runsieve::app
