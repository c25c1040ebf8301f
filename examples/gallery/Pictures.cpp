#include "Pictures.h"

#include "app/render/OffscreenView.h"
#include "pages/Pages.h"

#include <runsieve/plot/PlotContainer.h>

#include <vtkRenderWindow.h>

#include <filesystem>
#include <iostream>

namespace gallery {

namespace {

constexpr int dotsPerInch = 72; ///< at which a point of a text is a pixel

void writePicture(Page const& page, Arguments const& arguments, std::string const& file)
{
  runsieve::app::OffscreenView view(arguments.width, arguments.height);
  view.contextView()->GetRenderWindow()->SetDPI(static_cast<int>(dotsPerInch * arguments.fontScale));
  PlotContainer plot(nullptr);
  showPage(page, plot, view.scene(), arguments.fontScale);
  view.save(file);
  // Charts let go of their textures while the view's context is there.
  plot.setScene(nullptr);
}

} // namespace

void writePictures(Arguments const& arguments)
{
  std::filesystem::create_directories(arguments.pictures);
  for (Page const& page : allPages()) {
    if (arguments.page && arguments.page != &page) continue;
    const std::string file = arguments.pictures + "/" + page.name + ".png";
    writePicture(page, arguments, file);
    std::cout << file << '\n';
  }
}

} // namespace gallery
