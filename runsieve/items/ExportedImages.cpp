#include <runsieve/items/ExportedImages.h>

#include <utility>

namespace runsieve {

namespace {

ExportedImages* current = nullptr;

} // namespace

ExportedImages::ExportedImages(double scale, std::size_t mostLines) : pixelsPerUnit(scale), most(mostLines)
{
  current = this;
}

ExportedImages::~ExportedImages()
{
  current = nullptr;
}

ExportedImages* ExportedImages::present()
{
  return current;
}

std::array<std::uint8_t, 3> ExportedImages::markOf(std::size_t image)
{
  return {1, 254, static_cast<std::uint8_t>(3 + image)};
}

std::size_t ExportedImages::take(Image image)
{
  taken.push_back(std::move(image));
  return taken.size() - 1;
}

} // namespace runsieve
