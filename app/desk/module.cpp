#include "app/desk/QtDesk.h"

/// What the program looks for in the library.
extern "C" __attribute__((visibility("default"))) runsieve::app::Desk* runsieveDesk()
{
  static runsieve::app::QtDesk desk;
  return &desk;
}
