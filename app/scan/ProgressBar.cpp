#include "app/scan/ProgressBar.h"

#include <runsieve/core/text/ShownText.h>

#include <algorithm>
#include <iostream>
#include <utility>

#include <unistd.h>

namespace runsieve::app {

namespace {

constexpr std::chrono::milliseconds patience(2000);
constexpr std::chrono::milliseconds interval(100);
constexpr int width = 30;

} // namespace

ProgressBar::ProgressBar(std::string what) : name(std::move(what)), onTerminal(::isatty(STDERR_FILENO) == 1)
{}

ProgressBar::~ProgressBar()
{
  if (isShown) std::cerr << "\r\x1b[K" << std::flush;
}

std::function<bool(double)> ProgressBar::callback()
{
  return [this](double share) {
    show(share);
    return true;
  };
}

void ProgressBar::show(double share)
{
  Clock::time_point const now = Clock::now();
  if (!onTerminal || now - start < patience || now - last < interval) return;
  last = now;
  isShown = true;
  int const full = static_cast<int>(std::clamp(share, 0.0, 1.0) * width);
  std::cerr << "\rreading " << printable(name) << " [" << std::string(static_cast<std::size_t>(full), '#')
            << std::string(static_cast<std::size_t>(width - full), ' ') << "] "
            << static_cast<int>(share * 100) << " %\x1b[K" << std::flush;
}

} // namespace runsieve::app
