#include "Picture.h"

#include <vtkVersionMacros.h>

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace runsieve::test {

namespace {

constexpr int visible = 8; ///< of 255

std::array<int, 3> channelDifferences(QRgb a, QRgb b)
{
  return {std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))};
}

/// Black where the pictures agree.
QImage mapOfDifferences(QImage const& a, QImage const& b)
{
  QImage map(a.size(), QImage::Format_RGB32);
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x) {
      const auto [red, green, blue] = channelDifferences(a.pixel(x, y), b.pixel(x, y));
      map.setPixel(x, y, qRgb(red, green, blue));
    }
  return map;
}

std::string sizeOf(QImage const& picture)
{
  return std::to_string(picture.width()) + " x " + std::to_string(picture.height());
}

std::string comparison(PictureDifference const& difference, PictureTolerance const& tolerance)
{
  return QString("by %1 per channel (at most %2) and in %3 % of the pixels (at most %4 %)")
      .arg(difference.mean)
      .arg(tolerance.mean)
      .arg(100.0 * difference.share)
      .arg(100.0 * tolerance.share)
      .toStdString();
}

/// Writes a picture for the developer to look at and returns where it is.
std::string keep(QImage const& picture, QString const& folder, QString const& name)
{
  const QString path = QDir(folder).filePath(name + ".png");
  if (!QDir().mkpath(folder) || !picture.save(path)) return "(cannot be written) " + path.toStdString();
  return path.toStdString();
}

} // namespace

PictureDifference differenceOf(QImage const& a, QImage const& b)
{
  long long sum = 0;
  long long differing = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x) {
      const auto channels = channelDifferences(a.pixel(x, y), b.pixel(x, y));
      sum += channels[0] + channels[1] + channels[2];
      differing += *std::max_element(channels.begin(), channels.end()) > visible;
    }
  const double pixels = static_cast<double>(a.width()) * a.height();
  return {static_cast<double>(sum) / (3.0 * pixels), static_cast<double>(differing) / pixels};
}

bool isWithin(PictureDifference const& difference, PictureTolerance const& tolerance)
{
  return difference.mean <= tolerance.mean && difference.share <= tolerance.share;
}

QString baselineOf(QString const& name, QString const& baselines)
{
  const QString own =
      QString("%1/vtk-%2.%3/%4.png").arg(baselines).arg(VTK_MAJOR_VERSION).arg(VTK_MINOR_VERSION).arg(name);
  return QFile::exists(own) ? own : QDir(baselines).filePath(name + ".png");
}

testing::AssertionResult matchesBaseline(QImage const& picture, std::string const& name,
                                         PictureFolders const& folders, PictureTolerance const& tolerance)
{
  const QString file = QString::fromStdString(name);
  const QString path = baselineOf(file, folders.baselines);
  const QImage baseline(path);
  if (baseline.isNull())
    return testing::AssertionFailure() << "no baseline " << path.toStdString() << "\n  the picture is "
                                       << keep(picture, folders.failed, file);
  if (baseline.size() != picture.size())
    return testing::AssertionFailure()
           << name << " is " << sizeOf(picture) << ", its baseline " << path.toStdString() << " is "
           << sizeOf(baseline) << "\n  the picture is " << keep(picture, folders.failed, file);
  const PictureDifference difference = differenceOf(picture, baseline);
  if (isWithin(difference, tolerance)) return testing::AssertionSuccess();
  return testing::AssertionFailure() << name << " differs from its baseline "
                                     << comparison(difference, tolerance) << "\n  baseline    "
                                     << path.toStdString() << "\n  picture     "
                                     << keep(picture, folders.failed, file) << "\n  differences "
                                     << keep(mapOfDifferences(picture, baseline), folders.failed,
                                             file + ".differences");
}

} // namespace runsieve::test
