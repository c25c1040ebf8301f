#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QString>

#include <string>

namespace runsieve::test {

/// How much two pictures of equal size differ.
struct PictureDifference
{
  double mean;  ///< absolute difference per pixel and colour channel, of 255
  double share; ///< of the pixels in which a channel differs by more than 8
};

/// What passes as equal. The defaults are tight: rounding passes, a curve of a small chart that is missing
/// does not.
struct PictureTolerance
{
  double mean = 0.05;
  double share = 0.0005;
};

struct PictureFolders
{
  QString baselines; ///< <name>.png for each picture; in a folder vtk-9.3 what that version draws otherwise
  QString failed;    ///< where a picture that does not match goes, with a map of the differences
};

[[nodiscard]] PictureDifference differenceOf(QImage const& a, QImage const& b);
[[nodiscard]] bool isWithin(PictureDifference const& difference, PictureTolerance const& tolerance = {});

/// The baseline of a picture for the version of VTK that draws it.
[[nodiscard]] QString baselineOf(QString const& name, QString const& baselines);

/// Compares a picture with its baseline. A picture without a baseline fails as well: after a look at the one
/// that this writes it can become the baseline.
[[nodiscard]] testing::AssertionResult matchesBaseline(QImage const& picture, std::string const& name,
                                                       PictureFolders const& folders,
                                                       PictureTolerance const& tolerance = {});

} // namespace runsieve::test
