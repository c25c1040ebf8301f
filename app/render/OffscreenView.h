#pragma once

#include <vtkContextView.h>
#include <vtkSmartPointer.h>

#include <memory>
#include <string>

class vtkContextScene;

namespace runsieve::app {

/// A scene that is rendered without a display, through a surfaceless EGL context (software rendering without
/// a GPU).
class OffscreenView
{
public:
  /// \param width, height pixels \param samples per pixel; 0: no smoothing
  /// \throw std::runtime_error if there is no EGL or no OpenGL to be had
  OffscreenView(int width, int height, int samples = 8);
  ~OffscreenView();
  OffscreenView(OffscreenView const&) = delete;
  OffscreenView& operator=(OffscreenView const&) = delete;

  [[nodiscard]] vtkContextScene* scene() const;
  [[nodiscard]] vtkContextView* contextView() const { return view; }

  void render();
  /// Writes the rendered scene; the format follows the extension, .png or .pdf, in any case. The file appears
  /// under its name only when it is complete. \return a note for the user; \sa savePicture
  /// \throw std::runtime_error for another extension or a file that cannot be written
  std::string save(std::string const& path);

private:
  class Context;

  std::unique_ptr<Context> context;
  vtkSmartPointer<vtkContextView> view;
};

} // namespace runsieve::app
