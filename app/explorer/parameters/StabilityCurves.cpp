#include "app/explorer/parameters/StabilityCurves.h"

#include "app/explorer/parameters/PlainTip.h"
#include "app/explorer/parameters/Settling.h"

#include <QHelpEvent>
#include <QPainter>

#include <cmath>
#include <utility>

namespace runsieve::app {

namespace {

QString threeDigits(double value)
{
  return std::isnan(value) ? QString("-") : QString::number(value, 'f', 3);
}

QString pointText(StabilityOfRuns const& found, StabilityPicture::Point const& point)
{
  ComparisonAtSize const& size = found.stability.sizes[point.size];
  DistanceAtSize const& d = size.parameters[point.parameter];
  QString text = QString("%1, %2 runs: %L3 passing, %L4 others\n|d| %5")
                     .arg(QString::fromStdString(found.comparison->parameters[point.parameter].name),
                          shareOfRuns(size.share) + (size.share < 1.0 ? " of the" : ""))
                     .arg(size.passing)
                     .arg(size.others)
                     .arg(threeDigits(d.median));
  if (size.share < 1.0)
    text += QString(" in the middle of %L1 samples, 5 % to 95 %: %2 to %3")
                .arg(found.stability.method.subsamples)
                .arg(threeDigits(d.low), threeDigits(d.high));
  return text +
         QString("\n%1 the noise floor of so many runs, %2")
             .arg(size.isBeyond(point.parameter) ? "beyond" : "not beyond", threeDigits(size.noiseFloor));
}

} // namespace

StabilityCurves::StabilityCurves(QWidget* parent)
    : QWidget(parent), theme(Theme::ofPalette(palette(), font()))
{
  setAccessibleName("Differences of the parameters in parts of the runs");
}

void StabilityCurves::show(std::shared_ptr<StabilityOfRuns const> found)
{
  shown = std::move(found);
  update();
}

StabilityPicture StabilityCurves::picture() const
{
  return {*shown->comparison, shown->stability, QRectF(rect()).adjusted(6.0, 4.0, -4.0, -4.0), theme};
}

void StabilityCurves::paintEvent(QPaintEvent*)
{
  QPainter painter(this);
  painter.fillRect(rect(), theme.paper);
  if (shown) picture().paint(painter);
}

QString StabilityCurves::tipAt(QPointF const& at) const
{
  constexpr double reach = 9.0;
  if (auto const point = picture().pointAt(at, reach)) return pointText(*shown, *point);
  return QString(
             "How large d would have been with a part of the runs: the middle of %L1 random samples, and "
             "the range of 5 % to 95 % of them.\nFull circles are beyond the noise floor, the grey area, in "
             "at least 95 % of the samples.\nWith few runs chance makes d larger: what falls towards the "
             "noise is fading, what stays is real.")
      .arg(shown->stability.method.subsamples);
}

bool StabilityCurves::event(QEvent* event)
{
  if (event->type() != QEvent::ToolTip || !shown) return QWidget::event(event);
  auto* help = static_cast<QHelpEvent*>(event);
  showPlainTip(help->globalPos(), tipAt(help->pos()), this);
  return true;
}

void StabilityCurves::changeEvent(QEvent* event)
{
  QWidget::changeEvent(event);
  if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange) return;
  theme = Theme::ofPalette(palette(), font());
  update();
}

} // namespace runsieve::app
