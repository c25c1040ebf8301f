#pragma once

#include <string>

class vtkRenderWindow;

namespace runsieve::app {

/// Writes what a window shows as a picture; the format follows the extension, .png or .pdf, in any case. The
/// file appears under its name only when it is complete.
///
/// In a PDF, runs in shades and sets of more than 2,000 runs are images of 144 pixels per inch among lines
/// and text.
/// \return what a user should know about that; empty: nothing
/// \throw std::runtime_error for another extension or a file that cannot be written
std::string savePicture(vtkRenderWindow* window, std::string const& path);

} // namespace runsieve::app
