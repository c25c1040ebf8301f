#include <runsieve/core/read/ParametersFile.h>

#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

namespace runsieve {

namespace {

namespace fs = std::filesystem;

bool isThere(fs::path const& path)
{
  std::error_code failure;
  return fs::exists(path, failure);
}

/// From the root, without "..", and without a separator at its end.
fs::path rooted(fs::path const& path)
{
  std::error_code failure;
  fs::path const whole = fs::absolute(path, failure).lexically_normal();
  return whole.has_filename() ? whole : whole.parent_path();
}

/// Where a table may stand that goes with a scan: in its folder, and beside it.
std::vector<fs::path> placesOf(std::string const& scan)
{
  std::error_code failure;
  fs::path const whole = rooted(scan);
  std::vector<fs::path> places;
  if (fs::is_directory(whole, failure)) places.push_back(whole);
  places.push_back(whole.parent_path());
  return places;
}

std::optional<fs::path> besideScan(std::string const& scan, fs::path const& name)
{
  for (fs::path const& place : placesOf(scan))
    if (isThere(place / name)) return place / name;
  return std::nullopt;
}

/// How a table is seen from the scan; nothing if it is elsewhere.
std::optional<fs::path> seenFromScan(std::string const& scan, fs::path const& table)
{
  for (fs::path const& place : placesOf(scan)) {
    fs::path const name = table.lexically_relative(place);
    // Of two tables of this name the one in the folder is found.
    if (!name.empty() && *name.begin() != ".." && besideScan(scan, name) == table) return name;
  }
  return std::nullopt;
}

} // namespace

std::string givenParametersFile(std::string const& scan, ReadOptions const& options)
{
  fs::path const given(options.parametersFile);
  if (given.empty() || isThere(given)) return given.string();
  return besideScan(scan, given.is_absolute() ? given.filename() : given).value_or(given).string();
}

ReadOptions keptOptions(std::string const& scan, ReadOptions options)
{
  if (options.parametersFile.empty()) return options;
  fs::path const table = rooted(givenParametersFile(scan, options));
  if (isThere(table)) options.parametersFile = seenFromScan(scan, table).value_or(table).string();
  return options;
}

ReadOptions foundOptions(std::string const& scan, ReadOptions options)
{
  fs::path const kept(options.parametersFile);
  if (kept.empty()) return options;
  auto const beside = kept.is_relative() ? besideScan(scan, kept) : std::nullopt;
  fs::path const table = beside ? *beside : rooted(givenParametersFile(scan, options));
  if (isThere(table)) options.parametersFile = table.string();
  return options;
}

} // namespace runsieve
