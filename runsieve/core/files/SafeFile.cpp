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
  if (replaces) target = std::filesystem::canonical(path).string();
  openAside();
}

SafeFile::~SafeFile()
{
  if (descriptor >= 0) ::close(descriptor);
  if (!aside.empty()) ::unlink(aside.c_str());
}

void SafeFile::openDirectly()
{
  descriptor = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
  if (descriptor < 0) fail();
}

void SafeFile::openAside()
{
  struct stat former = {};
  mode_t const mode =
      replaces && ::stat(target.c_str(), &former) == 0 ? former.st_mode & 07777 : readableAndWritable;
  if (replaces && ::access(target.c_str(), W_OK) != 0) fail();
  for (int i = 0; descriptor < 0; ++i) {
    std::string const name = target + ".part" + std::to_string(::getpid()) + '-' + std::to_string(i);
    descriptor = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (descriptor >= 0)
      aside = name;
    else if (errno != EEXIST)
      fail();
  }
  if (replaces) ::fchmod(descriptor, mode);
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
  int const closed = ::close(descriptor);
  descriptor = -1;
  if (closed != 0) fail();
  if (aside.empty()) return;
  if (::rename(aside.c_str(), target.c_str()) != 0) fail();
  aside.clear();
}

void SafeFile::fail() const
{
  throw ScanError(path, std::string("cannot be written: ") + std::strerror(errno));
}

} // namespace runsieve
