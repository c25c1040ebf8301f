#include "app/desk/Desk.h"

#include <filesystem>
#include <stdexcept>
#include <string>

#include <dlfcn.h>

namespace runsieve::app {

namespace {

Desk* inUse = nullptr;

// Beside the program, as it is built and as it is installed.
std::string libraryPath()
{
  std::error_code failure; // such as that there is no /proc
  std::filesystem::path const program =
      std::filesystem::read_symlink("/proc/self/exe", failure).parent_path();
  for (char const* folder : {RUNSIEVE_DESK_FOLDER, "../lib"})
    if (auto const path = program / folder / RUNSIEVE_DESK_NAME; std::filesystem::exists(path))
      return path.string();
  return RUNSIEVE_DESK_NAME;
}

// The library is never let go of: Qt and the OpenGL drivers don't survive that.
Desk* loaded()
{
  void* const library = ::dlopen(libraryPath().c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr)
    throw std::runtime_error(
        std::string("pictures, stored plots and the explorer need Qt, VTK and OpenGL: ") + ::dlerror());
  auto const make = reinterpret_cast<Desk* (*)()>(::dlsym(library, "runsieveDesk"));
  if (make == nullptr) throw std::runtime_error(libraryPath() + " is of another version");
  return make();
}

} // namespace

Desk& desk()
{
  if (inUse == nullptr) inUse = loaded();
  return *inUse;
}

void useDesk(Desk& other)
{
  inUse = &other;
}

} // namespace runsieve::app
