#pragma once

#include "app/explorer/charts/Theme.h"
#include "app/explorer/parameters/ColumnCounts.h"

#include <QImage>
#include <QPoint>
#include <QSize>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace runsieve::app {

/// Two values of each run, as places on two axes.
struct DotPlaces
{
  RunColumns const& across;
  RunColumns const& up;
  double acrossFrom = 0.0; ///< share of the plot at which the columns begin
  double acrossTo = 1.0;
  double upFrom = 0.0;
  double upTo = 1.0;
};

/// A picture of runs as dots, darker where they are many: the passing ones above the others. Runs that are as
/// they were in the picture before take no time; the time of others is linear in their number, however many
/// lie on one another.
class RunDots
{
public:
  /// \param size device pixels \param ratio device pixels per pixel
  RunDots(QSize const& size, double ratio);

  /// \param places the same in each call \param passing 1 per run \param eligible 1 per run that is shown
  [[nodiscard]] QImage image(DotPlaces const& places, std::vector<std::uint8_t> const& passing,
                             std::vector<std::uint8_t> const& eligible, Theme const& theme);

private:
  /// What a run is in the picture.
  enum Role : std::uint8_t
  {
    Absent,
    Other,
    Passing
  };
  /// How many dots cover each pixel.
  struct Layer
  {
    double radius = 0.0; ///< device pixels
    std::vector<QPoint> dot;
    std::vector<std::uint32_t> counts;
  };

  void begin(std::size_t runs, std::size_t passingRuns, std::size_t otherRuns);
  void add(DotPlaces const& places, std::size_t run, Role role, int times);
  [[nodiscard]] QImage mixed(Theme const& theme) const;

  int width;
  int height;
  double ratio;
  Layer others;
  Layer passing;
  std::vector<Role> roles; ///< one per run
};

} // namespace runsieve::app
