#include "app/explorer/parameters/ParameterGrid.h"

#include "app/explorer/parameters/ParameterNumbers.h"

#include <QElapsedTimer>
#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>
#include <QPaintEvent>
#include <QScrollBar>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

constexpr double leastWidth = 176.0; ///< of a readable chart, texts aside
constexpr double mostWidth = 380.0;
constexpr int patience = 25; ///< ms of placing runs before what is there is shown

Theme smallTheme(QWidget const& widget)
{
  QFont font = widget.font();
  if (font.pointSizeF() > 0.0)
    font.setPointSizeF(0.9 * font.pointSizeF());
  else
    font.setPixelSize(std::max(1, static_cast<int>(0.9 * font.pixelSize())));
  return Theme::ofPalette(widget.palette(), font);
}

} // namespace

ParameterGrid::ParameterGrid(ParameterRuns& ofRuns, QWidget* parent)
    : QAbstractScrollArea(parent), runs(ofRuns), document(ofRuns.ofDocument()), feature(document),
      theme(smallTheme(*this)), drag(document)
{
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName("Charts of the parameters");
  viewport()->setMouseTracking(true);
  connect(&runs, &ParameterRuns::opened, this, [this] {
    drag.cancel();
    pressed.reset();
    hovered.reset();
    chosenParameter.reset();
    relayout();
    verticalScrollBar()->setValue(0);
  });
  connect(&runs, &ParameterRuns::orderChanged, this, &ParameterGrid::relayout);
  connect(&runs, &ParameterRuns::changed, this, &ParameterGrid::refresh);
  relayout();
}

double ParameterGrid::neededWidth() const
{
  // Where counts don't fit beside the difference they are left out; two charts side by side tell more.
  return std::max(leastWidth, QFontMetricsF(theme.font).horizontalAdvance("d -0.00, p 0.00001 n.s. "));
}

void ParameterGrid::relayout()
{
  const double width = viewport()->width();
  const std::size_t count = runs.order().size();
  perRow = std::max(1, static_cast<int>(width / neededWidth()));
  const double cellWidth = std::floor(std::min(width / perRow, mostWidth));
  const double line = QFontMetricsF(theme.font).height();
  size = {cellWidth, std::floor(0.44 * cellWidth + 4.8 * line)};
  const std::size_t rows = (count + static_cast<std::size_t>(perRow) - 1) / static_cast<std::size_t>(perRow);
  const int height = static_cast<int>(static_cast<double>(rows) * size.height());
  verticalScrollBar()->setRange(0, std::max(0, height - viewport()->height()));
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(std::max(1, static_cast<int>(size.height() / 4.0)));
  refresh();
}

void ParameterGrid::refresh()
{
  spans = spansOf(document);
  viewport()->update();
}

std::size_t ParameterGrid::placeOf(std::size_t parameter) const
{
  auto const& order = runs.order();
  return static_cast<std::size_t>(std::find(order.begin(), order.end(), parameter) - order.begin());
}

QRectF ParameterGrid::cellAtPlace(std::size_t place) const
{
  const auto column = static_cast<double>(place % static_cast<std::size_t>(perRow));
  const auto row = static_cast<double>(place / static_cast<std::size_t>(perRow));
  return {QPointF(column * size.width(), row * size.height() - verticalScrollBar()->value()), size};
}

QRectF ParameterGrid::cell(std::size_t parameter) const
{
  return cellAtPlace(placeOf(parameter));
}

QRectF ParameterGrid::plot(std::size_t parameter) const
{
  return ParameterChart(scene(), parameter, cell(parameter)).plot();
}

std::optional<std::size_t> ParameterGrid::placeAt(QPointF const& at) const
{
  const double y = at.y() + verticalScrollBar()->value();
  if (at.x() < 0.0 || y < 0.0 || at.x() >= size.width() * perRow) return std::nullopt;
  const auto place = static_cast<std::size_t>(y / size.height()) * static_cast<std::size_t>(perRow) +
                     static_cast<std::size_t>(at.x() / size.width());
  return place < runs.order().size() ? std::optional(place) : std::nullopt;
}

ChartScene ParameterGrid::scene() const
{
  return {runs, feature, spans, theme, devicePixelRatioF()};
}

std::optional<std::size_t> ParameterGrid::current() const
{
  if (chosenParameter) return chosenParameter;
  return runs.order().empty() ? std::nullopt : std::optional(runs.order().front());
}

void ParameterGrid::setCurrent(std::size_t parameter)
{
  chosenParameter = parameter;
  const QRectF place = cell(parameter);
  if (place.top() < 0.0)
    verticalScrollBar()->setValue(verticalScrollBar()->value() + static_cast<int>(std::floor(place.top())));
  else if (place.bottom() > viewport()->height())
    verticalScrollBar()->setValue(verticalScrollBar()->value() +
                                  static_cast<int>(std::ceil(place.bottom() - viewport()->height())));
  const ParameterNumbers numbers = numbersOf(document, parameter);
  setAccessibleDescription(titleOf(document.scan().parameters[parameter].label) + " " + headline(numbers));
  viewport()->update();
}

void ParameterGrid::paintEvent(QPaintEvent* event)
{
  QPainter painter(viewport());
  painter.fillRect(event->rect(), theme.paper);
  if (!document.isOpen()) return;
  if (runs.order().empty()) {
    painter.setPen(theme.faint);
    painter.setFont(theme.font);
    painter.drawText(QRectF(viewport()->rect()).adjusted(12, 12, -12, -12),
                     Qt::AlignCenter | Qt::TextWordWrap, "This scan has no parameters.");
    return;
  }
  feature.update();
  const bool isComplete = placeVisible(event->rect());
  const ChartScene shown = scene();
  for (std::size_t place = 0; place < runs.order().size(); ++place) {
    const QRectF area = cellAtPlace(place);
    if (area.intersects(QRectF(event->rect()))) paintCell(painter, shown, runs.order()[place], area);
  }
  if (!isComplete) QTimer::singleShot(0, viewport(), qOverload<>(&QWidget::update));
}

bool ParameterGrid::placeVisible(QRect const& visible) const
{
  QElapsedTimer elapsed;
  elapsed.start();
  for (std::size_t place = 0; place < runs.order().size(); ++place) {
    const std::size_t parameter = runs.order()[place];
    if (!cellAtPlace(place).intersects(QRectF(visible)) || document.scan().parameters[parameter].isText() ||
        runs.isPlaced(parameter))
      continue;
    if (elapsed.elapsed() > patience) return false;
    static_cast<void>(runs.columns(parameter));
  }
  return true;
}

void ParameterGrid::paintCell(QPainter& painter, ChartScene const& shown, std::size_t parameter,
                              QRectF const& area) const
{
  if (hovered == parameter) {
    QColor ground = theme.ink;
    ground.setAlphaF(0.05);
    painter.fillRect(area, ground);
  }
  if (hasFocus() && current() == parameter) {
    painter.setPen(QPen(theme.gate, 1.0));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(area.adjusted(0.5, 0.5, -1.5, -1.5));
  }
  if (document.scan().parameters[parameter].isText() || runs.isPlaced(parameter))
    ParameterChart(shown, parameter, area).paint(painter);
}

void ParameterGrid::resizeEvent(QResizeEvent*)
{
  relayout();
}

void ParameterGrid::changeEvent(QEvent* event)
{
  QAbstractScrollArea::changeEvent(event);
  if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange) return;
  theme = smallTheme(*this);
  relayout();
}

void ParameterGrid::prepare()
{
  // In slices, between which events go on.
  if (!document.isOpen() || document.state().view.outputs.empty()) return;
  if (!document.prepareGate(document.state().view.outputs.front()))
    QTimer::singleShot(0, this, &ParameterGrid::prepare);
}

} // namespace runsieve::app
