#pragma once

#include <gtest/gtest.h>

#include <QColor>
#include <QFile>
#include <QString>
#include <QStringList>

#include <cmath>
#include <cstdlib>

namespace runsieve::test {

/// How far pixels may be apart: fonts differ a little from system to system, and the sums of what widgets of
/// the desktop take of a window by more.
constexpr double nearInPane = 0.34;
constexpr double nearInWindow = 12.0;

/// Whether two words are as good as equal: numbers by some part of a pixel, colours by what antialiasing
/// makes of it, others by each letter.
inline bool isLike(QString const& word, QString const& kept, double nearby)
{
  if (word == kept) return true;
  bool isNumber = false;
  bool isKeptNumber = false;
  const double number = word.toDouble(&isNumber);
  const double keptNumber = kept.toDouble(&isKeptNumber);
  if (isNumber && isKeptNumber) return std::fabs(number - keptNumber) <= nearby;
  if (!word.startsWith('~') || word.size() != kept.size()) return false;
  constexpr int digits = 2;
  constexpr int hex = 16;
  constexpr int nearShade = 4; // of 255
  for (int i = 1; i + 1 < word.size(); i += digits)
    if (std::abs(word.midRef(i, digits).toInt(nullptr, hex) - kept.midRef(i, digits).toInt(nullptr, hex)) >
        nearShade)
      return false;
  return true;
}

inline bool isLikeLine(QString const& line, QString const& kept, double nearby)
{
  const QStringList words = line.split(' ');
  const QStringList keptWords = kept.split(' ');
  return words.size() == keptWords.size() &&
         std::equal(words.begin(), words.end(), keptWords.begin(),
                    [nearby](auto const& a, auto const& b) { return isLike(a, b, nearby); });
}

/// Whether lines are those of tests/explorer/snapshots/NAME.txt. With RUNSIEVE_RENEW_SNAPSHOTS set the file
/// is written instead: look at its difference before it is kept.
inline testing::AssertionResult isAsKept(char const* name, QStringList const& lines,
                                         double nearby = nearInPane)
{
  QFile file(QString("%1/tests/explorer/snapshots/%2.txt").arg(RUNSIEVE_SOURCE_DIR, name));
  if (std::getenv("RUNSIEVE_RENEW_SNAPSHOTS")) {
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
      return testing::AssertionFailure() << file.fileName().toStdString() << " cannot be written";
    file.write((lines.join('\n') + '\n').toUtf8());
    return testing::AssertionSuccess();
  }
  if (!file.open(QIODevice::ReadOnly))
    return testing::AssertionFailure() << file.fileName().toStdString() << " cannot be read";
  QStringList kept = QString::fromUtf8(file.readAll()).split('\n');
  kept.removeLast(); // behind the last line break
  testing::AssertionResult result = testing::AssertionFailure();
  constexpr int most = 12;
  int different = 0;
  for (int i = 0; i < std::max(lines.size(), kept.size()); ++i) {
    const QString is = i < lines.size() ? lines[i] : QString("(nothing)");
    const QString was = i < kept.size() ? kept[i] : QString("(nothing)");
    if (isLikeLine(is, was, nearby)) continue;
    if (++different <= most)
      result << "\nline " << i + 1 << "\n  kept " << was.toStdString() << "\n  now  " << is.toStdString();
  }
  if (different == 0) return testing::AssertionSuccess();
  return result << "\n" << different << " lines of " << file.fileName().toStdString() << " differ";
}

} // namespace runsieve::test
