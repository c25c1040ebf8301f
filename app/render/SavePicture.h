#pragma once

#include <string>

class vtkRenderWindow;

namespace runsieve::app {

/// Writes what a window shows as a picture; the format follows the extension, .png or .pdf, in any case. The
/// file appears under its name only when it is complete. \throw std::runtime_error for another extension or a
/// file that cannot be written
void savePicture(vtkRenderWindow* window, std::string const& path);

} // namespace runsieve::app
