#include "app/view/QuietLibrary.h"

#include <iostream>

namespace runsieve::app {

QuietLibrary::QuietLibrary() : former(std::cout.rdbuf(nullptr)) {}

QuietLibrary::~QuietLibrary()
{
  std::cout.rdbuf(former); // clears the state that writing without a buffer has set
}

} // namespace runsieve::app
