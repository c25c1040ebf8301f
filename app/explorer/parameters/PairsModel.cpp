#include "app/explorer/parameters/PairsModel.h"

#include "app/cli/RankReport.h"

#include <cmath>

namespace runsieve::app {

namespace {

QString signedText(double r)
{
  return std::isnan(r) ? QString("-") : QString::asprintf("%+.2f", r);
}

QString pColumn(ParameterPair const& pair)
{
  if (std::isnan(pair.p)) return "-";
  return QString::fromStdString(pText(pair.p)) +
         (pair.significant ? QString::fromUtf8(" \u2605") : QString());
}

QString cellText(ParameterPair const& pair, int column)
{
  switch (column) {
  case PairsModel::First:
    return QString::fromStdString(pair.first);
  case PairsModel::Second:
    return QString::fromStdString(pair.second);
  case PairsModel::Passing:
    return signedText(pair.rPassing);
  case PairsModel::Others:
    return signedText(pair.rOthers);
  default:
    return pColumn(pair);
  }
}

QString columnTip(int column)
{
  switch (column) {
  case PairsModel::First:
  case PairsModel::Second:
    return "Two parameters that go together, or against each other, in the passing runs";
  case PairsModel::Passing:
    return "Spearman's correlation in the passing runs: this is what is tested";
  case PairsModel::Others:
    return "Spearman's correlation in the other runs, to be seen beside: it is no sign of an interaction";
  default:
    return "How often chance alone makes any pair as strong; a star where it is significant";
  }
}

QString pairTip(ParameterPair const& pair)
{
  QString tip =
      QString("%1 and %2\n%3\n%L4 passing runs, %L5 others")
          .arg(QString::fromStdString(pair.first), QString::fromStdString(pair.second), pairHeadline(pair))
          .arg(pair.passing)
          .arg(pair.others);
  if (pair.byDesign) tip += "\ncorrelated in the sample itself: " + signedText(pair.rAll);
  return "<p style='white-space:pre-wrap'>" + tip.toHtmlEscaped() + "</p>";
}

} // namespace

QString pairHeadline(ParameterPair const& pair)
{
  if (std::isnan(pair.rPassing)) return {};
  QString text = "r " + signedText(pair.rPassing);
  if (!std::isnan(pair.p))
    text += ", p " + QString::fromStdString(pText(pair.p)) +
            (pair.significant ? QString::fromUtf8(" \u2605") : QString(" n.s."));
  return text;
}

void PairsModel::show(std::shared_ptr<PairComparisons const> pairs)
{
  beginResetModel();
  shown = std::move(pairs);
  endResetModel();
}

int PairsModel::rowCount(QModelIndex const& parent) const
{
  return parent.isValid() || !shown ? 0 : static_cast<int>(shown->pairs.size());
}

int PairsModel::columnCount(QModelIndex const& parent) const
{
  return parent.isValid() ? 0 : static_cast<int>(columns);
}

QVariant PairsModel::data(QModelIndex const& index, int role) const
{
  if (!index.isValid() || !shown) return {};
  ParameterPair const& pair = shown->pairs[static_cast<std::size_t>(index.row())];
  if (role == Qt::DisplayRole) return cellText(pair, index.column());
  if (role == Qt::ToolTipRole) return pairTip(pair);
  if (role == Qt::TextAlignmentRole && index.column() >= Passing)
    return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  return {};
}

QVariant PairsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  static const char* const titles[] = {"First", "Second", "r", "r others", "p adj."};
  if (role == Qt::DisplayRole) return titles[section];
  if (role == Qt::ToolTipRole) return columnTip(section);
  return {};
}

} // namespace runsieve::app
