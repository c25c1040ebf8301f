#pragma once

#include <streambuf>

namespace runsieve::app {

/// While it lives, what the library prints to standard output is dropped: a command's own output must stay
/// readable for programs.
class QuietLibrary
{
public:
  QuietLibrary();
  ~QuietLibrary();
  QuietLibrary(QuietLibrary const&) = delete;
  QuietLibrary& operator=(QuietLibrary const&) = delete;

private:
  std::streambuf* former;
};

} // namespace runsieve::app
