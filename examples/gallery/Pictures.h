#pragma once

#include "Arguments.h"

namespace gallery {

/// Writes a picture of each page asked for, without a display, and prints the files' names.
/// \throw std::runtime_error if there is no OpenGL or a file cannot be written
void writePictures(Arguments const& arguments);

} // namespace gallery
