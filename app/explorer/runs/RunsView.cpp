#include "app/explorer/runs/RunsView.h"

#include "app/explorer/runs/RunsOverlay.h"

#include <QEvent>
#include <QPainter>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <utility>

namespace runsieve::app {

namespace {

QString titled(ColumnLabel const& label)
{
  const QString name = QString::fromStdString(label.name);
  return label.unit.empty() ? name : QString("%1 (%2)").arg(name, QString::fromStdString(label.unit));
}

/// Opacity of one run's line where lines lie over lines: single runs stay visible, thousands still show where
/// they are dense.
double lineOpacity(std::size_t runs)
{
  return std::clamp(5.5 / std::sqrt(static_cast<double>(std::max<std::size_t>(runs, 1))), 0.055, 0.67);
}

} // namespace

RunsView::RunsView(Document& ofDocument, RunsZoom& ofZoom, std::size_t shown, QWidget* parent)
    : QWidget(parent), document(ofDocument), zoom(ofZoom), output(shown),
      theme(Theme::ofPalette(palette(), font()))
{
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName("Runs over time");
  connect(&picture, &RunsPicture::changed, this, qOverload<>(&QWidget::update));
  connect(&zoom, &RunsZoom::changed, this, &RunsView::refresh);
  connect(&document, &Document::passingChanged, this, &RunsView::refresh);
  connect(&document, &Document::stateChanged, this, &RunsView::refresh);
  connect(&document, &Document::highlightChanged, this, qOverload<>(&QWidget::update));
  refresh();
}

void RunsView::setTool(RunsTool wanted)
{
  tool = wanted;
  setCursor(tool == RunsTool::Pan ? Qt::OpenHandCursor : Qt::CrossCursor);
}

void RunsView::setTimeNumbers(bool on)
{
  timeNumbers = on;
  refresh();
}

double RunsView::neededLeft() const
{
  if (!document.isOpen() || output >= document.scan().outputs.size()) return 0.0;
  const ChartAxis vertical{zoom.value(output), titled(document.scan().outputs[output].label)};
  return ChartFrame(rect(), {}, vertical, theme).left();
}

void RunsView::setLeastLeft(double width)
{
  if (width == leastLeft) return;
  leastLeft = width;
  refresh();
}

void RunsView::relayout()
{
  if (!document.isOpen() || output >= document.scan().outputs.size()) return;
  Scan const& scan = document.scan();
  ChartAxis horizontal{zoom.time(), timeNumbers ? titled(scan.time) : QString(), timeNumbers};
  ChartAxis vertical{zoom.value(output), titled(scan.outputs[output].label)};
  axes = ChartFrame(QRectF(rect()).adjusted(4.0, 0.0, -2.0, -2.0), std::move(horizontal), std::move(vertical),
                    theme, leastLeft);
  setAccessibleDescription(titled(scan.outputs[output].label));
}

RunsRequest RunsView::wantedPicture() const
{
  RunsRequest request;
  if (!document.isOpen() || output >= document.scan().outputs.size()) return request;
  ViewState const& view = document.state().view;
  const double ratio = devicePixelRatioF();
  request.scan = document.sharedScan();
  request.output = output;
  request.time = axes.horizontal();
  request.value = axes.vertical();
  request.size = (axes.plot().size() * ratio)
                     .toSize()
                     .boundedTo(QSize(RunCoverage::largestSize, RunCoverage::largestSize));
  request.width = ratio;
  request.dark = theme.dark;
  const bool shades = view.runsLook != RunsLook::Lines;
  const bool sieves = document.sieves();
  if (!sieves || view.focus != Focus::Hidden)
    request.layers.push_back({{}, theme.all, shades, lineOpacity(document.scan().runs.size())});
  if (sieves)
    request.layers.push_back(
        {document.passing().mask(), theme.passing, shades, lineOpacity(document.passing().count())});
  for (NamedSet const& set : document.state().sets)
    if (set.shown)
      request.layers.push_back({set.runs.mask(), theme.sets[set.color % theme.sets.size()], shades,
                                lineOpacity(set.runs.count())});
  return request;
}

void RunsView::refresh()
{
  relayout();
  picture.request(wantedPicture());
  update();
}

RunSet RunsView::visibleRuns() const
{
  return document.sieves() && document.state().view.focus == Focus::Hidden
             ? document.passing()
             : RunSet(document.scan().runs.size(), true);
}

void RunsView::prepare()
{
  // In slices, between which events go on.
  if (!document.prepareGate(output)) QTimer::singleShot(0, this, &RunsView::prepare);
}

void RunsView::paintEvent(QPaintEvent*)
{
  QPainter painter(this);
  painter.fillRect(rect(), theme.paper);
  if (!document.isOpen() || output >= document.scan().outputs.size()) return;
  const bool faded = document.sieves() && document.state().view.focus == Focus::Faded;
  constexpr double pale = 0.25;
  picture.paint(painter, axes.plot(), axes.horizontal(), axes.vertical(), {faded ? pale : 1.0});
  axes.paint(painter, theme);
  const RunsOverlay overlay(document, output, axes, theme);
  overlay.paintRuns(painter);
  overlay.paintGates(painter, true);
  if (drag && drag->kind == Drag::Kind::Zoom && drag->moved) {
    painter.setPen(QPen(theme.ink, 1.0, Qt::DotLine));
    painter.drawRect(QRectF(drag->from, pointer).normalized());
  }
  if (found && !drag) overlay.paintHover(painter, *found);
}

void RunsView::resizeEvent(QResizeEvent*)
{
  refresh();
}

void RunsView::changeEvent(QEvent* event)
{
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
    theme = Theme::ofPalette(palette(), font());
    refresh();
  }
  QWidget::changeEvent(event);
}

} // namespace runsieve::app
