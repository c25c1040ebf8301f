#pragma once

#include "pages/Page.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace gallery {

struct UsageError : std::runtime_error
{
  using std::runtime_error::runtime_error;
};

/// What the words after the program's name ask for.
struct Arguments
{
  bool help = false;
  bool list = false;
  Page const* page = nullptr; ///< the only page to draw, or the first to show; null: all, from the first
  std::string pictures;       ///< folder for pictures; empty: open a window
  int width = 800;
  int height = 600;
  double fontScale = 1.0;
};

extern const char* const helpText;

/// \throw UsageError with one line that says what is wrong
Arguments parseArguments(std::vector<std::string> const& words);

} // namespace gallery
