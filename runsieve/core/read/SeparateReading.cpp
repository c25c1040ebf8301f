#include <runsieve/core/read/SeparateReading.h>

#include <runsieve/core/read/ScanStream.h>
#include <runsieve/core/scan/ScanError.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <exception>
#include <fstream>
#include <new>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace runsieve {

namespace {

/// What the other process says next.
enum class Word : char
{
  Progress = 'P', ///< a share follows
  Fault = 'F',    ///< the text of a ScanError follows
  Memory = 'M',   ///< there was too little
  Scan = 'S'      ///< the scan follows
};

constexpr rlim_t leastSeconds = 3;
constexpr std::size_t bytesPerSecond = 50000;
constexpr int betweenCallsMs = 200;

/// The pipe ended: the other process did.
class Ended : public std::exception
{};

void writeAll(int pipe, void const* bytes, std::size_t number)
{
  auto const* from = static_cast<char const*>(bytes);
  while (number > 0) {
    ssize_t const written = ::write(pipe, from, number);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) throw Ended();
    from += written;
    number -= static_cast<std::size_t>(written);
  }
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool ownsItsAddresses = false; // sanitizers take terabytes of them
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
constexpr bool ownsItsAddresses = false;
#else
constexpr bool ownsItsAddresses = true;
#endif
#else
constexpr bool ownsItsAddresses = true;
#endif

/// Leaves the process as much memory as a file of so many bytes can need, besides what it has from the host.
void limitMemory(std::size_t bytes)
{
  constexpr rlim_t most = rlim_t(256) << 30;
  constexpr rlim_t least = rlim_t(4) << 30;
  constexpr rlim_t perByte = 8192; // values may be stored in 1 of 2048 bytes, and are there a few times
  std::ifstream sizes("/proc/self/statm");
  rlim_t pages = 0;
  if (!ownsItsAddresses || !(sizes >> pages)) return;
  rlim_t const present = pages * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE));
  rlimit limit = {};
  if (::getrlimit(RLIMIT_AS, &limit) != 0) return;
  rlim_t const wanted = present + least + (bytes < most / perByte ? bytes * perByte : most);
  limit.rlim_cur = std::min(limit.rlim_cur, wanted);
  ::setrlimit(RLIMIT_AS, &limit);
}

/// Lets nothing that goes wrong be seen or heard of outside.
void retreat(std::size_t bytes)
{
  for (int const fault : {SIGSEGV, SIGBUS, SIGABRT, SIGFPE, SIGILL, SIGXCPU, SIGTERM, SIGINT})
    ::signal(fault, SIG_DFL); // not the handlers of a host
  ::signal(SIGPIPE, SIG_IGN);
  sigset_t none;
  ::sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
  rlimit const noCore = {0, 0};
  ::setrlimit(RLIMIT_CORE, &noCore);
  rlim_t const seconds = leastSeconds + bytes / bytesPerSecond;
  rlimit const time = {seconds, seconds + 1}; // at the first the process is told why, at the second killed
  ::setrlimit(RLIMIT_CPU, &time);
  limitMemory(bytes);
  int const nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
  if (nowhere >= 0) {
    ::dup2(nowhere, STDOUT_FILENO);
    ::dup2(nowhere, STDERR_FILENO);
  }
}

/// The life of the other process.
void readAndTell(int pipe, std::string const& file, ReadOptions options,
                 std::function<ScanFile(ReadOptions const&)> const& read) noexcept
{
  auto const put = [pipe](void const* bytes, std::size_t number) { writeAll(pipe, bytes, number); };
  auto const say = [&](Word word) { put(&word, sizeof word); };
  options.progress = [&](double share) {
    say(Word::Progress);
    put(&share, sizeof share);
    return true;
  };
  try {
    try {
      ScanFile scan = read(options);
      say(Word::Scan);
      putScan(std::move(scan), put);
    } catch (ScanError const& error) {
      say(Word::Fault);
      putText(std::string(error.what()).substr(file.size() + 2),
              put); // without the name of the file and ": "
    } catch (std::bad_alloc const&) {
      say(Word::Memory);
    }
  } catch (...) { // nobody listens any more
  }
}

/// The other process as seen from this one, which it does not outlive.
class Reading
{
public:
  Reading(std::string const& file, std::size_t bytes, ReadOptions const& options,
          std::function<ScanFile(ReadOptions const&)> const& read)
      : fileName(file), options(options)
  {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) fail(std::string("cannot be read: ") + std::strerror(errno));
    child = ::fork();
    if (child == 0) {
      ::close(ends[0]);
      retreat(bytes);
      readAndTell(ends[1], file, options, read);
      ::_exit(0);
    }
    int const error = errno;
    ::close(ends[1]);
    pipe = ends[0];
    if (child < 0) {
      ::close(pipe);
      fail(std::string("cannot be read: no process of its own for it: ") + std::strerror(error));
    }
  }
  Reading(Reading const&) = delete;
  Reading& operator=(Reading const&) = delete;
  ~Reading()
  {
    if (child > 0) ::kill(child, SIGKILL); // it ends by itself, unless something was thrown
    (void)end();
    ::close(pipe);
  }

  ScanFile result()
  {
    try {
      for (;;) switch (get<Word>()) {
        case Word::Progress:
          share = get<double>();
          tellShare();
          break;
        case Word::Fault:
          fail(getText(getter()));
        case Word::Memory:
          throw std::bad_alloc();
        case Word::Scan:
          return getScan(getter());
        default:
          failForDamage();
        }
    } catch (Ended const&) {
      int const status = end();
      if (WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL)
        fail("there is not enough memory for its values");
      if (WIFSIGNALED(status) && WTERMSIG(status) == SIGXCPU)
        fail("takes too long to be read; the file is damaged");
      failForDamage();
    } catch (std::length_error const&) {
      failForDamage();
    }
  }

private:
  [[noreturn]] void fail(std::string const& message) const { throw ScanError(fileName, message); }
  [[noreturn]] void failForDamage() const
  {
    fail("is damaged so that it cannot be read; was it copied completely?");
  }

  void tellShare() const
  {
    if (options.progress && !options.progress(share)) throw ReadCancelled();
  }

  /// Waits for the end of the process. Its status; 0 if someone else has asked for it.
  int end()
  {
    int status = 0;
    while (child > 0 && ::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    child = -1;
    return status;
  }

  void getBytes(void* to, std::size_t number)
  {
    auto* place = static_cast<char*>(to);
    while (number > 0) {
      pollfd waiting = {pipe, POLLIN, 0};
      if (::poll(&waiting, 1, betweenCallsMs) == 0) {
        tellShare();
        continue;
      }
      ssize_t const got = ::read(pipe, place, number);
      if (got < 0 && errno == EINTR) continue;
      if (got <= 0) throw Ended();
      place += got;
      number -= static_cast<std::size_t>(got);
    }
  }

  GetBytes getter()
  {
    return [this](void* to, std::size_t number) { getBytes(to, number); };
  }

  template <class Value> Value get()
  {
    Value value;
    getBytes(&value, sizeof value);
    return value;
  }

  std::string const& fileName;
  ReadOptions const& options;
  pid_t child = -1;
  int pipe = -1;
  double share = 0.0;
};

} // namespace

ScanFile readSeparately(std::string const& file, std::size_t bytes, ReadOptions const& options,
                        std::function<ScanFile(ReadOptions const&)> const& read)
{
  return Reading(file, bytes, options, read).result();
}

} // namespace runsieve
