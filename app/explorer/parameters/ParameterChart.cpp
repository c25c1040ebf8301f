#include "app/explorer/parameters/ParameterChart.h"

#include "app/explorer/parameters/ChartLooks.h"
#include "app/explorer/parameters/ChartTexts.h"
#include "app/explorer/parameters/GateMarks.h"
#include "app/explorer/parameters/ParameterNumbers.h"
#include "app/explorer/parameters/PinMarks.h"
#include "app/explorer/parameters/SpanHold.h"
#include "app/explorer/parameters/TextHold.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <limits>

namespace runsieve::app {

namespace {

constexpr double room = 0.025; ///< of the axis beyond the values, at each end
constexpr double margin = 8.0;
constexpr double reach = 5.0; ///< pixels beside a plot in which gates begin

ChartAxis verticalAxis(ChartScene const& scene, ParameterLook look)
{
  switch (look) {
  case ParameterLook::Curves:
    return {AxisMap(0.0, 1.0), scene.isLarge ? "share of the runs" : QString()};
  case ParameterLook::Densities:
    return {AxisMap(0.0, 1.08), scene.isLarge ? "density" : QString(), false, {{0.0, {}}}};
  case ParameterLook::Scatter:
    return {scene.feature.axis(), scene.isLarge ? scene.feature.title() : QString()};
  }
  return {};
}

/// The rectangle of whole device pixels around one.
QRectF snapped(QRectF const& rect, double ratio)
{
  const QPointF first(std::floor(rect.left() * ratio), std::floor(rect.top() * ratio));
  const QPointF last(std::ceil(rect.right() * ratio), std::ceil(rect.bottom() * ratio));
  return {first / ratio, last / ratio};
}

QPixmap emptyPixmap(QSizeF const& size, double ratio, QColor const& color)
{
  QPixmap pixmap(QSize(static_cast<int>(std::lround(size.width() * ratio)),
                       static_cast<int>(std::lround(size.height() * ratio))));
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(color);
  return pixmap;
}

bool same(double a, double b)
{
  return a == b || (std::isnan(a) && std::isnan(b));
}

} // namespace

ParameterChart::ParameterChart(ChartScene const& ofScene, std::size_t ofParameter, QSizeF const& size)
    : scene(ofScene), document(ofScene.runs.ofDocument()), parameter(ofParameter), whole(size),
      area(QRectF(QPointF(), size).adjusted(margin, 0.6 * margin, -margin, -0.3 * margin)),
      ratio(scene.ratio), isText(document.scan().parameters[parameter].isText()),
      look(document.state().view.parameterLook), featureVersion(scene.feature.version())
{
  const QRectF below = area.adjusted(0.0, heightOfChartTexts(scene.theme), 0.0, 0.0);
  if (isText) {
    inner = below.adjusted(0.0, scene.theme.gap, 0.0, -scene.theme.gap);
    return;
  }
  values = scene.runs.axis(parameter);
  ChartAxis horizontal{values.widened(room),
                       scene.isLarge ? titleOf(document.scan().parameters[parameter].label) : QString()};
  frame = ChartFrame(below, std::move(horizontal), verticalAxis(scene, look), scene.theme);
  inner = frame.plot();
}

bool ParameterChart::fits(QSizeF const& size) const
{
  if (size != whole || ratio != scene.ratio) return false;
  return isText || (look == document.state().view.parameterLook && values == scene.runs.axis(parameter) &&
                    (look != ParameterLook::Scatter || featureVersion == scene.feature.version()));
}

SpanAxis ParameterChart::axis() const
{
  return {parameter, frame.horizontal(), inner.left(), inner.right()};
}

TextBarRows ParameterChart::bars() const
{
  return {inner, document.scan().parameters[parameter], scene.runs.textGroups(parameter), scene.theme};
}

std::unique_ptr<GateHold> ParameterChart::holdAt(QPointF const& at, Qt::KeyboardModifiers modifiers) const
{
  if (!inner.adjusted(-reach, 0.0, reach, 0.0).contains(at)) return nullptr;
  if (!isText)
    return std::make_unique<SpanHold>(document, scene.spans, axis(), true, at,
                                      modifiers.testFlag(Qt::ShiftModifier));
  const TextBarRows rows = bars();
  if (rows.size() == 0 || at.y() >= rows.place().bottom()) return nullptr;
  return std::make_unique<TextHold>(document, scene.spans, parameter, rows, at, modifiers);
}

QStringList ParameterChart::barLines(QPointF const& at) const
{
  if (!isText) return {};
  const TextBarRows rows = bars();
  if (rows.size() == 0 || !rows.place().contains(at)) return {};
  return {rowWords(rows.at(rows.nearest(at)), document.sieves())};
}

std::vector<ParameterSpan> ParameterChart::spans() const
{
  auto const found = scene.spans.find(parameter);
  return found == scene.spans.end() ? std::vector<ParameterSpan>() : found->second;
}

void ParameterChart::paintGround(QPainter& painter, QColor const& color)
{
  if (ground.isNull() || groundColor != color) {
    ground = emptyPixmap(whole, ratio, color);
    groundColor = color;
    QPainter once(&ground);
    once.setRenderHint(QPainter::Antialiasing);
    paintChartName(once, area, titleOf(document.scan().parameters[parameter].label), scene.theme);
    if (!isText) frame.paint(once, scene.theme);
  }
  painter.drawPixmap(QPointF(), ground);
}

void ParameterChart::paintBars(QPainter& painter) const
{
  const TextGroups groups = scene.runs.textGroups(parameter);
  const TextBarRows rows(inner, document.scan().parameters[parameter], groups, scene.theme);
  const ParameterNumbers numbers = numbersOf(document, parameter);
  const QString marked = numbers.compared && numbers.isCurrent && !document.previewedGate()
                             ? QString::fromStdString(numbers.compared->text)
                             : QString();
  const double pins = roomForPins(document, inner.width(), scene.theme);
  paintTextGates(painter, spans(), rows, scene.theme);
  paintTextBars(painter, rows, document.sieves(), marked, pins, scene.theme);
  paintPinsOnRows(painter, document, parameter, rows, pins, scene.theme);
  paintChartNumbers(painter, area, numbers, document.sieves(), groups.allPassing, groups.allOthers,
                    scene.theme);
}

void ParameterChart::paintScatter(QPainter& painter)
{
  const RunColumns& columns = scene.runs.columns(parameter);
  AxisMap const& shown = frame.horizontal();
  const DotPlaces places{columns, scene.feature.rows(), shown.place(values.low()),
                         shown.place(values.high())};
  if (!dots) dots.emplace((inner.size() * ratio).toSize(), ratio);
  painter.drawImage(inner, dots->image(places, scene.runs.passing(), scene.runs.eligible(), scene.theme));
}

void ParameterChart::paintRuns(QPainter& painter, double floor, double furthest)
{
  RunsImage& image = runsImage;
  const bool isKept = !image.picture.isNull() && image.version == scene.runs.version() &&
                      same(image.floor, floor) && same(image.furthest, furthest);
  if (!isKept) {
    constexpr double beyond = 2.0; // lines at the ends of the plot reach over them
    image.place = snapped(inner.adjusted(-beyond, -beyond, beyond, beyond), ratio);
    image.picture = emptyPixmap(image.place.size(), ratio, Qt::transparent);
    image.version = scene.runs.version();
    image.floor = floor;
    image.furthest = furthest;
    QPainter once(&image.picture);
    once.setRenderHint(QPainter::Antialiasing);
    once.translate(-image.place.topLeft());
    if (look == ParameterLook::Curves) {
      ChartLooks::paintCurves(once, frame, values, counted, floor, furthest, scene.theme);
    } else if (look == ParameterLook::Densities) {
      ChartLooks::Densities densities = ChartLooks::densitiesOf(counted);
      if (densities.largest > 0.0)
        for (std::vector<double>* density : {&densities.passing, &densities.others})
          for (double& value : *density) value /= densities.largest;
      ChartLooks::paintDensities(once, frame, values, counted, densities, scene.theme);
    } else {
      paintScatter(once);
    }
  }
  painter.drawPixmap(image.place.topLeft(), image.picture);
}

void ParameterChart::paintMedians(QPainter& painter) const
{
  const ParameterNumbers numbers = numbersOf(document, parameter);
  if (!scene.isLarge || !numbers.compared || !numbers.isCurrent || document.previewedGate()) return;
  for (auto const& [value, color] : {std::pair(numbers.compared->medianOthers, scene.theme.all),
                                     std::pair(numbers.compared->medianPassing, scene.theme.passing)}) {
    const double x = frame.xAt(value);
    if (!std::isfinite(x)) continue;
    painter.setPen(QPen(color, 1.3, Qt::DashLine, Qt::FlatCap));
    painter.drawLine(QPointF(x, inner.top()), QPointF(x, inner.bottom()));
  }
}

void ParameterChart::paintNumbers(QPainter& painter)
{
  if (countedVersion != scene.runs.version()) counted = scene.runs.groups(parameter);
  countedVersion = scene.runs.version();
  const ParameterNumbers numbers = numbersOf(document, parameter);
  const double none = std::numeric_limits<double>::quiet_NaN();
  const bool isTold = numbers.compared && numbers.isCurrent && !document.previewedGate();
  // The floor of the former comparison is near enough while a gate moves.
  const double floor = document.comparison() && numbers.compared ? document.comparison()->noiseFloor : none;
  paintSpans(painter, spans(), axis(), inner, true, scene.theme);
  paintRuns(painter, floor, isTold ? numbers.compared->value : none);
  paintMedians(painter);
  paintPins(painter, document, parameter, frame, scene.theme);
  paintChartNumbers(painter, area, numbers, document.sieves(), counted.passing.total(),
                    counted.others.total(), scene.theme);
}

void ParameterChart::paint(QPainter& painter, QColor const& color)
{
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  paintGround(painter, color);
  if (isText)
    paintBars(painter);
  else
    paintNumbers(painter);
  painter.restore();
}

ParameterChart& ParameterCharts::at(std::size_t parameter, QSizeF const& size)
{
  auto const found = charts.find(parameter);
  if (found != charts.end() && found->second.fits(size)) return found->second;
  if (found != charts.end()) charts.erase(found);
  return charts.emplace(parameter, ParameterChart(scene, parameter, size)).first->second;
}

void ParameterCharts::keepOnly(std::vector<std::size_t> const& shown)
{
  for (auto chart = charts.begin(); chart != charts.end();)
    chart =
        std::binary_search(shown.begin(), shown.end(), chart->first) ? std::next(chart) : charts.erase(chart);
}

} // namespace runsieve::app
