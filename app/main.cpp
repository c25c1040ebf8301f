#include "app/cli/CommandLine.h"
#include "app/desk/Desk.h"

#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <variant>
#include <vector>

#include <poll.h>
#include <unistd.h>

namespace {

using namespace runsieve::app;

constexpr int workFailed = 1;
constexpr int badUsage = 2;

/// Calls the function of a command.
struct Runner
{
  int operator()(Information const& information) const
  {
    std::cout << information.text;
    return 0;
  }
  int operator()(SimulateArguments const& arguments) const { return runSimulate(arguments); }
  int operator()(InfoArguments const& arguments) const { return runInfo(arguments); }
  int operator()(RankArguments const& arguments) const { return runRank(arguments); }
  int operator()(PairsArguments const& arguments) const { return runPairs(arguments); }
  int operator()(SelectArguments const& arguments) const { return runSelect(arguments); }
  int operator()(RenderArguments const& arguments) const { return runRender(arguments); }
  int operator()(ClusterArguments const& arguments) const { return runCluster(arguments); }
  int operator()(BoxArguments const& arguments) const { return runBox(arguments); }
  int operator()(ConvertArguments const& arguments) const { return runConvert(arguments); }
  int operator()(ExploreArguments const& arguments) const { return desk().explore(arguments); }
};

/// How the work ended.
struct Outcome
{
  int status = 0;
  std::string complaint; ///< empty if all went well
};

Outcome run(int argc, char** argv)
{
  try {
    return {std::visit(Runner(), parseCommandLine({argv + 1, argv + argc})), {}};
  } catch (UsageError const& error) {
    return {badUsage, error.what()};
  } catch (std::bad_alloc const&) {
    return {workFailed, "not enough memory"};
  } catch (std::exception const& error) {
    return {workFailed, error.what()};
  }
}

bool isOutputWritten()
{
  std::cout.flush();
  return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

// As with `runsieve rank scan.csv ... | head`: whoever reads has what he wanted.
bool isReaderGone()
{
  pollfd output = {STDOUT_FILENO, POLLOUT, 0};
  return ::poll(&output, 1, 0) == 1 && (output.revents & POLLERR) != 0;
}

} // namespace

int main(int argc, char** argv)
{
  std::signal(SIGPIPE, SIG_IGN); // a closed pipe is a failed write, after which files are still cleaned up
  Outcome outcome = run(argc, argv);
  if (!isOutputWritten()) {
    if (isReaderGone()) return 0;
    outcome = {workFailed, "standard output cannot be written"};
  }
  if (!outcome.complaint.empty()) std::cerr << "runsieve: " << outcome.complaint << '\n';
  return outcome.status;
}
