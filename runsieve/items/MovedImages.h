#pragma once

#include <runsieve/runsieve_export.h>

#include <chrono>
#include <vector>

class vtkContext2D;
class vtkRenderWindow;

namespace runsieve {

class MovableImage;

/// Lets frames of a window show images of many lines as they were counted last, moved and stretched with
/// their axes, in place of counting the lines anew for each step of a hand that pans or zooms.
///
/// Only frames that are drawn while a Frame lives do so. All others, and every export, show lines counted
/// for their own axes. A VtkPlotWidget has one; hosts with other windows may have one for each. In the GUI
/// thread.
class RUNSIEVE_EXPORT MovedImages
{
public:
  enum class Hand
  {
    moves, ///< images are moved only
    rests ///< they are counted meanwhile: what has been counted is shown where the moved image does not reach
  };

  /// \param shownIn the window; used as a name only
  explicit MovedImages(vtkRenderWindow* shownIn) : window(shownIn) {}
  ~MovedImages();
  MovedImages(MovedImages const&) = delete;
  MovedImages& operator=(MovedImages const&) = delete;

  /// What is drawn in the window while an object of this class lives may show moved images. One at a time.
  class RUNSIEVE_EXPORT Frame
  {
  public:
    Frame(MovedImages& images, Hand hand);
    ~Frame();
    Frame(Frame const&) = delete;
    Frame& operator=(Frame const&) = delete;
  };

  /// Whether the last frame showed moved images: another one has to follow when the hand rests.
  [[nodiscard]] bool areShown() const { return !waiting.empty(); }
  /// Counts lines of images that were moved, until a time has passed, and a few milliseconds longer.
  /// \return whether all are counted; the next frame without a Frame shows them
  bool count(std::chrono::milliseconds time);

  /// For images: the object whose Frame the painter draws now; null if images must be exact.
  static MovedImages* of(vtkContext2D* painter);
  [[nodiscard]] Hand hand() const { return present; }

private:
  friend MovableImage;

  vtkRenderWindow* window;
  Hand present = Hand::moves;
  std::vector<MovableImage*> waiting; ///< that the window shows moved; they take themselves out
};

} // namespace runsieve
