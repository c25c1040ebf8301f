#include "Page.h"

#include <runsieve/plot/PlotContainer.h>

#include <cmath>
#include <vtkContextScene.h>

namespace gallery {

namespace {

void setSpace(PlotContainer& plot, Space const& space, double scale)
{
  auto scaled = [scale](int pixels) { return static_cast<int>(std::lround(scale * pixels)); };
  plot.setLeftMargin(scaled(space.left));
  plot.setBottomMargin(scaled(space.bottom));
  plot.setRightMargin(scaled(space.right));
  plot.setTopMargin(scaled(space.top));
  plot.setHorizontalGutter(scaled(space.gutter));
  plot.setVerticalGutter(scaled(space.gutter));
}

} // namespace

void showPage(Page const& page, PlotContainer& plot, vtkContextScene* scene, double fontScale)
{
  // A style that is set redraws, which needs a scene.
  scene->ClearItems();
  scene->AddItem(plot.getItem());
  setSpace(plot, page.space, fontScale);
  page.fill(plot);
  // Another style is another item.
  scene->ClearItems();
  scene->AddItem(plot.getItem());
}

} // namespace gallery
