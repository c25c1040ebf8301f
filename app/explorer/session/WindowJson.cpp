#include "app/explorer/session/WindowJson.h"

#include <runsieve/core/text/BoundedJson.h>
#include <runsieve/core/text/FieldText.h>

#include <array>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace runsieve::app {

namespace {

// The words of the file, in the order of the enumerations.
constexpr std::array<char const*, 4> runsLooks = {"density", "lines", "bands", "whole_bands"};
constexpr std::array<char const*, 3> focuses = {"all", "faded", "hidden"};
constexpr std::array<char const*, 3> parameterLooks = {"curves", "densities", "scatter"};
constexpr std::array<char const*, 5> parametersPages = {"charts", "pairs", "box", "parallel", "stability"};

std::array<char const*, 4> const& wordsOf(RunsLook)
{
  return runsLooks;
}
std::array<char const*, 3> const& wordsOf(Focus)
{
  return focuses;
}
std::array<char const*, 3> const& wordsOf(ParameterLook)
{
  return parameterLooks;
}
std::array<char const*, 5> const& wordsOf(ParametersPage)
{
  return parametersPages;
}

WrittenJson jsonOf(TypedRange const& range)
{
  return WrittenJson::array({writtenNumber(range.low), writtenNumber(range.high)});
}

WrittenJson jsonOf(RunKey const& key)
{
  if (auto const* text = std::get_if<std::string>(&key)) return *text;
  auto const& [first, last] = std::get<RunNumbers>(key);
  return WrittenJson::array({first, last});
}

template <class Word> std::enable_if_t<std::is_enum_v<Word>, WrittenJson> jsonOf(Word word)
{
  return wordsOf(word)[static_cast<std::size_t>(word)];
}

template <class Value>
std::enable_if_t<std::is_arithmetic_v<Value> || std::is_same_v<Value, std::string>, WrittenJson>
jsonOf(Value const& value)
{
  return value;
}

template <class Value> WrittenJson jsonOf(std::vector<Value> const& values)
{
  WrittenJson json = WrittenJson::array();
  for (Value const& value : values) json.push_back(jsonOf(value));
  return json;
}

template <class Value> WrittenJson jsonOf(std::map<std::string, Value> const& values)
{
  WrittenJson json = WrittenJson::object();
  for (auto const& [name, value] : values) json[name] = jsonOf(value);
  return json;
}

[[noreturn]] void fail(std::string const& path, char const* expected, ReadJson const& found)
{
  throw std::runtime_error(path + ": expected " + expected + ", found " + runsieve::quoted(found.dump()));
}

double numberOf(std::string const& path, ReadJson const& json)
{
  constexpr double infinity = std::numeric_limits<double>::infinity();
  if (json == "inf" || json == "-inf") return json == "inf" ? infinity : -infinity;
  if (!json.is_number()) fail(path, "a number", json);
  return json.get<double>();
}

void take(std::string const& path, ReadJson const& json, std::string& value)
{
  if (!json.is_string()) fail(path, "a text", json);
  value = json.get<std::string>();
}

void take(std::string const& path, ReadJson const& json, bool& value)
{
  if (!json.is_boolean()) fail(path, "true or false", json);
  value = json.get<bool>();
}

void take(std::string const& path, ReadJson const& json, std::size_t& value)
{
  if (!json.is_number_unsigned()) fail(path, "a whole number", json);
  value = json.get<std::size_t>();
}

void take(std::string const& path, ReadJson const& json, TypedRange& range)
{
  if (!json.is_array() || json.size() != 2) fail(path, "a list of two numbers", json);
  range = {numberOf(path + "[0]", json[0]), numberOf(path + "[1]", json[1])};
  if (!(range.low < range.high)) fail(path, "a low and a high number", json);
}

void take(std::string const& path, ReadJson const& json, RunKey& key)
{
  if (json.is_string()) {
    key = json.get<std::string>();
    return;
  }
  if (!json.is_array() || json.size() != 2 || !json[0].is_number_integer() || !json[1].is_number_integer())
    fail(path, "a text or a list of two whole numbers", json);
  key = RunNumbers{json[0].get<long long>(), json[1].get<long long>()};
}

template <class Word>
std::enable_if_t<std::is_enum_v<Word>> take(std::string const& path, ReadJson const& json, Word& word)
{
  auto const& words = wordsOf(word);
  for (std::size_t i = 0; i < words.size(); ++i)
    if (json == words[i]) {
      word = static_cast<Word>(i);
      return;
    }
  std::string known = words[0];
  for (std::size_t i = 1; i < words.size(); ++i)
    known += (i + 1 < words.size() ? ", " : " or ") + std::string(words[i]);
  fail(path, known.c_str(), json);
}

template <class Value> void take(std::string const& path, ReadJson const& json, std::optional<Value>& value)
{
  take(path, json, value.emplace());
}

void take(std::string const& path, ReadJson const& json, SessionSet& set);

template <class Value> void take(std::string const& path, ReadJson const& json, std::vector<Value>& values)
{
  if (!json.is_array()) fail(path, "a list", json);
  values.clear();
  for (ReadJson const& element : json) {
    const std::string place = path + '[' + std::to_string(values.size()) + ']';
    Value value{};
    take(place, element, value);
    values.push_back(std::move(value));
  }
}

template <class Value>
void take(std::string const& path, ReadJson const& json, std::map<std::string, Value>& values)
{
  if (!json.is_object()) fail(path, "an object", json);
  values.clear();
  for (auto const& [name, value] : json.items())
    take(path + '[' + runsieve::quoted(name) + ']', value, values[name]);
}

/// Takes members of an object; one that is not there leaves the value as it is.
class Members
{
public:
  Members(std::string where, ReadJson const& object) : path(std::move(where)), json(object)
  {
    if (!json.is_object()) fail(path, "an object", json);
  }

  template <class Value> void operator()(char const* name, Value& value) const
  {
    if (json.contains(name)) take(path + '.' + name, json[name], value);
  }

private:
  std::string path;
  ReadJson const& json;
};

/// Passes the members of a record with their names to a function, for writing and reading alike.
template <class Set, class Function> void eachMemberOfSet(Set& set, Function&& member)
{
  member("name", set.name);
  member("runs", set.runs);
  member("color", set.color);
  member("shown", set.shown);
  member("origin", set.origin);
}

template <class AnySession, class Function> void eachMember(AnySession& session, Function&& member)
{
  auto& view = session.view;
  member("outputs", view.outputs);
  member("log_outputs", view.logOutputs);
  member("output_ranges", view.outputRanges);
  member("time_range", view.timeRange);
  member("zoomed_time", view.zoomedTime);
  member("zoomed_values", view.zoomedValues);
  member("runs_look", view.runsLook);
  member("focus", view.focus);
  member("parameter_look", view.parameterLook);
  member("log_parameters", view.logParameters);
  member("parameters_page", view.parametersPage);
  member("sets", session.sets);
  member("pinned", session.pinned);
}

void take(std::string const& path, ReadJson const& json, SessionSet& set)
{
  eachMemberOfSet(set, Members(path, json));
}

WrittenJson jsonOf(SessionSet const& set)
{
  WrittenJson json;
  eachMemberOfSet(set, [&json](char const* name, auto const& value) { json[name] = jsonOf(value); });
  return json;
}

WrittenJson jsonOf(std::vector<SessionSet> const& sets)
{
  WrittenJson json = WrittenJson::array();
  for (SessionSet const& set : sets) json.push_back(jsonOf(set));
  return json;
}

template <class Value> bool isThere(Value const&)
{
  return true;
}

template <class Value> bool isThere(std::optional<Value> const& value)
{
  return value.has_value();
}

template <class Value> Value const& inside(Value const& value)
{
  return value;
}

template <class Value> Value const& inside(std::optional<Value> const& value)
{
  return *value;
}

} // namespace

std::string windowJson(Session const& session)
{
  WrittenJson json = WrittenJson::object();
  eachMember(session, [&json](char const* name, auto const& value) {
    if (isThere(value)) json[name] = jsonOf(inside(value));
  });
  return json.dump();
}

void readWindowJson(std::string const& text, Session& session)
{
  eachMember(session, Members("window", parseJson(text)));
}

} // namespace runsieve::app
