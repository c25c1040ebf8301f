#include "app/explorer/charts/AxisTicks.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace runsieve::app {

namespace {

/// Round steps and how many small ones they hold.
struct RoundStep
{
  double size;
  int parts;
};

/// The smallest of 1, 2 and 5 times a power of 10 that is no less.
RoundStep roundStep(double least)
{
  constexpr double rounding = 1.0 - 1e-9;
  const double power = std::pow(10.0, std::floor(std::log10(least) + 1e-9));
  for (auto const& [factor, parts] : {std::pair{1.0, 5}, {2.0, 4}, {5.0, 5}})
    if (factor * power >= least * rounding) return {factor * power, parts};
  return {10.0 * power, 5};
}

std::vector<Tick> linearTicks(AxisMap const& axis, int labels)
{
  const double length = axis.high() - axis.low();
  const RoundStep step = roundStep(length / labels);
  const double small = step.size / step.parts;
  std::vector<Tick> ticks;
  const double first = std::ceil(axis.low() / small - 1e-6);
  const double last = std::floor(axis.high() / small + 1e-6);
  if (!std::isfinite(first) || !std::isfinite(last) || last - first > 1000.0) return ticks;
  for (double i = first; i <= last; i += 1.0) {
    const bool isLarge = std::fmod(i, step.parts) == 0.0;
    const double value = i == 0.0 ? 0.0 : i * small;
    ticks.push_back({value, isLarge ? numberText(value, step.size) : QString()});
  }
  return ticks;
}

QString decadeText(int decade)
{
  return decade >= -3 && decade <= 4 ? QString::number(std::pow(10.0, decade), 'g', 6)
                                     : QStringLiteral("1e%1").arg(decade);
}

/// Decades, every k-th with a label, and their multiples where there is room for marks.
std::vector<Tick> decadeTicks(int first, int last, AxisMap const& axis, int labels)
{
  std::vector<Tick> ticks;
  const int step = std::max(1, (last - first + labels) / labels);
  for (int decade = first - 1; decade <= last; ++decade) {
    const double power = std::pow(10.0, decade);
    for (int multiple = 1; multiple <= (step == 1 ? 9 : 1); ++multiple) {
      const double value = power * multiple;
      const double place = axis.place(value);
      if (place < -1e-9 || place > 1.0 + 1e-9) continue;
      const bool isLarge = multiple == 1 && decade % step == 0;
      ticks.push_back({value, isLarge ? decadeText(decade) : QString()});
    }
  }
  return ticks;
}

/// Of less than two decades: 1, 2 and 5, or round steps where the axis is shorter than that.
std::vector<Tick> shortLogTicks(AxisMap const& axis, int labels)
{
  if (axis.high() / axis.low() < 4.0) return linearTicks(axis, std::max(2, labels / 2));
  std::vector<Tick> ticks = decadeTicks(static_cast<int>(std::floor(std::log10(axis.low()))),
                                        static_cast<int>(std::ceil(std::log10(axis.high()))), axis, 100);
  const bool few = labels < 5;
  for (Tick& tick : ticks) {
    const double mantissa = tick.value / std::pow(10.0, std::floor(std::log10(tick.value) + 1e-9));
    const auto digit = static_cast<int>(std::lround(mantissa));
    const bool shown = digit == 1 || (few ? digit == 3 : digit == 2 || digit == 5);
    tick.label = shown ? numberText(tick.value) : QString();
  }
  return ticks;
}

} // namespace

QString numberText(double value, double step)
{
  if (!std::isfinite(value)) return std::isnan(value) ? "-" : value > 0.0 ? "inf" : "-inf";
  int digits = 6;
  if (step > 0.0 && value != 0.0)
    digits = std::clamp(
        static_cast<int>(std::ceil(std::log10(std::fabs(value)) - std::log10(step) + 1e-9)) + 1, 1, 15);
  const double size = std::fabs(value);
  const bool isPlain = value == 0.0 || (size < 1e5 && size >= 1e-3);
  // Fixed notation must not fall back to an exponent for want of digits, as 12000 with two would.
  if (isPlain && size >= 1.0) digits = std::max(digits, static_cast<int>(std::floor(std::log10(size))) + 1);
  QString text = QString::number(value, 'g', digits);
  const int e = text.indexOf('e');
  if (e < 0) return text;
  QString exponent = text.mid(e + 1);
  const bool isNegative = exponent.startsWith('-');
  while (!exponent.isEmpty() && (exponent[0] == '+' || exponent[0] == '-' || exponent[0] == '0'))
    exponent.remove(0, 1);
  return text.left(e + 1) + (isNegative ? "-" : "") + exponent;
}

std::vector<Tick> ticksOf(AxisMap const& axis, int labels)
{
  labels = std::max(labels, 2);
  if (!axis.isLogarithmic()) return linearTicks(axis, labels);
  const int first = static_cast<int>(std::ceil(std::log10(axis.low()) - 1e-9));
  const int last = static_cast<int>(std::floor(std::log10(axis.high()) + 1e-9));
  return last > first ? decadeTicks(first, last, axis, labels) : shortLogTicks(axis, labels);
}

} // namespace runsieve::app
