#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

#include <array>
#include <cstddef>

namespace runsieve::app {

/// Colours and sizes of charts. Lengths are in device-independent pixels: a painter's scale makes them fit a
/// screen or a page.
struct Theme
{
  QColor paper;               ///< behind everything
  QColor ink;                 ///< texts and axes
  QColor faint;               ///< small marks, grids, texts that matter less
  QColor all;                 ///< all runs
  QColor passing;             ///< passing runs
  QColor gate;                ///< gates
  QColor chosen;              ///< the selected gate
  QColor hover;               ///< the run under the pointer
  std::array<QColor, 8> sets; ///< sets and clusters; pinned runs have those that are left
  bool dark = false;

  QFont font;
  double line = 1.0;  ///< width of axes
  double curve = 1.6; ///< width of curves
  double tick = 5.0;  ///< length of marks
  double gap = 4.0;   ///< between marks, numbers and texts

  /// For a screen whose widgets have a palette: light or dark as they are.
  [[nodiscard]] static Theme ofPalette(QPalette const& palette, QFont const& font);
  /// Dark ink on white, for pages.
  [[nodiscard]] static Theme ofPaper(QFont const& font);
};

/// A text in the language of charts: cut in its middle to a width.
[[nodiscard]] QString elided(QString const& text, QFont const& font, double width);

} // namespace runsieve::app
