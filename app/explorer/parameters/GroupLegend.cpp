#include "app/explorer/parameters/GroupLegend.h"

#include <QFontMetricsF>
#include <QPainter>

#include <vector>

namespace runsieve::app {

namespace {

constexpr double sample = 16.0; ///< length of a line or a band
constexpr double gap = 5.0;
constexpr double between = 14.0;

struct Entry
{
  QString text;
  QColor color;
  bool isBand;
};

std::vector<Entry> entriesOf(Document const& document, Theme const& theme)
{
  if (!document.sieves()) return {{"all runs", theme.all, false}};
  std::vector<Entry> entries = {{"passing", theme.passing, false}, {"others", theme.all, false}};
  QColor band = theme.all;
  band.setAlphaF(0.25);
  if (document.state().view.parameterLook == ParameterLook::Curves)
    entries.push_back({"noise floor", band, true});
  return entries;
}

} // namespace

GroupLegend::GroupLegend(Document& ofDocument, QWidget* parent) : QWidget(parent), document(ofDocument)
{
  setAccessibleName("Colours of the groups of runs");
  setToolTip("The noise floor is how far the curves of two groups of these sizes come apart by chance");
  auto const refresh = [this] {
    updateGeometry();
    update();
  };
  connect(&document, &Document::passingChanged, this, refresh);
  connect(&document, &Document::stateChanged, this, refresh);
}

QSize GroupLegend::sizeHint() const
{
  const QFontMetricsF metrics(font());
  double width = 0.0;
  for (Entry const& entry : entriesOf(document, Theme::ofPalette(palette(), font())))
    width += sample + gap + metrics.horizontalAdvance(entry.text) + between;
  return QSizeF(width, metrics.height() + 4.0).toSize();
}

void GroupLegend::paintEvent(QPaintEvent*)
{
  if (!document.isOpen()) return;
  QPainter painter(this);
  const Theme theme = Theme::ofPalette(palette(), font());
  const QFontMetricsF metrics(font());
  const double middle = 0.5 * height();
  // A small room has short samples.
  const double part = width() < sizeHint().width() ? 0.5 : 1.0;
  const double length = part * sample;
  double x = 0.0;
  for (Entry const& entry : entriesOf(document, theme)) {
    const double width = length + part * gap + metrics.horizontalAdvance(entry.text);
    if (x + width > this->width() + 1.0) break; // no half words
    const double half = entry.isBand ? 4.0 : 1.2;
    painter.fillRect(QRectF(x, middle - half, length, 2.0 * half), entry.color);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(QPointF(x + length + part * gap, middle + 0.5 * (metrics.ascent() - metrics.descent())),
                     entry.text);
    x += width + part * between;
  }
}

} // namespace runsieve::app
