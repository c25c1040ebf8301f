#include "app/store/PlotSettings.h"

#include <nlohmann/json.hpp>

#include <array>
#include <stdexcept>

namespace runsieve::app {

namespace {

using Json = nlohmann::ordered_json;

constexpr int version = 1;

/// Passes every member of the view with its name to a function, for reading and writing alike.
template <class View, class Function> void eachMember(View& view, Function&& member)
{
  member("output", view.output);
  member("density", view.density);
  member("common_scale", view.commonScale);
  member("quantiles", view.quantiles);
  member("log_axes", view.logAxes);
  member("points", view.points);
  member("p_threshold", view.pThreshold);
  member("ks_threshold", view.ksThreshold);
}

} // namespace

std::string toJson(PlotSettings const& settings)
{
  Json json;
  json["format"] = "runsieve plot";
  json["version"] = version;
  json["stride"] = settings.stride;
  json["dump"] = {{"bytes", settings.bytes}, {"crc32", settings.checksum}};
  eachMember(settings.view, [&json](const char* name, auto const& value) { json["view"][name] = value; });
  CoordinateWindow const& window = settings.window;
  if (window.valid) json["window"] = {window.xMin, window.yMin, window.xMax, window.yMax};
  return json.dump();
}

PlotSettings fromJson(std::string const& line)
{
  PlotSettings settings;
  try {
    const Json json = Json::parse(line);
    if (json.at("format") != "runsieve plot")
      throw std::runtime_error("the settings are those of another format");
    if (json.at("version").get<int>() > version)
      throw std::runtime_error("the file was written by a newer version of runsieve");
    settings.stride = json.at("stride").get<std::uint64_t>();
    settings.bytes = json.at("dump").at("bytes").get<std::uint64_t>();
    settings.checksum = json.at("dump").at("crc32").get<std::uint32_t>();
    const Json view = json.value("view", Json::object());
    eachMember(settings.view, [&view](const char* name, auto& value) { value = view.value(name, value); });
    if (json.contains("window")) {
      const auto window = json.at("window").get<std::array<double, 4>>();
      settings.window = {window[0], window[1], window[2], window[3], true};
    }
  } catch (nlohmann::json::exception const& error) {
    throw std::runtime_error(std::string("the settings cannot be read: ") + error.what());
  }
  return settings;
}

} // namespace runsieve::app
