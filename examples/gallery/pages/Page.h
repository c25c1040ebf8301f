#pragma once

#include <string>

class PlotContainer;
class vtkContextScene;

namespace gallery {

/// Pixels around and between charts, at font scale 1.
struct Space
{
  int left = 80;
  int bottom = 48;
  int right = 24;
  int top = 36;
  int gutter = 28;
};

/// One plot of the gallery.
struct Page
{
  std::string name;  ///< of files and on the command line: lower case, digits, underscores
  std::string title; ///< for readers
  /// Fills a plot whose item already stands in a scene. It may leave another item in the plot.
  void (*fill)(PlotContainer& plot);
  Space space = {};
};

/// Fills a new plot with a page and puts its chart into a scene, as the scene's only item.
/// \param fontScale how much larger than usual texts are drawn; margins grow along
void showPage(Page const& page, PlotContainer& plot, vtkContextScene* scene, double fontScale);

} // namespace gallery
