#include "app/explorer/runs/RunsView.h"

#include "app/explorer/charts/PlotNames.h"
#include "app/explorer/controls/LostMouse.h"
#include "app/explorer/parameters/ParameterNumbers.h"
#include "app/explorer/runs/RunsOverlay.h"

#include <QEvent>
#include <QPainter>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <utility>

namespace runsieve::app {

namespace {

/// What the line and the areas of bands are.
QString bandsText(BandsKind kind)
{
  return kind == BandsKind::Quantiles ? QString::fromUtf8("median, 25\u201375 %, 5\u201395 %")
                                      : QString("deepest run, deeper half, not outlying");
}

QString outlyingText(std::size_t runs)
{
  if (runs == 0) return {};
  if (runs <= RunBands::mostOutlying) return QString(", %L1 outlying").arg(runs);
  return QString(", %L1 outlying, %2 shown").arg(runs).arg(RunBands::mostOutlying);
}

} // namespace

RunsView::RunsView(Document& ofDocument, RunsZoom& ofZoom, std::size_t shown, QWidget* parent)
    : QWidget(parent), document(ofDocument), zoom(ofZoom), output(shown),
      theme(Theme::ofPalette(palette(), font()))
{
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName("Runs over time");
  new LostMouse(*this, [this] { cancelDrag(); });
  connect(&picture, &RunsPicture::changed, this, &RunsView::showPicture);
  connect(&bands, &BandsPicture::changed, this, &RunsView::showPicture);
  connect(&zoom, &RunsZoom::changed, this, &RunsView::refresh); // of the state as well
  connect(&document, &Document::passingChanged, this, &RunsView::refresh);
  connect(&document, &Document::previewGivenUp, this, [this] {
    if (drag && (drag->kind == Drag::Kind::Gate || drag->kind == Drag::Kind::NewGate)) cancelDrag();
  });
  connect(&document, &Document::highlightChanged, this, qOverload<>(&QWidget::update));
  refresh();
}

void RunsView::setTool(RunsTool wanted)
{
  tool = wanted;
  setCursor(tool == RunsTool::Pan ? Qt::OpenHandCursor : Qt::CrossCursor);
}

void RunsView::setOutput(std::size_t position)
{
  if (position == output) return;
  cancelDrag();
  output = position;
  found.reset();
  refresh();
}

void RunsView::setTimeNumbers(bool on)
{
  timeNumbers = on;
  refresh();
}

double RunsView::neededLeft() const
{
  if (!document.isOpen() || output >= document.scan().outputs.size()) return 0.0;
  const ChartAxis vertical{zoom.value(output), titleOf(document.scan().outputs[output].label)};
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
  ChartAxis horizontal{zoom.time(), timeNumbers ? titleOf(scan.time) : QString(), timeNumbers};
  ChartAxis vertical{zoom.value(output), titleOf(scan.outputs[output].label)};
  axes = ChartFrame(QRectF(rect()).adjusted(4.0, 0.0, -2.0, -2.0), std::move(horizontal), std::move(vertical),
                    theme, leastLeft);
  setAccessibleDescription(titleOf(scan.outputs[output].label));
  const double around = height() - axes.plot().height();
  if (std::fabs(around - aroundPlot) < 0.5) return;
  aroundPlot = around;
  updateGeometry();
}

std::vector<RunsView::RunGroup> RunsView::groups() const
{
  std::vector<RunGroup> shown;
  const bool sieves = document.sieves();
  if (!sieves || document.state().view.focus != Focus::Hidden)
    shown.push_back({"all runs", nullptr, theme.all});
  for (NamedSet const& set : document.state().sets)
    if (set.shown)
      shown.push_back(
          {QString::fromStdString(set.name), &set.runs, theme.sets[set.color % theme.sets.size()]});
  // Above the sets, which may hold the same runs.
  if (sieves) shown.push_back({"passing", &document.passing(), theme.passing});
  return shown;
}

double RunsView::othersOpacity() const
{
  constexpr double pale = 0.25;
  return document.sieves() && document.state().view.focus == Focus::Faded ? pale : 1.0;
}

void RunsView::requestBands()
{
  std::vector<BandsPicture::Group> wanted;
  const std::optional<BandsKind> kind = bandsKindOf(document.state().view.runsLook);
  if (document.isOpen() && kind)
    for (RunGroup const& group : groups()) {
      // Beside the passing runs the others are of interest, not all runs.
      const RunSet rest =
          document.sieves() ? document.passing().complement() : RunSet(document.scan().runs.size(), true);
      wanted.push_back(
          {(group.runs ? *group.runs : rest).mask(), group.color, group.runs ? 1.0 : othersOpacity()});
    }
  bands.request(document.sharedScan(), output, kind.value_or(BandsKind::Quantiles), std::move(wanted));
}

std::vector<LegendLine> RunsView::legend() const
{
  std::vector<LegendLine> lines;
  if (!document.isOpen()) return lines;
  const RunsLook look = document.state().view.runsLook;
  auto const& images = picture.images();
  for (RunGroup const& group : groups()) {
    LegendLine line{group.name, group.color};
    if (!group.runs) line.opacity = othersOpacity();
    if (look == RunsLook::Density && lines.size() < images.size()) line.shades = images[lines.size()].scale;
    if (bandsKindOf(look)) {
      if (!group.runs && document.sieves()) line.text = "the others";
      line.text += outlyingText(bands.outlyingOf(lines.size()));
    }
    lines.push_back(std::move(line));
  }
  // A single colour needs no legend.
  if (lines.size() == 1 && look == RunsLook::Lines) lines.clear();
  if (std::optional<BandsKind> const kind = bandsKindOf(look)) lines.push_back({bandsText(*kind), {}});
  return lines;
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
  if (bandsKindOf(view.runsLook)) return request;
  const bool shades = view.runsLook == RunsLook::Density;
  for (RunGroup const& group : groups()) {
    const std::size_t runs = group.runs ? group.runs->count() : document.scan().runs.size();
    request.layers.push_back({group.runs ? group.runs->mask() : std::vector<std::uint8_t>(), group.color,
                              shades, lineOpacity(runs)});
  }
  return request;
}

void RunsView::refresh()
{
  relayout();
  picture.request(wantedPicture());
  requestBands();
  showPicture();
}

void RunsView::showPicture()
{
  Q_EMIT legendChanged();
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
  picture.paint(painter, axes.plot(), axes.horizontal(), axes.vertical(), {othersOpacity()});
  if (bandsKindOf(document.state().view.runsLook)) bands.paint(painter, axes, theme);
  axes.paint(painter, theme);
  if (axes.vertical().isLogarithmic() && zoom.extents().of(output).low <= 0.0) {
    painter.setFont(theme.font);
    PlotNames(axes.plot(), theme).paintLackOfZero(painter);
  }
  const RunsOverlay overlay(document, output, axes, theme);
  overlay.paintRuns(painter);
  overlay.paintGates(painter, true);
  if (drag && drag->kind == Drag::Kind::Zoom && drag->moved) {
    painter.setPen(QPen(theme.ink, 1.0, Qt::DotLine));
    painter.drawRect(QRectF(drag->from, pointer).normalized());
  }
  if (found && !drag) overlay.paintHover(painter, *found);
  if (showsFocus) {
    painter.setPen(QPen(theme.gate, 1.0));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
  }
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
