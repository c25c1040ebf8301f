#include <runsieve/core/files/SafeFile.h>

#include "support/TempFile.h"
#include <runsieve/core/scan/ScanError.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Told of each file that goes to the disk, before it does.
std::function<void(int descriptor)> atSync;

/// Whether files without a name can be given one later, through /proc.
bool hasProc = true;

} // namespace

// Takes the place of the function of the C library for all that is linked into this program.
extern "C" int fsync(int descriptor)
{
  if (atSync) atSync(descriptor);
  return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

extern "C" int access(char const* path, int mode) noexcept
{
  if (!hasProc && std::string(path).rfind("/proc/", 0) == 0) {
    errno = ENOENT;
    return -1;
  }
  return static_cast<int>(::syscall(SYS_faccessat, AT_FDCWD, path, mode));
}

namespace runsieve::test {
namespace {

using testing::HasSubstr;

/// What the user's mask takes away from the permissions of new files, for a while.
class FileMask
{
public:
  explicit FileMask(mode_t mask) : former(::umask(mask)) {}
  FileMask(FileMask const&) = delete;
  FileMask& operator=(FileMask const&) = delete;
  ~FileMask() { ::umask(former); }

private:
  mode_t former;
};

struct SafeFileTest : testing::Test
{
  TempFolder folder;
  std::string path = folder.file("plot.rsd");

  ~SafeFileTest() override
  {
    atSync = nullptr;
    hasProc = true;
  }

  static void save(std::string const& file, std::string const& text)
  {
    SafeFile safe(file);
    safe.write(text);
    safe.commit();
  }

  static struct stat statusOf(std::string const& file)
  {
    struct stat status = {};
    EXPECT_EQ(::stat(file.c_str(), &status), 0) << file;
    return status;
  }

  static unsigned permissionsOf(std::string const& file) { return statusOf(file).st_mode & 07777U; }

  void makeFormer(mode_t permissions)
  {
    (void)folder.write("former", "plot.rsd");
    ASSERT_EQ(::chmod(path.c_str(), permissions), 0);
  }
};

TEST_F(SafeFileTest, AFormerFileKeepsPermissionsThatTheMaskWouldTakeAway)
{
  const FileMask mask(077);
  for (unsigned permissions : {0666U, 0640U, 0775U, 0600U}) {
    makeFormer(permissions);
    save(path, "new");
    EXPECT_EQ(permissionsOf(path), permissions) << std::oct << permissions;
    EXPECT_EQ(TempFolder::contentOf(path), "new");
  }
}

TEST_F(SafeFileTest, AFormerFileKeepsPermissionsThatAreFewerThanThoseOfNewOnes)
{
  const FileMask mask(0);
  makeFormer(0600);
  unsigned aside = 0777;
  atSync = [&aside](int descriptor) {
    struct stat status = {};
    ASSERT_EQ(::fstat(descriptor, &status), 0);
    aside = status.st_mode & 07777U;
  };
  save(path, "secret");
  EXPECT_EQ(aside, 0600U) << "nor can others read it before it has its name";
  EXPECT_EQ(permissionsOf(path), 0600U);
}

TEST_F(SafeFileTest, ANewFileHasThePermissionsThatTheMaskLeaves)
{
  for (unsigned taken : {022U, 077U, 027U}) {
    const FileMask mask(taken);
    const std::string file = folder.file("new" + std::to_string(taken));
    save(file, "new");
    EXPECT_EQ(permissionsOf(file), 0666U & ~taken) << std::oct << taken;
  }
}

TEST_F(SafeFileTest, TheWholeNewFileIsOnTheDiskBeforeItTakesThePlaceOfTheFormer)
{
  makeFormer(0644);
  int syncs = 0;
  ino_t synced = 0;
  atSync = [&](int descriptor) {
    ++syncs;
    struct stat status = {};
    ASSERT_EQ(::fstat(descriptor, &status), 0);
    synced = status.st_ino;
    EXPECT_EQ(status.st_size, 300000) << "all of it is written";
    EXPECT_EQ(TempFolder::contentOf(path), "former") << "the former file is still in its place";
  };
  SafeFile safe(path);
  for (int part = 0; part < 3; ++part) safe.write(std::string(100000, static_cast<char>('a' + part)));
  EXPECT_EQ(syncs, 0);
  safe.commit();
  EXPECT_EQ(syncs, 1);
  EXPECT_EQ(statusOf(path).st_ino, synced) << "it is the new file";
  EXPECT_EQ(statusOf(path).st_size, 300000);
}

TEST_F(SafeFileTest, WithoutACommitTheFormerFileStaysAndNothingElse)
{
  makeFormer(0644);
  {
    SafeFile safe(path);
    safe.write("new");
  }
  EXPECT_EQ(TempFolder::contentOf(path), "former");
  EXPECT_EQ(folder.fileCount(), 1u);
}

TEST_F(SafeFileTest, WithoutFilesThatHaveNoNameAFileStandsAsideUntilItIsWhole)
{
  hasProc = false;
  save(path, "former");
  EXPECT_EQ(TempFolder::contentOf(path), "former");
  {
    SafeFile safe(path);
    safe.write("new");
    EXPECT_EQ(folder.fileCount(), 2u);
  }
  EXPECT_EQ(TempFolder::contentOf(path), "former");
  EXPECT_EQ(folder.fileCount(), 1u);
  save(path, "new");
  EXPECT_EQ(TempFolder::contentOf(path), "new");
  EXPECT_EQ(folder.fileCount(), 1u);
}

TEST_F(SafeFileTest, AProcessThatIsKilledLeavesNothing)
{
  int const nameless = ::open(folder.file("").c_str(), O_WRONLY | O_TMPFILE, 0600);
  if (nameless < 0) GTEST_SKIP() << "this file system knows no files without a name";
  ::close(nameless);
  makeFormer(0644);
  pid_t const child = ::fork();
  if (child == 0) {
    SafeFile safe(path);
    safe.write("new");
    ::raise(SIGKILL);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFSIGNALED(status));
  EXPECT_EQ(TempFolder::contentOf(path), "former");
  EXPECT_EQ(folder.fileCount(), 1u);
}

TEST_F(SafeFileTest, LeftoversOfAProgramThatDiedAreNoObstacle)
{
  const std::string pid = std::to_string(::getpid());
  for (int i = 0; i < 3; ++i) (void)folder.write("leftover", "plot.rsd.part" + pid + "-" + std::to_string(i));
  save(path, "new");
  EXPECT_EQ(TempFolder::contentOf(path), "new");
  EXPECT_EQ(folder.fileCount(), 4u);
  EXPECT_EQ(TempFolder::contentOf(path + ".part" + pid + "-2"), "leftover");
}

TEST_F(SafeFileTest, ThroughALinkTheFileBehindItIsReplacedInItsOwnFolder)
{
  const TempFolder other;
  makeFormer(0644);
  const std::string link = other.file("link.rsd");
  std::filesystem::create_symlink(path, link);
  SafeFile safe(link);
  safe.write("new");
  EXPECT_EQ(other.fileCount(), 1u);
  safe.commit();
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_EQ(TempFolder::contentOf(path), "new");
  EXPECT_EQ(folder.fileCount(), 1u);
}

TEST_F(SafeFileTest, ALinkToAFileThatIsNotThereYetStaysALink)
{
  TempFolder place;
  std::filesystem::create_directory(place.file("behind"));
  std::filesystem::create_symlink("behind/scan.csv", place.file("second"));
  std::filesystem::create_symlink(place.file("second"), place.file("first"));
  SafeFile file(place.file("first"));
  file.write("new");
  file.commit();
  EXPECT_TRUE(std::filesystem::is_symlink(place.file("first")));
  EXPECT_EQ(TempFolder::contentOf(place.file("behind/scan.csv")), "new");
}

TEST_F(SafeFileTest, AFolderCannotBeWritten)
{
  try {
    const SafeFile safe(folder.file(""));
    FAIL() << "opened";
  } catch (ScanError const& error) {
    EXPECT_THAT(error.what(), HasSubstr("cannot be written: Is a directory"));
  }
}

} // namespace
} // namespace runsieve::test
