#pragma once

#include "app/explorer/document/Background.h"
#include "app/explorer/document/Document.h"

#include <runsieve/core/read/ReadScan.h>

#include <QElapsedTimer>
#include <QObject>
#include <QString>

#include <memory>

namespace runsieve::app {

/// Reads a file beside the interface.
class Opening : public QObject
{
  Q_OBJECT

public:
  explicit Opening(QObject* parent = nullptr);

  /// Begins; what was being read is given up.
  void start(QString const& path, ReadOptions const& options);
  /// Begins to simulate the example, which is read from no file.
  void startExample();
  void cancel();
  [[nodiscard]] bool isBusy() const { return work.isBusy(); }
  /// What is being read, or was read last.
  [[nodiscard]] QString const& path() const { return file; }

Q_SIGNALS:
  void begun(QString const& path);
  /// The share that is read, 0 to 1.
  void progressed(double share);
  /// \param state what a stored plot has selected and shown; the defaults for other files
  void finished(std::shared_ptr<Scan const> const& scan, ScanSource const& source, State const& state);
  void failed(QString const& path, QString const& message);
  /// After finished(), failed(), or when it was given up.
  void ended();

private:
  void begin(QString const& name, Background::Work work);

  QString file;
  Background work;
};

} // namespace runsieve::app
