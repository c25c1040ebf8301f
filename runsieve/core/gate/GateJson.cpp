#include <runsieve/core/gate/GateJson.h>

#include <runsieve/core/gate/GateText.h>
#include <runsieve/core/gate/GateWords.h>
#include <runsieve/core/text/BoundedJson.h>
#include <runsieve/core/text/FieldText.h>

#include <limits>

namespace runsieve {

namespace {

using Json = ReadJson;

constexpr double infinity = std::numeric_limits<double>::infinity();

[[noreturn]] void fail(char const* member, std::string const& expected, Json const& found)
{
  throw GateError(std::string("gate as JSON: \"") + member + "\": expected " + expected + ", found " +
                  runsieve::quoted(found.dump()));
}

WrittenJson endOf(std::optional<double> const& time)
{
  return time ? writtenNumber(*time) : WrittenJson();
}

WrittenJson keyOf(RunKey const& key)
{
  if (auto const* text = std::get_if<std::string>(&key)) return *text;
  auto const& [first, last] = std::get<RunNumbers>(key);
  return WrittenJson::array({first, last});
}

void writeRange(WrittenJson& json, Gate const& gate)
{
  if (gate.span) json["times"] = WrittenJson::array({endOf(gate.span->first), endOf(gate.span->last)});
  json["values"] = WrittenJson::array({writtenNumber(gate.range.low), writtenNumber(gate.range.high)});
}

WrittenJson objectOf(Gate const& gate)
{
  WrittenJson json = {{"text", formatGate(gate)}, {"kind", wordOf(kindWords, gate.kind)}};
  if (gate.negated) json["negated"] = true;
  if (gate.kind != GateKind::Status && gate.kind != GateKind::Runs) json["column"] = gate.column;
  if (hasRange(gate.kind)) writeRange(json, gate);
  if (gate.kind == GateKind::Is) json["is"] = gate.texts;
  if (gate.kind == GateKind::Status) {
    json["status"] = WrittenJson::array();
    for (RunStatus status : gate.statuses) json["status"].push_back(statusName(status));
  }
  if (gate.kind == GateKind::Runs) {
    json["runs"] = WrittenJson::array();
    for (RunKey const& key : gate.runs) json["runs"].push_back(keyOf(key));
  }
  if (gate.kind == GateKind::Cluster) {
    json["cluster"] = gate.cluster;
    json["clusters"] = gate.clusters;
    json["mode"] = wordOf(modeWords, gate.mode);
  }
  return json;
}

/// Takes the members of a gate from an object.
class GateObject
{
public:
  explicit GateObject(Json const& object) : json(object) {}

  Gate gate() const
  {
    if (!has("kind")) {
      if (!has("text")) throw GateError("gate as JSON: there is neither \"kind\" nor \"text\"");
      return parseGate(text("text", json["text"]));
    }
    Gate gate;
    gate.kind = word<GateKind>("kind", kindWords);
    if (has("negated")) {
      if (!json["negated"].is_boolean()) fail("negated", "true or false", json["negated"]);
      gate.negated = json["negated"].get<bool>();
    }
    if (gate.kind != GateKind::Status && gate.kind != GateKind::Runs)
      gate.column = text("column", member("column"));
    takeKind(gate);
    return gate;
  }

private:
  bool has(char const* name) const { return json.contains(name); }

  Json const& member(char const* name) const
  {
    if (!has(name)) throw GateError(std::string("gate as JSON: there is no \"") + name + '"');
    return json[name];
  }

  Json const& array(char const* name) const
  {
    Json const& value = member(name);
    if (!value.is_array()) fail(name, "a list", value);
    return value;
  }

  void takeKind(Gate& gate) const
  {
    if (hasRange(gate.kind)) takeRange(gate);
    if (gate.kind == GateKind::Is)
      for (Json const& value : array("is")) gate.texts.push_back(text("is", value));
    if (gate.kind == GateKind::Status)
      for (Json const& value : array("status"))
        gate.statuses.push_back(wordIn<RunStatus>("status", statusWords, value));
    if (gate.kind == GateKind::Runs)
      for (Json const& value : array("runs")) gate.runs.push_back(key(value));
    if (gate.kind != GateKind::Cluster) return;
    gate.cluster = whole<int>("cluster", member("cluster"));
    gate.clusters = whole<int>("clusters", member("clusters"));
    gate.mode = word<ClusterMode>("mode", modeWords);
  }

  void takeRange(Gate& gate) const
  {
    Json const& values = pair("values", member("values"));
    gate.range = {number("values", values[0]), number("values", values[1])};
    if (!has("times")) return;
    Json const& times = pair("times", json["times"]);
    gate.span = GateSpan{end(times[0]), end(times[1])};
  }

  static Json const& pair(char const* name, Json const& value)
  {
    if (!value.is_array() || value.size() != 2) fail(name, "a list of two ends", value);
    return value;
  }

  static double number(char const* name, Json const& value)
  {
    if (value.is_number()) return value.get<double>();
    if (value == "inf") return infinity;
    if (value != "-inf") fail(name, "a number, \"inf\" or \"-inf\"", value);
    return -infinity;
  }

  static std::optional<double> end(Json const& value)
  {
    if (value.is_null()) return std::nullopt;
    if (!value.is_number()) fail("times", "a number or null", value);
    return value.get<double>();
  }

  static std::string text(char const* name, Json const& value)
  {
    if (!value.is_string()) fail(name, "a text", value);
    return value.get<std::string>();
  }

  // Conversions would turn 1.5 into 1 and numbers that do not fit into others.
  template <class Whole> static Whole whole(char const* name, Json const& value)
  {
    bool fits = value.is_number_integer();
    if (fits && value.is_number_unsigned())
      fits = value.get<std::uint64_t>() <= static_cast<std::uint64_t>(std::numeric_limits<Whole>::max());
    else if (fits)
      fits = value.get<std::int64_t>() >= std::numeric_limits<Whole>::min();
    if (!fits) fail(name, "a whole number", value);
    return value.get<Whole>();
  }

  static RunKey key(Json const& value)
  {
    if (value.is_string()) return value.get<std::string>();
    if (!value.is_array() || value.size() != 2) fail("runs", "the key of a run or two whole numbers", value);
    return RunNumbers{whole<long long>("runs", value[0]), whole<long long>("runs", value[1])};
  }

  template <class Enumeration, std::size_t size>
  static Enumeration wordIn(char const* name, std::array<std::string_view, size> const& words,
                            Json const& value)
  {
    auto const found =
        value.is_string() ? fromWord<Enumeration>(words, value.get_ref<std::string const&>()) : std::nullopt;
    if (found) return *found;
    std::string all;
    for (std::string_view word : words) all += (all.empty() ? "one of " : ", ") + std::string(word);
    fail(name, all, value);
  }

  template <class Enumeration, std::size_t size>
  Enumeration word(char const* name, std::array<std::string_view, size> const& words) const
  {
    return wordIn<Enumeration>(name, words, member(name));
  }

  Json const& json;
};

} // namespace

std::string toJson(Gate const& gate)
{
  try {
    return objectOf(gate).dump();
  } catch (WrittenJson::exception const&) {
    throw GateError("gate " + runsieve::quoted(formatGate(gate)) + ": a name or text is not UTF-8");
  }
}

Gate fromJson(std::string const& text)
{
  Json json;
  try {
    json = parseJson(text);
  } catch (std::exception const&) { // no JSON, or nested too deeply: no object of ours
  }
  if (!json.is_object()) throw GateError("gate as JSON: expected an object, found " + runsieve::quoted(text));
  return GateObject(json).gate();
}

} // namespace runsieve
