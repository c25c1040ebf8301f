#include "app/store/PlotSettings.h"

#include <runsieve/core/gate/GateJson.h>
#include <runsieve/core/text/BoundedJson.h>

#include <boost/crc.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace runsieve::app {

namespace {

constexpr std::uint64_t version = 1;

/// Passes every member of the view with its name to a function, for reading and writing alike.
template <class View, class Function> void eachMember(View& view, Function&& member)
{
  member("output", view.output);
  member("density", view.density);
  member("common_scale", view.commonScale);
  member("quantiles", view.quantiles);
  member("log_axes", view.logAxes);
  member("points", view.points);
  member("plain_lines", view.plainLines);
  member("p_threshold", view.pThreshold);
  member("ks_threshold", view.ksThreshold);
}

// JSON has no number for these.
constexpr double oddNumbers[] = {std::numeric_limits<double>::infinity(),
                                 -std::numeric_limits<double>::infinity(),
                                 std::numeric_limits<double>::quiet_NaN()};

char const* textOf(double odd)
{
  return std::isnan(odd) ? "nan" : odd < 0.0 ? "-inf" : "inf";
}

WrittenJson numberOf(double value)
{
  return std::isfinite(value) ? WrittenJson(value) : WrittenJson(textOf(value));
}

// Conversions would turn 1.5 into 1, -1 into a large number and numbers that do not fit into others.
void take(ReadJson const& json, bool& value)
{
  value = json.get<bool>();
}

void take(ReadJson const& json, double& value)
{
  for (double odd : oddNumbers)
    if (json == textOf(odd)) {
      value = odd;
      return;
    }
  if (!json.is_number()) throw std::runtime_error("the settings cannot be read: a number is missing");
  value = json.get<double>();
}

template <class Unsigned> void take(ReadJson const& json, Unsigned& value)
{
  if (!json.is_number_unsigned() || json.get<std::uint64_t>() > std::numeric_limits<Unsigned>::max())
    throw std::runtime_error("the settings cannot be read: a whole number is missing");
  value = json.get<Unsigned>();
}

template <class Value> void takeMember(ReadJson const& json, const char* name, Value& value)
{
  if (json.contains(name)) take(json.at(name), value);
}

void takeWindow(ReadJson const& json, CoordinateWindow& window)
{
  if (!json.is_array() || json.size() != 4)
    throw std::runtime_error("the settings hold no window of four numbers");
  take(json[0], window.xMin);
  take(json[1], window.yMin);
  take(json[2], window.xMax);
  take(json[3], window.yMax);
  window.valid = true;
}

void takeGates(ReadJson const& json, PlotSettings& settings)
{
  for (ReadJson const& gate : json.at("gates")) settings.gates.push_back(runsieve::fromJson(gate.dump()));
  const std::string join = json.value("join", "and");
  if (join != "and" && join != "or")
    throw std::runtime_error("the settings join gates neither by \"and\" nor by \"or\"");
  settings.join = join == "or" ? GateJoin::Any : GateJoin::All;
}

WrittenJson jsonOf(ScanNotes const& notes)
{
  WrittenJson json = WrittenJson::object();
  if (!notes.runs.empty()) json["runs"] = notes.runs;
  if (!notes.failed.empty()) json["failed"] = notes.failed;
  for (auto const& [position, texts] : notes.texts)
    json["texts"].push_back({{"parameter", position}, {"texts", texts}});
  return json;
}

void takeNotes(ReadJson const& json, ScanNotes& notes)
{
  if (json.contains("runs")) notes.runs = json.at("runs").get<std::vector<std::string>>();
  for (ReadJson const& run : json.value("failed", ReadJson::array())) take(run, notes.failed.emplace_back());
  for (ReadJson const& parameter : json.value("texts", ReadJson::array())) {
    std::size_t position = 0;
    take(parameter.at("parameter"), position);
    notes.texts.emplace_back(position, parameter.at("texts").get<std::vector<std::string>>());
  }
}

/// The line without the digits of its checksum; the line itself if it has none.
std::string withoutChecksum(std::string line)
{
  const std::string key = "\"crc32\":";
  const std::size_t found = line.find(key);
  if (found == std::string::npos) return line;
  const std::size_t first = found + key.size();
  const std::size_t last = std::min(line.find_first_not_of("0123456789", first), line.size());
  return line.erase(first, last - first);
}

} // namespace

std::string toJson(PlotSettings const& settings)
{
  WrittenJson json;
  json["format"] = "runsieve plot";
  json["version"] = version;
  json["stride"] = settings.stride;
  json["dump"] = {{"bytes", settings.bytes}, {"crc32", settings.checksum}};
  eachMember(settings.view, [&json](const char* name, auto const& value) { json["view"][name] = value; });
  CoordinateWindow const& window = settings.window;
  if (window.valid)
    json["window"] = {numberOf(window.xMin), numberOf(window.yMin), numberOf(window.xMax),
                      numberOf(window.yMax)};
  for (Gate const& gate : settings.gates) json["gates"].push_back(WrittenJson::parse(runsieve::toJson(gate)));
  if (!settings.gates.empty()) json["join"] = settings.join == GateJoin::Any ? "or" : "and";
  WrittenJson notes = jsonOf(settings.notes);
  if (!notes.empty()) json["scan"] = std::move(notes);
  return json.dump();
}

std::uint32_t checksumOf(std::string const& line, char const* dump, std::size_t bytes)
{
  const std::string settings = withoutChecksum(line);
  boost::crc_32_type crc;
  crc.process_bytes(settings.data(), settings.size());
  crc.process_bytes(dump, bytes);
  return crc.checksum();
}

PlotSettings fromJson(std::string const& line)
{
  PlotSettings settings;
  try {
    const ReadJson json = parseJson(line);
    if (json.at("format") != "runsieve plot")
      throw std::runtime_error("the settings are those of another format");
    std::uint64_t itsVersion = 0;
    take(json.at("version"), itsVersion);
    if (itsVersion > version) throw std::runtime_error("the file was written by a newer version of runsieve");
    take(json.at("stride"), settings.stride);
    take(json.at("dump").at("bytes"), settings.bytes);
    take(json.at("dump").at("crc32"), settings.checksum);
    const ReadJson view = json.value("view", ReadJson::object());
    if (!view.is_object()) throw std::runtime_error("the settings hold no view");
    eachMember(settings.view, [&view](const char* name, auto& value) { takeMember(view, name, value); });
    if (json.contains("window")) takeWindow(json.at("window"), settings.window);
    if (json.contains("gates")) takeGates(json, settings);
    if (json.contains("scan")) takeNotes(json.at("scan"), settings.notes);
  } catch (std::length_error const& error) {
    throw std::runtime_error(std::string("the settings cannot be read: ") + error.what());
  } catch (ReadJson::exception const& error) {
    throw std::runtime_error(std::string("the settings cannot be read: ") + error.what());
  }
  return settings;
}

} // namespace runsieve::app
