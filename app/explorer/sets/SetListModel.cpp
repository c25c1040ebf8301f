#include "app/explorer/sets/SetListModel.h"

#include "app/explorer/charts/Theme.h"
#include "app/explorer/controls/PlainText.h"
#include "app/explorer/sets/SetEdits.h"

#include <QApplication>
#include <QFontMetrics>
#include <QPainter>
#include <QPixmap>

namespace runsieve::app {

SetListModel::SetListModel(Document& ofDocument, QObject* parent)
    : QAbstractTableModel(parent), document(ofDocument)
{
  connect(&document, &Document::opened, this, &SetListModel::refresh);
  connect(&document, &Document::stateChanged, this, &SetListModel::refresh);
  connect(&document, &Document::passingChanged, this, [this] {
    count();
    if (!sizes.empty()) Q_EMIT dataChanged(index(0, Passing), index(rowCount() - 1, Passing));
  });
  refresh();
}

void SetListModel::count()
{
  sizes.clear();
  passing.clear();
  for (NamedSet const& set : document.state().sets) {
    RunSet through = set.runs;
    sizes.push_back(through.count());
    through &= document.passing();
    passing.push_back(through.count());
  }
}

void SetListModel::refresh()
{
  const bool sameRows = sizes.size() == document.state().sets.size();
  if (!sameRows) beginResetModel();
  count();
  if (!sameRows)
    endResetModel();
  else if (!sizes.empty())
    Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, Columns - 1));
}

int SetListModel::rowCount(QModelIndex const& parent) const
{
  return parent.isValid() ? 0 : static_cast<int>(sizes.size());
}

int SetListModel::columnCount(QModelIndex const& parent) const
{
  return parent.isValid() ? 0 : Columns;
}

QString SetListModel::textOf(QModelIndex const& index) const
{
  const auto row = static_cast<std::size_t>(index.row());
  NamedSet const& set = document.state().sets[row];
  switch (index.column()) {
  case Name:
    return shownText(set.name);
  case Runs:
    return set.absent.empty() ? QString("%L1").arg(sizes[row])
                              : QString("%L1 of %L2").arg(sizes[row]).arg(sizes[row] + countOf(set.absent));
  case Passing:
    return QString("%L1").arg(passing[row]);
  default:
    return shownText(set.origin);
  }
}

QVariant SetListModel::data(QModelIndex const& index, int role) const
{
  if (!index.isValid() || static_cast<std::size_t>(index.row()) >= document.state().sets.size()) return {};
  NamedSet const& set = document.state().sets[static_cast<std::size_t>(index.row())];
  switch (role) {
  case Qt::DisplayRole:
    return textOf(index);
  case Qt::EditRole:
    return QString::fromStdString(set.name);
  case Qt::ToolTipRole:
    return toolTipText(shownText(set.name) + (set.origin.empty() ? QString() : "\n" + shownText(set.origin)) +
                       (set.absent.empty()
                            ? QString()
                            : QString("\nRuns that the data don't have: %L1. They are kept for "
                                      "data that have them.")
                                  .arg(countOf(set.absent))));
  case Qt::CheckStateRole:
    if (index.column() != Name) return {};
    return set.shown ? Qt::Checked : Qt::Unchecked;
  case Qt::DecorationRole:
    if (index.column() != Name) return {};
    return colorIcon(set.color, QApplication::palette(), QFontMetrics(QApplication::font()).ascent());
  case Qt::TextAlignmentRole: {
    const bool isNumber = index.column() == Runs || index.column() == Passing;
    return static_cast<int>(Qt::AlignVCenter | (isNumber ? Qt::AlignRight : Qt::AlignLeft));
  }
  default:
    return {};
  }
}

QVariant SetListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
  if (orientation != Qt::Horizontal || section < 0 || section >= Columns) return {};
  char const* const titles[] = {"Set", "Where it is from", "Runs", "Passing"};
  char const* const tips[] = {"Its name and colour, and whether the charts show it", "How it was made",
                              "Runs that belong to it", "Runs that belong to it and pass the gates"};
  if (role == Qt::DisplayRole) return titles[section];
  if (role == Qt::ToolTipRole) return tips[section];
  if (role == Qt::TextAlignmentRole) {
    const bool isNumber = section == Runs || section == Passing;
    return static_cast<int>(Qt::AlignVCenter | (isNumber ? Qt::AlignRight : Qt::AlignLeft));
  }
  return {};
}

Qt::ItemFlags SetListModel::flags(QModelIndex const& index) const
{
  Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  if (index.column() == Name) flags |= Qt::ItemIsEditable | Qt::ItemIsUserCheckable;
  return flags;
}

bool SetListModel::setData(QModelIndex const& index, QVariant const& value, int role)
{
  if (!index.isValid() || index.column() != Name) return false;
  const auto row = static_cast<std::size_t>(index.row());
  if (role == Qt::CheckStateRole)
    showSet(document, row, value.toInt() == Qt::Checked);
  else if (role == Qt::EditRole)
    renameSet(document, row, value.toString().trimmed().toStdString());
  else
    return false;
  return true;
}

QIcon colorIcon(std::size_t color, QPalette const& palette, int side)
{
  const Theme theme = Theme::ofPalette(palette, QApplication::font());
  QIcon icon;
  for (int scale : {1, 2, 3}) {
    QPixmap pixmap(side * scale, side * scale);
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.sets.at(color % theme.sets.size()));
    painter.drawRoundedRect(QRectF(0.5, 0.5, side - 1.0, side - 1.0), 2.0, 2.0);
    painter.end();
    icon.addPixmap(pixmap);
  }
  return icon;
}

} // namespace runsieve::app
