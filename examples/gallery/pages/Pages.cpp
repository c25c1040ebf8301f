#include "Pages.h"

namespace gallery {

namespace {

std::vector<Page> collectPages()
{
  std::vector<Page> all = {scatterPage(),     runsOverTimePage(),        errorBarsPage(),
                           multiPlotPage(),   selectionViewPage(),       scatterMatrixPage(),
                           scatter3DPage(),   parallelCoordinatesPage(), sobolBarsPage(),
                           sobolStackedPage()};
  for (Page const& page : residualPages()) all.push_back(page);
  all.push_back(fitCoursePage());
  for (Page const& page : distributionPages()) all.push_back(page);
  all.push_back(timeCoursesPage());
  return all;
}

} // namespace

std::vector<Page> const& allPages()
{
  static const std::vector<Page> pages = collectPages();
  return pages;
}

Page const* findPage(std::string const& numberOrName)
{
  std::vector<Page> const& pages = allPages();
  for (std::size_t i = 0; i < pages.size(); ++i)
    if (numberOrName == pages[i].name || numberOrName == std::to_string(i + 1)) return &pages[i];
  return nullptr;
}

} // namespace gallery
