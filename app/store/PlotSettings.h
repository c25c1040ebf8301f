#pragma once

#include "app/store/StoredPlot.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace runsieve::app {

/// The settings of a stored plot, as its first line tells them.
struct PlotSettings
{
  ViewOptions view;
  CoordinateWindow window;
  std::uint64_t stride = 0;   ///< rows per run
  std::uint64_t bytes = 0;    ///< length of the dump
  std::uint32_t checksum = 0; ///< CRC-32, as in ZIP files, of this line without it and of the dump
  std::vector<Gate> gates;
  GateJoin join = GateJoin::All;
  ScanNotes notes;
};

/// One line of JSON without a line end.
[[nodiscard]] std::string toJson(PlotSettings const& settings);

/// CRC-32 of a line of settings, but for its checksum, and of the dump behind it.
[[nodiscard]] std::uint32_t checksumOf(std::string const& line, char const* dump, std::size_t bytes);

/// Unknown members are passed over, missing ones take their defaults. \throw std::runtime_error for text that
/// is no JSON, another format, a newer version, or a value of a wrong type
[[nodiscard]] PlotSettings fromJson(std::string const& line);

} // namespace runsieve::app
