#pragma once

#include <runsieve/items/MovedImages.h>

#include <vtkSmartPointer.h>

#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>

class vtkObject;
class vtkRenderWindow;
class vtkRenderWindowInteractor;

namespace runsieve {

/// Which frames of a widget may show moved images of runs, and when runs are counted.
///
/// From a step of a hand that pans, zooms or resizes on, frames that the hand causes may. When no step has
/// followed for a tenth of a second, runs are counted between events, with a frame now and then, and the
/// last frame is exact. So is every frame that somebody else asks for.
class HandFrames
{
public:
  /// \param render draws a frame
  HandFrames(vtkRenderWindow* window, vtkRenderWindowInteractor* interactor, std::function<void()> render);
  ~HandFrames();
  HandFrames(HandFrames const&) = delete;
  HandFrames& operator=(HandFrames const&) = delete;

  /// The hand has made a step that may move axes, or is about to.
  void move();
  /// The hand moves axes no more.
  void rest();
  /// From the next frame on all are exact.
  void end();

  /// Whether the last frame showed moved images.
  [[nodiscard]] bool areMoved() const { return images.areShown(); }

  /// For the time of a block in which frames are drawn that the hand causes.
  class Allowed
  {
  public:
    explicit Allowed(HandFrames& frames) : frames(frames) { frames.allow(); }
    ~Allowed() { frames.forbid(); }
    Allowed(Allowed const&) = delete;
    Allowed& operator=(Allowed const&) = delete;

  private:
    HandFrames& frames;
  };

private:
  enum class State
  {
    exact,
    moving,
    counting
  };

  void allow();
  void forbid();
  void count();
  void beginTimerEvent(vtkObject*, unsigned long, void*) { allow(); }
  void endTimerEvent(vtkObject*, unsigned long, void*) { forbid(); }

  std::function<void()> render;
  MovedImages images;
  std::unique_ptr<MovedImages::Frame> frame; ///< while frames may show moved images
  State state = State::exact;
  QTimer restTimer;
  QTimer countTimer;
  std::chrono::steady_clock::time_point nextFrame; ///< while counting
  vtkSmartPointer<vtkRenderWindowInteractor> interactor;
  unsigned long observers[2] = {0, 0};
};

} // namespace runsieve
