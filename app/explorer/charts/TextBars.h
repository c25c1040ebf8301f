#pragma once

#include "app/explorer/charts/Theme.h"

#include <runsieve/core/scan/Scan.h>

#include <QPointF>
#include <QRectF>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <vector>

class QPainter;

namespace runsieve::app {

/// The runs with each text of a text parameter.
struct TextGroups
{
  std::vector<std::size_t> passing; ///< one per text
  std::vector<std::size_t> others;
  std::size_t allPassing = 0; ///< with a value
  std::size_t allOthers = 0;
};

/// \param passing 1 per run that passes \param eligible 1 per run that takes part
[[nodiscard]] TextGroups textGroupsOf(ScanParameter const& parameter,
                                      std::vector<std::uint8_t> const& passing,
                                      std::vector<std::uint8_t> const& eligible);

/// A text of a parameter and its shares in both groups.
struct TextRow
{
  QString text;
  double passing = 0.0; ///< of the passing runs that have a value
  double others = 0.0;
  bool isRest = false;            ///< several texts together
  std::vector<std::size_t> texts; ///< positions in the parameter, ascending

  /// How much of the row is among texts, which are ascending.
  enum class Share
  {
    None,
    Some, ///< of the rest
    All
  };
  [[nodiscard]] Share shareIn(std::vector<std::size_t> const& wanted) const;
};

/// As many rows as there is room for: texts in the order of the scan; if they are too many, the one whose
/// shares differ most and the most frequent ones, and one row for all the rest. \param most at least 2
[[nodiscard]] std::vector<TextRow> textRows(ScanParameter const& parameter, TextGroups const& groups,
                                            std::size_t most);

/// "mutant: 12 % of the passing runs, 20 % of the others"
[[nodiscard]] QString rowWords(TextRow const& row, bool sieves);

/// Rows of texts, and where they stand in a chart: one below the other.
class TextBarRows
{
public:
  TextBarRows() = default;
  TextBarRows(QRectF const& area, ScanParameter const& parameter, TextGroups const& groups,
              Theme const& theme);

  /// All texts of a parameter without their shares, the first at the bottom, over the whole height.
  [[nodiscard]] static TextBarRows upwards(QRectF const& area, ScanParameter const& parameter);

  [[nodiscard]] std::size_t size() const { return rows.size(); }
  [[nodiscard]] TextRow const& at(std::size_t row) const { return rows[row]; }
  /// The row with a text.
  [[nodiscard]] std::size_t rowOf(std::size_t text) const;
  [[nodiscard]] QRectF place(std::size_t row) const;
  /// All of them.
  [[nodiscard]] QRectF place() const;
  /// The row under a place, or above or below it.
  [[nodiscard]] std::size_t nearest(QPointF const& at) const;

private:
  QRectF area;
  double slot = 1.0; ///< height of a row
  std::vector<TextRow> rows;
};

/// The rows as pairs of bars, each with its text. \param marked the text whose shares differ most; empty:
/// none \param free room that is left at the right ends
void paintTextBars(QPainter& painter, TextBarRows const& rows, bool hasPassing, QString const& marked,
                   double free, Theme const& theme);

} // namespace runsieve::app
