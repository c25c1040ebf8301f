#include "app/explorer/gates/GateListModel.h"

#include "app/explorer/controls/PlainText.h"
#include "app/explorer/gates/GateEdits.h"
#include "app/explorer/gates/GateLabel.h"
#include "app/explorer/gates/LiveCounts.h"

#include <QApplication>
#include <QFont>
#include <QMimeData>
#include <QPalette>

#include <algorithm>

namespace runsieve::app {

namespace {

char const* const mimeType = "application/x-runsieve-gate-row";

/// Lists of thousands of runs are cut: nobody reads on.
QString shownLabel(Gate const& gate, Scan const& scan)
{
  constexpr int most = 300;
  const QString text = shownText(gateLabel(gate, scan));
  return text.size() > most ? text.left(most) + QString::fromUtf8("\u2026") : text;
}

} // namespace

GateListModel::GateListModel(Document& ofDocument, QObject* parent)
    : QAbstractTableModel(parent), document(ofDocument)
{
  for (auto changed : {&Document::opened, &Document::stateChanged, &Document::passingChanged})
    connect(&document, changed, this, &GateListModel::refresh);
  refresh();
}

void GateListModel::refresh()
{
  auto now = document.isOpen() ? runsLeft(document) : std::vector<std::optional<std::size_t>>();
  if (now.size() != left.size()) {
    beginResetModel();
    left = std::move(now);
    endResetModel();
    return;
  }
  left = std::move(now);
  if (!left.empty()) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, Columns - 1));
}

int GateListModel::rowCount(QModelIndex const& parent) const
{
  return parent.isValid() ? 0 : static_cast<int>(left.size());
}

int GateListModel::columnCount(QModelIndex const& parent) const
{
  return parent.isValid() ? 0 : Columns;
}

bool GateListModel::isGate(int row) const
{
  return row >= 0 && static_cast<std::size_t>(row) < document.state().gates.size();
}

Gate const& GateListModel::gateAt(int row) const
{
  std::size_t moved = 0;
  Gate const* gate = document.previewedGate(&moved);
  if (gate && (moved == static_cast<std::size_t>(row) || !isGate(row))) return *gate;
  return document.state().gates[static_cast<std::size_t>(row)].gate;
}

QString GateListModel::textOf(QModelIndex const& index) const
{
  const auto row = static_cast<std::size_t>(index.row());
  switch (index.column()) {
  case Name:
    return shownText(isGate(index.row()) ? document.state().gates[row].name : document.newGateName());
  case AsksFor:
    return shownLabel(gateAt(index.row()), document.scan());
  default:
    break;
  }
  if (left[row]) return QString("%L1").arg(*left[row]);
  if (isGate(index.row()) && !document.state().gates[row].on) return "off";
  if (isGate(index.row()) && !document.outcomes()[row].error.empty()) return "error";
  return QString::fromUtf8("\u2026"); // takes too long to follow the mouse
}

QVariant GateListModel::data(QModelIndex const& index, int role) const
{
  const bool known = isGate(index.row());
  if (!index.isValid() || (!known && !document.previewedGate())) return {};
  const auto row = static_cast<std::size_t>(index.row());
  const bool fails = known && !document.outcomes()[row].error.empty();
  switch (role) {
  case Qt::DisplayRole:
    return textOf(index);
  case Qt::EditRole:
    return known ? QString::fromStdString(document.state().gates[row].name) : QVariant();
  case Qt::CheckStateRole:
    if (index.column() != Name || !known) return {};
    return document.state().gates[row].on ? Qt::Checked : Qt::Unchecked;
  case Qt::ToolTipRole:
    return known ? toolTipText(gateDetails(document, row)) : QVariant();
  case Qt::TextAlignmentRole:
    return static_cast<int>(Qt::AlignVCenter | (index.column() == Left ? Qt::AlignRight : Qt::AlignLeft));
  case Qt::ForegroundRole:
    if (known && (!document.state().gates[row].on || fails))
      return QApplication::palette().brush(QPalette::Disabled, QPalette::Text);
    return {};
  case Qt::FontRole: {
    if (!fails) return {};
    QFont font;
    font.setItalic(true);
    return font;
  }
  default:
    return {};
  }
}

QVariant GateListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
  if (orientation != Qt::Horizontal || section < 0 || section >= Columns) return {};
  if (role == Qt::TextAlignmentRole)
    return static_cast<int>(Qt::AlignVCenter | (section == Left ? Qt::AlignRight : Qt::AlignLeft));
  char const* const titles[] = {"Gate", "Asks for", "Left"};
  char const* const tips[] = {"Its name, and whether runs must pass it",
                              "The condition on each run, as it can be typed",
                              "Runs that pass this gate and those above it"};
  if (role == Qt::DisplayRole) return titles[section];
  if (role == Qt::ToolTipRole) return tips[section];
  return {};
}

Qt::ItemFlags GateListModel::flags(QModelIndex const& index) const
{
  if (!index.isValid()) return Qt::ItemIsDropEnabled;
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  if (!isGate(index.row())) return flags;
  flags |= Qt::ItemIsDragEnabled;
  if (index.column() == Name) flags |= Qt::ItemIsEditable | Qt::ItemIsUserCheckable;
  return flags;
}

bool GateListModel::setData(QModelIndex const& index, QVariant const& value, int role)
{
  if (!isGate(index.row()) || index.column() != Name) return false;
  const auto row = static_cast<std::size_t>(index.row());
  if (role == Qt::CheckStateRole) {
    switchGate(document, row, value.toInt() == Qt::Checked);
    return true;
  }
  if (role != Qt::EditRole) return false;
  renameGate(document, row, value.toString().trimmed().toStdString());
  return true;
}

QStringList GateListModel::mimeTypes() const
{
  return {mimeType};
}

QMimeData* GateListModel::mimeData(QModelIndexList const& indexes) const
{
  auto* data = new QMimeData;
  if (!indexes.isEmpty()) data->setData(mimeType, QByteArray::number(indexes.first().row()));
  return data;
}

bool GateListModel::dropMimeData(QMimeData const* data, Qt::DropAction action, int row, int,
                                 QModelIndex const& parent)
{
  if (action != Qt::MoveAction || !data->hasFormat(mimeType)) return false;
  const int from = data->data(mimeType).toInt();
  int before = parent.isValid() ? parent.row() : row;
  if (before < 0) before = rowCount();
  if (!isGate(from)) return false;
  const int to = before > from ? before - 1 : before;
  moveGate(document, static_cast<std::size_t>(from), static_cast<std::size_t>(to));
  return false; // the view would take the row away that has moved already
}

QString gateDetails(Document const& document, std::size_t gate)
{
  QString text = shownLabel(document.state().gates[gate].gate, document.scan());
  GateOutcome const& outcome = document.outcomes()[gate];
  if (outcome.resolved && !outcome.resolved->note.empty())
    text += "\nOn the times of the scan: " + shownText(outcome.resolved->note);
  if (!outcome.error.empty())
    text += "\nDoes not fit this scan, and asks for nothing: " + shownText(outcome.error);
  return text;
}

} // namespace runsieve::app
