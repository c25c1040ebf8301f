#pragma once

#include "app/explorer/document/Background.h"
#include "app/explorer/document/Document.h"

#include <runsieve/core/compare/Comparison.h>

#include <QDialog>

#include <cstddef>
#include <memory>

class QLabel;
class QTableWidget;

namespace runsieve::app {

/// How the parameters of two sets differ. Runs of both count with the first one, runs of neither take no
/// part; runs that are not complete do, since they were chosen.
class SetComparison : public QDialog
{
  Q_OBJECT

public:
  SetComparison(Document& document, NamedSet const& a, NamedSet const& b, QWidget* parent = nullptr);

  [[nodiscard]] QTableWidget* table() const { return rows; }
  [[nodiscard]] bool isSettled() const { return !work.isBusy(); }
  /// What stands above the table.
  [[nodiscard]] QString summary() const;

private:
  void build(NamedSet const& a, NamedSet const& b);
  void start(RunSet const& a, RunSet const& b);
  void fill(Comparison const& comparison);

  Document& document;
  QLabel* above = nullptr;
  QLabel* below = nullptr;
  QTableWidget* rows = nullptr;
  Background work;
};

} // namespace runsieve::app
