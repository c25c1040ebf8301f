#include "app/scan/OpenScan.h"

#include "app/desk/Desk.h"
#include "app/scan/ProgressBar.h"

#include <runsieve/core/read/ReadScan.h>

#include <fstream>
#include <string_view>

namespace runsieve::app {

bool isStoredPlot(std::string const& path)
{
  constexpr std::string_view magic = storedPlotMagic;
  std::ifstream file(path, std::ios::binary);
  std::string start(magic.size(), '\0');
  file.read(start.data(), static_cast<std::streamsize>(start.size()));
  return file && start == magic;
}

OpenedScan openScan(std::string const& path, ReadOptions const& options)
{
  if (isStoredPlot(path)) return desk().readPlotScan(path);
  ProgressBar bar(path);
  ReadOptions watched(options);
  if (!watched.progress) watched.progress = bar.callback();
  ScanFile file = readScan(path, watched);
  return {std::move(file.scan), std::move(file.report), std::nullopt, std::nullopt, {}, GateJoin::All, 0};
}

} // namespace runsieve::app
