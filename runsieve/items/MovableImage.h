#pragma once

#include <chrono>

namespace runsieve {

class MovedImages;

/// An image that a frame may show moved, and that is counted when the hand rests. \sa MovedImages
class MovableImage
{
public:
  using Clock = std::chrono::steady_clock;

  MovableImage() = default;
  virtual ~MovableImage();
  MovableImage(MovableImage const&) = delete;
  MovableImage& operator=(MovableImage const&) = delete;

  /// Counts until some time, at least a little. \return whether nothing is left to be done before a frame
  virtual bool countOn(Clock::time_point end) = 0;

protected:
  /// To be called when it was shown moved.
  void wait(MovedImages& images);
  /// To be called when it was shown as it is.
  void stopWaiting();

private:
  friend MovedImages;

  MovedImages* waitsFor = nullptr;
};

} // namespace runsieve
