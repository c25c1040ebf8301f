#include <runsieve/items/MovedImages.h>

#include <runsieve/items/MovableImage.h>
#include <runsieve/items/PixelPainter.h>

#include <vtkOpenGLContextDevice2D.h>
#include <vtkOpenGLRenderWindow.h>

#include <algorithm>

namespace runsieve {

namespace {

MovedImages* drawn = nullptr; ///< whose frame is drawn

} // namespace

MovedImages::Frame::Frame(MovedImages& images, Hand hand)
{
  images.present = hand;
  drawn = &images;
}

MovedImages::Frame::~Frame()
{
  drawn = nullptr;
}

MovedImages::~MovedImages()
{
  if (drawn == this) drawn = nullptr;
  for (MovableImage* image : waiting) image->waitsFor = nullptr;
}

bool MovedImages::count(std::chrono::milliseconds time)
{
  const auto end = MovableImage::Clock::now() + time;
  for (MovableImage* image : waiting)
    if (!image->countOn(end)) return false;
  return true;
}

MovedImages* MovedImages::of(vtkContext2D* painter)
{
  if (!drawn) return nullptr;
  vtkOpenGLContextDevice2D* device = pixelDevice(painter);
  return device && device->GetRenderWindow() == drawn->window ? drawn : nullptr;
}

MovableImage::~MovableImage()
{
  stopWaiting();
}

void MovableImage::wait(MovedImages& images)
{
  if (waitsFor == &images) return;
  stopWaiting();
  images.waiting.push_back(this);
  waitsFor = &images;
}

void MovableImage::stopWaiting()
{
  if (!waitsFor) return;
  std::vector<MovableImage*>& others = waitsFor->waiting;
  others.erase(std::find(others.begin(), others.end(), this));
  waitsFor = nullptr;
}

} // namespace runsieve
