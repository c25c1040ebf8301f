#pragma once

#include "app/explorer/document/Background.h"
#include "app/explorer/document/Document.h"
#include "app/explorer/tables/RunCells.h"

#include <QAbstractTableModel>
#include <QTimer>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace runsieve::app {

/// Which runs the table shows.
struct RunFilter
{
  enum class Kind
  {
    All,
    Passing,
    Others,
    Pinned,
    Set
  };

  Kind kind = Kind::All;
  std::string set; ///< of Set: its name
  QString text;    ///< that keys must hold, in any case; empty: any
};

/// The runs of a document, a row each. Cells are computed when they are looked at; the order of the runs is
/// found beside the interface.
class RunTableModel : public QAbstractTableModel
{
  Q_OBJECT

public:
  explicit RunTableModel(Document& document, QObject* parent = nullptr);

  [[nodiscard]] int rowCount(QModelIndex const& parent = {}) const override;
  [[nodiscard]] int columnCount(QModelIndex const& parent = {}) const override;
  [[nodiscard]] QVariant data(QModelIndex const& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  /// Takes effect when isSettled(). \param column below 0: the order of the scan
  void sort(int column, Qt::SortOrder order) override;

  void setFilter(RunFilter const& filter);
  [[nodiscard]] RunFilter const& filter() const { return chosen; }

  [[nodiscard]] std::size_t runAt(int row) const { return rows[static_cast<std::size_t>(row)]; }
  /// Nothing for a run that is not shown.
  [[nodiscard]] std::optional<int> rowOf(std::size_t run) const;
  [[nodiscard]] std::vector<std::size_t> const& shownRuns() const { return rows; }
  [[nodiscard]] RunCells const& cells() const { return content; }
  /// Whether rows and order are those of the present state.
  [[nodiscard]] bool isSettled() const { return !later.isActive() && !sorting.isBusy(); }

Q_SIGNALS:
  void settled();

private:
  void reopen();
  void takeState();
  void follow();
  void resort();
  void refilter();
  [[nodiscard]] bool isShown(std::size_t run) const;
  [[nodiscard]] bool followsPassing() const;
  [[nodiscard]] bool followsSets() const;
  [[nodiscard]] RunSet const* filterSet() const;

  Document& document;
  RunCells content;
  RunFilter chosen;
  RunSet withText;                     ///< runs whose key holds the text of the filter
  std::vector<std::size_t> order;      ///< of all runs
  std::vector<std::size_t> rows;       ///< the run of each row
  std::vector<int> places;             ///< the row of each run, -1 for those that are not shown
  std::optional<RunColumn> sortColumn; ///< nothing: the order of the scan
  bool rising = true;
  QTimer later; ///< between changes that follow one another, as while a gate is moved
  Background sorting;
};

} // namespace runsieve::app
