#include <runsieve/core/files/SafeFile.h>

#include <runsieve/core/scan/ScanError.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace runsieve {

namespace {

constexpr mode_t readableAndWritable = 0666; // less what the user's mask takes away

std::string openFile(int descriptor)
{
  return "/proc/self/fd/" + std::to_string(descriptor);
}

// The file that a path stands for where it leads to none yet: that to which links point.
std::string behindLinks(std::filesystem::path path)
{
  constexpr int mostLinks = 40;
  for (int i = 0; i < mostLinks; ++i) {
    std::error_code none;
    std::filesystem::path const link = std::filesystem::read_symlink(path, none);
    if (none) break;
    path = path.parent_path() / link;
  }
  return path.string();
}

} // namespace

SafeFile::SafeFile(std::string const& file) : path(file), target(file)
{
  std::error_code error;
  auto const status = std::filesystem::status(path, error);
  if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
    openDirectly();
    return;
  }
  replaces = std::filesystem::exists(status);
  target = replaces ? std::filesystem::canonical(path).string() : behindLinks(path);
  openAside();
}

SafeFile::~SafeFile()
{
  if (descriptor >= 0) ::close(descriptor);
  if (!aside.empty()) ::unlink(aside.c_str());
}

void SafeFile::openDirectly()
{
  direct = true;
  descriptor = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
  if (descriptor < 0) fail();
}

void SafeFile::openAside()
{
  struct stat former = {};
  mode_t const mode =
      replaces && ::stat(target.c_str(), &former) == 0 ? former.st_mode & 07777 : readableAndWritable;
  if (replaces && ::access(target.c_str(), W_OK) != 0) fail();
  openNameless(mode);
  if (descriptor < 0)
    aside = newName([&](char const* name) {
      descriptor = ::open(name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
      return descriptor >= 0;
    });
  if (replaces) ::fchmod(descriptor, mode);
}

// A path that ends in '/' names a folder, which the other way finds out. Without /proc the file could not be
// given a name later.
void SafeFile::openNameless(unsigned mode)
{
  std::filesystem::path const file(target);
  if (file.filename().empty()) return;
  std::filesystem::path const folder = file.has_parent_path() ? file.parent_path() : ".";
  descriptor = ::open(folder.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, mode);
  if (descriptor < 0 || ::access(openFile(descriptor).c_str(), F_OK) == 0) return;
  ::close(descriptor);
  descriptor = -1;
}

// The first name beside the target that is free. \param make makes the file, or fails with EEXIST
template <class Make> std::string SafeFile::newName(Make const& make) const
{
  for (int i = 0;; ++i) {
    std::string const name = target + ".part" + std::to_string(::getpid()) + '-' + std::to_string(i);
    if (make(name.c_str())) return name;
    if (errno != EEXIST) fail();
  }
}

// A file without a name cannot be renamed.
void SafeFile::giveName()
{
  aside = newName([&](char const* name) {
    return ::linkat(AT_FDCWD, openFile(descriptor).c_str(), AT_FDCWD, name, AT_SYMLINK_FOLLOW) == 0;
  });
}

void SafeFile::write(std::string_view text)
{
  while (!text.empty()) {
    ssize_t const written = ::write(descriptor, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) fail();
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

void SafeFile::commit()
{
  // Before a former file goes, the new one must be on the disk and not only in memory.
  if (replaces && ::fsync(descriptor) != 0) fail();
  if (!direct && aside.empty()) giveName();
  int const closed = ::close(descriptor);
  descriptor = -1;
  if (closed != 0) fail();
  if (direct) return;
  if (::rename(aside.c_str(), target.c_str()) != 0) fail();
  aside.clear();
}

void SafeFile::fail() const
{
  throw ScanError(path, std::string("cannot be written: ") + std::strerror(errno));
}

} // namespace runsieve
