#include "app/explorer/tables/ParameterTableModel.h"

#include "app/cli/RankReport.h"
#include "app/explorer/controls/PlainText.h"
#include "app/explorer/tables/ParameterColumns.h"

#include <QApplication>
#include <QFont>
#include <QPalette>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

ParameterTableModel::ParameterTableModel(Document& ofDocument, QObject* parent)
    : QAbstractTableModel(parent), document(ofDocument)
{
  connect(&document, &Document::opened, this, &ParameterTableModel::refresh);
  connect(&document, &Document::comparisonChanged, this, &ParameterTableModel::refresh);
  refresh();
}

void ParameterTableModel::refresh()
{
  std::vector<std::size_t> wanted = wantedRows();
  std::vector<std::size_t> parameters;
  for (std::size_t row : wanted) parameters.push_back(document.comparison()->parameters[row].parameter);
  if (parameters == stands) {
    rows = std::move(wanted);
    if (!rows.empty()) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    return;
  }
  beginResetModel();
  rows = std::move(wanted);
  stands = std::move(parameters);
  endResetModel();
}

std::vector<std::size_t> ParameterTableModel::wantedRows() const
{
  std::vector<std::size_t> wanted;
  if (!document.comparison()) return wanted;
  std::vector<ParameterComparison> const& all = document.comparison()->parameters;
  for (std::size_t i = 0; i < all.size(); ++i)
    if (filter.isEmpty() || QString::fromStdString(all[i].name).contains(filter, Qt::CaseInsensitive))
      wanted.push_back(i);
  order(wanted);
  return wanted;
}

void ParameterTableModel::order(std::vector<std::size_t>& wanted) const
{
  if (sortColumn < 0) return;
  ParameterColumn const& column = parameterColumns()[static_cast<std::size_t>(sortColumn)];
  std::vector<ParameterComparison> const& all = document.comparison()->parameters;
  const Adjustment adjustment = document.comparison()->method.adjustment;
  const bool rising = sortOrder == Qt::AscendingOrder;
  if (!column.number) {
    std::stable_sort(wanted.begin(), wanted.end(), [&](std::size_t a, std::size_t b) {
      const int way =
          QString::localeAwareCompare(column.text(all[a], adjustment), column.text(all[b], adjustment));
      return rising ? way < 0 : way > 0;
    });
    return;
  }
  std::stable_sort(wanted.begin(), wanted.end(), [&](std::size_t a, std::size_t b) {
    const double x = column.number(all[a], adjustment);
    const double y = column.number(all[b], adjustment);
    if (std::isnan(x) || std::isnan(y)) return !std::isnan(x) && std::isnan(y);
    return rising ? x < y : x > y;
  });
}

void ParameterTableModel::sort(int column, Qt::SortOrder inOrder)
{
  sortColumn = column < columnCount() ? column : -1;
  sortOrder = inOrder;
  refresh();
}

void ParameterTableModel::setFilter(QString const& text)
{
  filter = text.trimmed();
  refresh();
}

int ParameterTableModel::rowCount(QModelIndex const& parent) const
{
  return parent.isValid() ? 0 : static_cast<int>(rows.size());
}

int ParameterTableModel::columnCount(QModelIndex const& parent) const
{
  return parent.isValid() ? 0 : static_cast<int>(parameterColumns().size());
}

std::size_t ParameterTableModel::parameterAt(int row) const
{
  return stands[static_cast<std::size_t>(row)];
}

ParameterComparison const& ParameterTableModel::comparisonAt(int row) const
{
  return document.comparison()->parameters[rows[static_cast<std::size_t>(row)]];
}

QString ParameterTableModel::textOf(QModelIndex const& index) const
{
  ParameterComparison const& row = comparisonAt(index.row());
  std::vector<LiveDistance> const& live = document.liveDistances();
  if (index.column() == distanceColumn && row.parameter < live.size())
    return QString::fromStdString(formatted(live[row.parameter].d, "%+.3f", "-"));
  return parameterColumns()[static_cast<std::size_t>(index.column())].text(
      row, document.comparison()->method.adjustment);
}

QVariant ParameterTableModel::data(QModelIndex const& index, int role) const
{
  // Between a change and the rows that follow from it a view may still ask for those that were.
  if (!index.isValid() || !document.comparison() ||
      rows[static_cast<std::size_t>(index.row())] >= document.comparison()->parameters.size())
    return {};
  switch (role) {
  case Qt::DisplayRole:
    return textOf(index);
  case Qt::ToolTipRole:
    return toolTipText(textOf(index).trimmed());
  case Qt::TextAlignmentRole:
    return static_cast<int>(Qt::AlignVCenter | (index.column() == 0 ? Qt::AlignLeft : Qt::AlignRight));
  case Qt::FontRole: {
    QFont font = QApplication::font("QTableView");
    font.setBold(comparisonAt(index.row()).significant && index.column() <= distanceColumn);
    return font;
  }
  case Qt::ForegroundRole:
    // While a gate moves d follows at once.
    if (!document.isCompared() && index.column() >= distanceColumn + (document.previewedGate() ? 1 : 0))
      return QApplication::palette().brush(QPalette::Disabled, QPalette::Text);
    return {};
  default:
    return {};
  }
}

QVariant ParameterTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  ParameterColumn const& column = parameterColumns()[static_cast<std::size_t>(section)];
  if (role == Qt::DisplayRole) return column.title;
  if (role == Qt::ToolTipRole) return column.hint;
  if (role == Qt::TextAlignmentRole)
    return static_cast<int>(Qt::AlignVCenter | (section == 0 ? Qt::AlignLeft : Qt::AlignRight));
  return {};
}

} // namespace runsieve::app
