#pragma once

#include "app/explorer/charts/ChartFrame.h"
#include "app/explorer/charts/RunBands.h"
#include "app/explorer/document/Background.h"

#include <QObject>

#include <memory>

class QPainter;

namespace runsieve::app {

/// How bands are drawn.
struct BandsLook
{
  double middle = 1.6;  ///< width of the line in the middle
  double opacity = 1.0; ///< of all, of what they have
  double finest = 0.0;  ///< points of a line that are closer are left out
};

/// Draws some runs as a wide area, a narrow one and a line, outlying runs as thin dashed lines. Cut off at
/// the plot by itself, since not every format of pictures can.
void paintBands(QPainter& painter, RunBands const& bands, std::vector<double> const& times,
                ChartFrame const& frame, QColor const& color, BandsLook const& look);

/// Bands of groups of runs, computed beside the interface; until they are those of the former groups are
/// shown.
class BandsPicture : public QObject
{
  Q_OBJECT

public:
  /// Some runs in a colour.
  struct Group
  {
    std::vector<std::uint8_t> mask; ///< 1 per run that belongs to it, else 0
    QColor color;
    double opacity = 1.0;
  };

  explicit BandsPicture(QObject* parent = nullptr);

  /// Asks for the bands of groups, the later ones above. Nothing happens if they are those asked for last.
  void request(std::shared_ptr<Scan const> const& scan, std::size_t output, BandsKind kind,
               std::vector<Group> groups);
  [[nodiscard]] bool isSettled() const { return !work.isBusy(); }
  void paint(QPainter& painter, ChartFrame const& frame, Theme const& theme) const;
  /// Number of outlying runs of a group of those that are shown; 0 of groups that are not yet.
  [[nodiscard]] std::size_t outlyingOf(std::size_t group) const;

Q_SIGNALS:
  void changed();

private:
  struct Shown
  {
    std::shared_ptr<Scan const> scan;
    std::size_t output = 0;
    BandsKind kind = BandsKind::Quantiles;
    std::vector<Group> groups;
    std::vector<RunBands> bands; ///< one per group
  };

  Shown wanted; ///< without bands
  Shown shown;
  Background work;
};

} // namespace runsieve::app
