#include "app/explorer/charts/TextBars.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace runsieve::app {

namespace {

double shareOf(std::size_t part, std::size_t whole)
{
  return whole == 0 ? 0.0 : static_cast<double>(part) / static_cast<double>(whole);
}

} // namespace

TextGroups textGroupsOf(ScanParameter const& parameter, std::vector<std::uint8_t> const& passing,
                        std::vector<std::uint8_t> const& eligible)
{
  TextGroups groups;
  groups.passing.resize(parameter.texts.size());
  groups.others.resize(parameter.texts.size());
  for (std::size_t run = 0; run < eligible.size(); ++run) {
    if (eligible[run] == 0 || !std::isfinite(parameter.values[run])) continue;
    const bool passes = passing[run] != 0;
    ++(passes ? groups.passing : groups.others)[static_cast<std::size_t>(parameter.values[run])];
    ++(passes ? groups.allPassing : groups.allOthers);
  }
  return groups;
}

TextRow::Share TextRow::shareIn(std::vector<std::size_t> const& wanted) const
{
  auto const isWanted = [&](std::size_t text) {
    return std::binary_search(wanted.begin(), wanted.end(), text);
  };
  const auto found = std::count_if(texts.begin(), texts.end(), isWanted);
  if (found == 0) return Share::None;
  return found == static_cast<std::ptrdiff_t>(texts.size()) ? Share::All : Share::Some;
}

std::vector<TextRow> textRows(ScanParameter const& parameter, TextGroups const& groups, std::size_t most)
{
  std::vector<std::size_t> shown(parameter.texts.size());
  std::iota(shown.begin(), shown.end(), std::size_t(0));
  const bool hasRest = shown.size() > most;
  TextRow rest;
  if (hasRest) {
    auto const runs = [&](std::size_t text) { return groups.passing[text] + groups.others[text]; };
    std::stable_sort(shown.begin(), shown.end(),
                     [&](std::size_t a, std::size_t b) { return runs(a) > runs(b); });
    // The one that makes the distance of the groups is shown in any case.
    auto const difference = [&](std::size_t text) {
      return std::fabs(shareOf(groups.passing[text], groups.allPassing) -
                       shareOf(groups.others[text], groups.allOthers));
    };
    if (groups.allPassing > 0 && groups.allOthers > 0) {
      const auto strongest = std::max_element(shown.begin(), shown.end(), [&](std::size_t a, std::size_t b) {
        return difference(a) < difference(b);
      });
      std::rotate(shown.begin(), strongest, strongest + 1);
    }
    const auto end = shown.begin() + static_cast<std::ptrdiff_t>(std::max<std::size_t>(most, 2) - 1);
    rest.texts.assign(end, shown.end());
    shown.erase(end, shown.end());
    std::sort(shown.begin(), shown.end());
    std::sort(rest.texts.begin(), rest.texts.end());
  }
  std::vector<TextRow> rows;
  rest.passing = groups.allPassing > 0 ? 1.0 : 0.0;
  rest.others = groups.allOthers > 0 ? 1.0 : 0.0;
  for (std::size_t const text : shown) {
    rows.push_back({QString::fromStdString(parameter.texts[text]),
                    shareOf(groups.passing[text], groups.allPassing),
                    shareOf(groups.others[text], groups.allOthers),
                    false,
                    {text}});
    rest.passing = std::max(0.0, rest.passing - rows.back().passing);
    rest.others = std::max(0.0, rest.others - rows.back().others);
  }
  if (!hasRest) return rows;
  rest.text = QString("%L1 others").arg(rest.texts.size());
  rest.isRest = true;
  rows.push_back(rest);
  return rows;
}

QString rowWords(TextRow const& row, bool sieves)
{
  auto const percent = [](double share) { return QString("%1 %").arg(std::lround(100.0 * share)); };
  const QString others = percent(row.others) + (sieves ? " of the others" : " of the runs");
  return row.text + ": " + (sieves ? percent(row.passing) + " of the passing runs, " : QString()) + others;
}

TextBarRows::TextBarRows(QRectF const& inArea, ScanParameter const& parameter, TextGroups const& groups,
                         Theme const& theme)
    : area(inArea)
{
  const double text = QFontMetricsF(theme.font).height();
  rows = textRows(parameter, groups, static_cast<std::size_t>(std::max(2.0, area.height() / (1.25 * text))));
  if (!rows.empty()) slot = std::min(area.height() / static_cast<double>(rows.size()), 3.2 * text);
}

TextBarRows TextBarRows::upwards(QRectF const& area, ScanParameter const& parameter)
{
  TextBarRows made;
  made.area = area;
  for (std::size_t text = parameter.texts.size(); text-- > 0;) {
    TextRow row;
    row.text = QString::fromStdString(parameter.texts[text]);
    row.texts = {text};
    made.rows.push_back(row);
  }
  if (!made.rows.empty()) made.slot = area.height() / static_cast<double>(made.rows.size());
  return made;
}

std::size_t TextBarRows::rowOf(std::size_t text) const
{
  auto const has = [&](TextRow const& row) {
    return std::binary_search(row.texts.begin(), row.texts.end(), text);
  };
  return static_cast<std::size_t>(std::find_if(rows.begin(), rows.end(), has) - rows.begin());
}

QRectF TextBarRows::place(std::size_t row) const
{
  return {area.left(), area.top() + static_cast<double>(row) * slot, area.width(), slot};
}

QRectF TextBarRows::place() const
{
  return {area.left(), area.top(), area.width(), slot * static_cast<double>(rows.size())};
}

std::size_t TextBarRows::nearest(QPointF const& at) const
{
  const double row = std::floor((at.y() - area.top()) / slot);
  return static_cast<std::size_t>(std::clamp(row, 0.0, static_cast<double>(rows.size()) - 1.0));
}

void paintTextBars(QPainter& painter, TextBarRows const& rows, bool hasPassing, QString const& marked,
                   double free, Theme const& theme)
{
  if (rows.size() == 0) return;
  const QRectF area = rows.place().adjusted(0.0, 0.0, -free, 0.0);
  const QFontMetricsF metrics(theme.font);
  double widest = 0.0;
  double largest = 0.0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    widest = std::max(widest, metrics.horizontalAdvance(rows.at(i).text));
    largest = std::max({largest, rows.at(i).passing, rows.at(i).others});
  }
  const double label = std::min(widest, 0.42 * area.width());
  const double slot = rows.place(0).height();
  const double thick = std::max(1.0, (hasPassing ? 0.36 : 0.56) * slot);
  QFont small = theme.font;
  small.setPixelSize(std::max(1, static_cast<int>(std::min(0.95 * thick, 0.8 * metrics.height()))));
  constexpr double readable = 0.5; // of the height of a line
  const bool hasNumbers = small.pixelSize() >= readable * metrics.height();
  const QFontMetricsF numbers(small);
  const double room = hasNumbers ? numbers.horizontalAdvance("100 %") + theme.gap : 0.0;
  const QRectF bars = area.adjusted(label + 2.0 * theme.gap, 0.0, -theme.gap - room, 0.0);
  auto const paintBar = [&](double share, double top, QColor const& color) {
    const double length = largest > 0.0 ? share / largest * std::max(bars.width(), 0.0) : 0.0;
    painter.fillRect(QRectF(bars.left(), top, length, thick), color);
    if (!hasNumbers) return;
    painter.setFont(small);
    painter.setPen(theme.faint);
    painter.drawText(
        QPointF(bars.left() + length + theme.gap, top + 0.5 * (thick + numbers.ascent() - numbers.descent())),
        QString("%1 %").arg(std::lround(100.0 * share)));
  };
  painter.save();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    TextRow const& row = rows.at(i);
    const double middle = rows.place(i).center().y();
    const QString text = elided(row.text, theme.font, label);
    painter.setFont(theme.font);
    const bool isMarked = !marked.isEmpty() && !row.isRest && row.text == marked;
    painter.setPen(isMarked ? theme.passing : row.isRest ? theme.faint : theme.ink);
    painter.drawText(QPointF(area.left() + label - metrics.horizontalAdvance(text),
                             middle + 0.5 * (metrics.ascent() - metrics.descent())),
                     text);
    QColor ground = theme.all;
    ground.setAlphaF(0.8);
    const double top = hasPassing ? middle - thick : middle - 0.5 * thick;
    if (hasPassing) paintBar(row.passing, top, theme.passing);
    paintBar(row.others, hasPassing ? middle : top, ground);
  }
  painter.setPen(QPen(theme.faint, theme.line));
  painter.drawLine(bars.topLeft(), bars.bottomLeft());
  painter.restore();
}

} // namespace runsieve::app
