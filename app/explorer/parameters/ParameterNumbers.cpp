#include "app/explorer/parameters/ParameterNumbers.h"

#include "app/cli/RankReport.h"
#include "app/explorer/charts/AxisTicks.h"

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

/// With as many digits as keep it on its side of a threshold.
QString signedText(double d, double threshold)
{
  constexpr int mostDigits = 6;
  QString text;
  for (int digits = 2; digits <= mostDigits; ++digits) {
    text = QString::asprintf("%+.*f", digits, d);
    if ((std::fabs(text.toDouble()) >= threshold) == (std::fabs(d) >= threshold)) break;
  }
  return text;
}

QString pWords(double p)
{
  return QString::fromStdString(pText(p));
}

QString unitText(ColumnLabel const& label)
{
  return label.unit.empty() ? QString() : " " + QString::fromStdString(label.unit);
}

} // namespace

ParameterNumbers numbersOf(Document const& document, std::size_t parameter)
{
  ParameterNumbers numbers;
  if (!document.isOpen() || !document.sieves()) return numbers;
  numbers.isCurrent = document.isCompared();
  numbers.smallestD = document.state().method.thresholds.smallestD;
  if (Comparison const* comparison = document.comparison()) {
    auto const is = [&](auto const& entry) { return entry.parameter == parameter; };
    auto const found = std::find_if(comparison->parameters.begin(), comparison->parameters.end(), is);
    if (found != comparison->parameters.end()) {
      numbers.compared = &*found;
      numbers.d = found->d;
      numbers.p = adjustedP(*found, comparison->method.adjustment);
      numbers.significant = found->significant;
    }
    auto const out = std::find_if(comparison->leftOut.begin(), comparison->leftOut.end(), is);
    if (out != comparison->leftOut.end()) numbers.leftOut = QString::fromStdString(out->reason);
  }
  if (document.previewedGate()) {
    numbers.p = std::numeric_limits<double>::quiet_NaN();
    numbers.significant = false;
    auto const& live = document.liveDistances();
    numbers.d = parameter < live.size() ? live[parameter].d : std::numeric_limits<double>::quiet_NaN();
    numbers.isCurrent = true;
    if (parameter < live.size() && live[parameter].varies) numbers.leftOut.clear();
  }
  return numbers;
}

QString differenceText(double d, double p, double smallest)
{
  if (std::isnan(d)) return {};
  return "d " + signedText(d, smallest) + (std::isnan(p) ? QString() : ", p " + pWords(p));
}

QString headline(ParameterNumbers const& numbers)
{
  if (!numbers.leftOut.isEmpty()) return numbers.leftOut;
  const QString text = differenceText(numbers.d, numbers.p, numbers.smallestD);
  if (text.isEmpty() || std::isnan(numbers.p)) return text;
  return text + (numbers.significant ? QString::fromUtf8(" \u2605") : QString(" n.s."));
}

QString shortNumber(double value)
{
  constexpr int digits = 4;
  return numberText(QString::number(value, 'g', digits).toDouble());
}

QString shareText(double share)
{
  return std::isnan(share) ? QString("-") : QString::fromStdString(percentText(share));
}

QString titleOf(ColumnLabel const& label)
{
  const QString name = QString::fromStdString(label.name);
  return label.unit.empty() ? name : QString("%1 (%2)").arg(name, QString::fromStdString(label.unit));
}

QStringList parameterLines(Document const& document, std::size_t parameter, std::size_t passing,
                           std::size_t others)
{
  ColumnLabel const& label = document.scan().parameters[parameter].label;
  QStringList lines;
  lines << titleOf(label);
  if (!label.label.empty()) lines << QString::fromStdString(label.label);
  const ParameterNumbers numbers = numbersOf(document, parameter);
  const QString difference = headline(numbers);
  if (!difference.isEmpty()) lines << difference;
  if (numbers.compared && numbers.isCurrent && !document.previewedGate() && !numbers.compared->isText)
    lines << QString("median of passing runs %1, of the others %2")
                 .arg(shortNumber(numbers.compared->medianPassing) + unitText(label),
                      shortNumber(numbers.compared->medianOthers) + unitText(label));
  lines << (document.sieves() ? QString("%L1 passing runs, %L2 others").arg(passing).arg(others)
                              : QString("%L1 runs").arg(others));
  const std::size_t missing =
      document.eligible().count() - std::min(document.eligible().count(), passing + others);
  if (missing > 0) lines << QString("%L1 runs without a value").arg(missing);
  return lines;
}

QString parameterWords(Document const& document, std::size_t parameter, std::size_t passing,
                       std::size_t others)
{
  ScanParameter const& values = document.scan().parameters[parameter];
  const QString unit = unitText(values.label);
  if (!document.sieves())
    return QString("%L1 runs have a value. Draw a gate to compare those that pass it with the others.")
        .arg(others);
  QString words = QString("%L1 passing runs and %L2 others have a value. ").arg(passing).arg(others);
  const ParameterNumbers numbers = numbersOf(document, parameter);
  if (!numbers.leftOut.isEmpty()) return words + "It is not compared: it " + numbers.leftOut + ".";
  if (document.previewedGate() || !numbers.isCurrent)
    return words + (std::isnan(numbers.d)
                        ? QString()
                        : QString("d is %1.").arg(signedText(numbers.d, numbers.smallestD)));
  ParameterComparison const* found = numbers.compared;
  if (!found || std::isnan(found->d)) return words + "There is nothing to compare.";
  if (found->isText && !found->text.empty())
    words += QString("The shares differ most for \"%1\": by %2. ")
                 .arg(QString::fromStdString(found->text), signedText(found->d, numbers.smallestD));
  else if (!found->isText)
    words += QString("The passing runs have a median of %1, the others one of %2. The curves are furthest "
                     "apart at %3, by d = %4. ")
                 .arg(shortNumber(found->medianPassing) + unit, shortNumber(found->medianOthers) + unit,
                      shortNumber(found->value) + unit, signedText(found->d, numbers.smallestD));
  if (!std::isnan(numbers.p))
    words += QString("With %1 as adjusted p-value %2.")
                 .arg(pWords(numbers.p), numbers.significant ? QString("the difference is significant")
                                                             : QString("the difference is not significant"));
  return words.trimmed();
}

QString gestureWords(ScanParameter const& parameter)
{
  return parameter.isText()
             ? "Click a bar, or drag over several: a gate on these texts. Ctrl adds texts to a "
               "gate or takes them away; with Shift the other runs pass."
             : "Drag across the plot: a gate on these values. With Shift the other runs pass.";
}

} // namespace runsieve::app
