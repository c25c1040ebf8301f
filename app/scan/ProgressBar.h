#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace runsieve::app {

/// Shows on a terminal how far work has come that takes longer than two seconds, and takes itself away at the
/// end. Nothing is written where standard error is no terminal.
class ProgressBar
{
public:
  explicit ProgressBar(std::string what);
  ProgressBar(ProgressBar const&) = delete;
  ProgressBar& operator=(ProgressBar const&) = delete;
  ~ProgressBar();

  /// Takes the share that is done; valid as long as this object.
  [[nodiscard]] std::function<bool(double)> callback();

private:
  void show(double share);

  using Clock = std::chrono::steady_clock;
  std::string name;
  bool onTerminal;
  bool isShown = false;
  Clock::time_point start = Clock::now();
  Clock::time_point last = start;
};

} // namespace runsieve::app
