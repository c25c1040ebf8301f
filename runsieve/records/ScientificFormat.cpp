#include <runsieve/records/ScientificFormat.h>

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace Kestrane {

namespace {

/// Cuts zeros, and a decimal point after which nothing is left, off the end of a plain decimal.
QString withoutTrailingZeros(QString text)
{
  if (!text.contains(QLatin1Char('.'))) return text;
  while (text.endsWith(QLatin1Char('0'))) text.chop(1);
  if (text.endsWith(QLatin1Char('.'))) text.chop(1);
  return text == QLatin1String("-0") ? QStringLiteral("0") : text;
}

QString raised(int exponent)
{
  static const QString digits = QString::fromUtf8("⁰¹²³⁴⁵⁶⁷⁸⁹");
  QString text = exponent < 0 ? QString::fromUtf8("⁻") : QString();
  for (QChar digit : QString::number(std::abs(exponent))) text += digits[digit.digitValue()];
  return text;
}

} // namespace

QString getScientificFormat(QString const& number, int digits, int longest, bool superscript)
{
  const QString text = number.trimmed();
  bool isNumber = false;
  const double value = QLocale::c().toDouble(text, &isNumber);
  if (!isNumber || !std::isfinite(value)) return number;
  const bool isPlain = !text.contains(QLatin1Char('e'), Qt::CaseInsensitive);
  const QString plain = isPlain ? withoutTrailingZeros(text) : QString();
  if (isPlain && plain.size() <= longest) return plain;

  const QStringList parts = QString::number(value, 'e', std::max(digits, 0)).split(QLatin1Char('e'));
  const QString mantissa = withoutTrailingZeros(parts[0]);
  const int exponent = parts[1].toInt();
  if (exponent == 0) return mantissa;
  if (!superscript) return mantissa + QLatin1Char('e') + QString::number(exponent);
  return mantissa + QString::fromUtf8("×10") + raised(exponent);
}

} // namespace Kestrane
