#pragma once

#include "app/explorer/document/Background.h"
#include "app/explorer/tables/RunCells.h"

#include <QObject>
#include <QString>

#include <cstddef>
#include <vector>

namespace runsieve::app {

/// Writes and copies runs beside the interface; a file that exists is replaced when the new one is complete.
/// One thing at a time: the newest counts.
class RunExport : public QObject
{
  Q_OBJECT

public:
  explicit RunExport(QObject* parent = nullptr);

  void writeCsv(RunCells const& cells, std::vector<std::size_t> runs, std::vector<std::size_t> columns,
                QString const& path);
  /// The runs with all their values. \param runs not empty
  void writeScan(std::shared_ptr<Scan const> const& scan, std::vector<std::size_t> const& runs,
                 QString const& path);
  /// To the clipboard, with tabs between columns.
  void copy(RunCells const& cells, std::vector<std::size_t> runs, std::vector<std::size_t> columns);
  void cancel() { work.cancel(); }
  [[nodiscard]] bool isBusy() const { return work.isBusy(); }

Q_SIGNALS:
  void busyChanged();
  /// \param what is there now: "12 runs written to x.csv"
  void done(QString const& what);
  void failed(QString const& message);

private:
  Background work;
};

} // namespace runsieve::app
