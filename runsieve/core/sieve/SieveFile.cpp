#include <runsieve/core/sieve/SieveFile.h>

#include <runsieve/core/files/MappedFile.h>
#include <runsieve/core/files/SafeFile.h>
#include <runsieve/core/gate/GateJson.h>
#include <runsieve/core/gate/GateText.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/sieve/Fingerprint.h>
#include <runsieve/core/text/BoundedJson.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <type_traits>

namespace runsieve {

namespace {

using Json = ReadJson;

constexpr char formatName[] = "runsieve sieve";
constexpr std::uint64_t version = 1;
constexpr std::size_t mostBytes = std::size_t(16) << 20U;

/// A member of the wrong kind, by its path: "gates[2].values".
class MemberError : public std::runtime_error
{
public:
  using std::runtime_error::runtime_error;
};

[[noreturn]] void fail(std::string const& path, std::string const& expected, Json const& found)
{
  throw MemberError(path + ": expected " + expected + ", found " + runsieve::quoted(found.dump()));
}

/// Passes the options that a sieve file keeps with their names to a function, for writing and reading alike.
template <class Options, class Function> void eachOption(Options& read, Function&& option)
{
  option("time", read.time);
  option("run", read.run);
  option("parameters", read.parameters);
  option("outputs", read.outputs);
  option("ignore", read.ignore);
  option("missing", read.missing);
  option("names", read.names);
  option("decimal", read.decimal);
  option("delimiter", read.delimiter);
  option("dataset", read.dataset);
  option("parameters_file", read.parametersFile);
  option("exact_times", read.exactTimes);
}

/// The same of the method of comparison.
template <class Method, class Function> void eachPart(Method& method, Function&& part)
{
  part("adjust", method.adjustment);
  part("permutations", method.permutations);
  part("most_permutations", method.mostPermutations);
  part("seed", method.seed);
  part("gates_tried", method.gatesTried);
}

/// What is as by default is left out.
template <class Value> bool isDefault(Value const& value)
{
  return value == Value();
}

WrittenJson jsonOf(char value)
{
  return std::string(1, value);
}

WrittenJson jsonOf(std::optional<std::vector<std::string>> const& texts)
{
  return *texts; // written only if there are some
}

template <class Value> WrittenJson jsonOf(Value const& value)
{
  return value;
}

WrittenJson jsonOf(double value)
{
  return writtenNumber(value);
}

WrittenJson jsonOf(Adjustment adjustment)
{
  return adjustmentName(adjustment);
}

WrittenJson gatesOf(SieveFile const& sieve)
{
  WrittenJson gates = WrittenJson::array();
  for (std::size_t i = 0; i < sieve.gates.size(); ++i) {
    gates.push_back(WrittenJson::parse(toJson(sieve.gates[i])));
    if (i < sieve.names.size()) gates.back()["name"] = sieve.names[i];
  }
  return gates;
}

WrittenJson gatesOffOf(SieveFile const& sieve)
{
  WrittenJson gates = WrittenJson::array();
  for (GateThatIsOff const& off : sieve.off) {
    gates.push_back(WrittenJson::parse(toJson(off.gate)));
    gates.back()["name"] = off.name;
    gates.back()["place"] = off.place;
  }
  return gates;
}

WrittenJson dataOf(SieveFile const& sieve)
{
  WrittenJson data = {{"fingerprint", sieve.fingerprint}};
  if (!sieve.path.empty()) data["path"] = sieve.path;
  if (!sieve.absolutePath.empty()) data["absolute_path"] = sieve.absolutePath;
  return data;
}

WrittenJson countsAsJson(SieveCounts const& counts)
{
  WrittenJson json = {{"runs", counts.runs}};
  if (counts.passing) json["passing"] = *counts.passing;
  json["after_gate"] = counts.afterGate;
  return json;
}

WrittenJson objectOf(SieveFile const& sieve)
{
  WrittenJson json = {{"format", formatName}, {"version", version}, {"program", sieve.program}};
  json["gates"] = gatesOf(sieve);
  if (!sieve.off.empty()) json["gates_off"] = gatesOffOf(sieve);
  json["join"] = sieve.join == GateJoin::Any ? "or" : "and";
  json["thresholds"] = WrittenJson::object();
  for (auto const& [name, value] : sieve.thresholds) json["thresholds"][name] = jsonOf(value);
  if (sieve.method)
    eachPart(*sieve.method,
             [&json](char const* name, auto const& value) { json["method"][name] = jsonOf(value); });
  json["read"] = WrittenJson::object();
  eachOption(sieve.read, [&json](char const* name, auto const& value) {
    if (!isDefault(value)) json["read"][name] = jsonOf(value);
  });
  json["data"] = dataOf(sieve);
  json["counts"] = countsAsJson(sieve.counts);
  if (!sieve.window.empty()) json["window"] = WrittenJson::parse(sieve.window);
  return json;
}

void take(std::string const& path, Json const& json, std::string& value)
{
  if (!json.is_string()) fail(path, "a text", json);
  value = json.get<std::string>();
}

void take(std::string const& path, Json const& json, bool& value)
{
  if (!json.is_boolean()) fail(path, "true or false", json);
  value = json.get<bool>();
}

void take(std::string const& path, Json const& json, char& value)
{
  if (!json.is_string() || json.get_ref<std::string const&>().size() != 1) fail(path, "one character", json);
  value = json.get_ref<std::string const&>().front();
}

void take(std::string const& path, Json const& json, double& value)
{
  constexpr double infinity = std::numeric_limits<double>::infinity();
  if (json.is_number())
    value = json.get<double>();
  else if (json == "inf" || json == "-inf")
    value = json == "inf" ? infinity : -infinity;
  else if (json == "nan")
    value = std::numeric_limits<double>::quiet_NaN();
  else
    fail(path, "a number", json);
}

// A conversion would turn 1.5 into 1 and -1 into a large number.
template <class Whole>
std::enable_if_t<std::is_unsigned_v<Whole>> take(std::string const& path, Json const& json, Whole& value)
{
  if (!json.is_number_unsigned()) fail(path, "a whole number", json);
  value = json.get<Whole>();
}

void take(std::string const& path, Json const& json, Gate& gate)
{
  try {
    gate = fromJson(json.dump());
  } catch (GateError const& error) {
    throw MemberError(path + ": " + error.what());
  }
}

void take(std::string const& path, Json const& json, GateThatIsOff& off);

template <class Value> void take(std::string const& path, Json const& json, std::vector<Value>& values)
{
  if (!json.is_array()) fail(path, "a list", json);
  values.clear();
  for (Json const& element : json) {
    std::string const place = path + '[' + std::to_string(values.size()) + ']';
    take(place, element, values.emplace_back());
  }
}

template <class Value> void take(std::string const& path, Json const& json, std::optional<Value>& value)
{
  take(path, json, value.emplace());
}

void take(std::string const& path, Json const& json, GateJoin& join)
{
  if (json != "and" && json != "or") fail(path, "\"and\" or \"or\"", json);
  join = json == "or" ? GateJoin::Any : GateJoin::All;
}

void take(std::string const& path, Json const& json, Adjustment& adjustment)
{
  auto const found = json.is_string() ? adjustmentNamed(json.get<std::string>()) : std::nullopt;
  if (!found) fail(path, "\"permutation\", \"holm\", \"bh\" or \"none\"", json);
  adjustment = *found;
}

void take(std::string const& path, Json const& json, std::map<std::string, double>& numbers)
{
  if (!json.is_object()) fail(path, "an object", json);
  for (auto const& [name, value] : json.items())
    take(path + '[' + runsieve::quoted(name) + ']', value, numbers[name]);
}

/// Takes members of an object; one that is not there leaves the value as it is.
class Members
{
public:
  Members(std::string where, Json const& object) : path(std::move(where)), json(object)
  {
    if (!json.is_object()) fail(path, "an object", json);
  }

  template <class Value> void operator()(char const* name, Value& value) const
  {
    if (json.contains(name)) take(path + '.' + name, json[name], value);
  }

private:
  std::string path;
  Json const& json;
};

void take(std::string const& path, Json const& json, GateThatIsOff& off)
{
  take(path, json, off.gate);
  Members const members(path, json);
  members("name", off.name);
  members("place", off.place);
}

/// Names stand in the gates; if some have one, the others have an empty one.
void takeNames(Json const& gates, std::vector<std::string>& names)
{
  names.resize(gates.size());
  bool some = false;
  for (std::size_t i = 0; i < gates.size(); ++i) {
    Members("gates[" + std::to_string(i) + ']', gates[i])("name", names[i]);
    some = some || gates[i].contains("name");
  }
  if (!some) names.clear();
}

void takeData(Json const& json, SieveFile& sieve)
{
  Members const data("data", json);
  data("fingerprint", sieve.fingerprint);
  data("path", sieve.path);
  data("absolute_path", sieve.absolutePath);
}

void checkFormat(Json const& json)
{
  if (!json.is_object() || !json.contains("format") || json["format"] != formatName)
    throw MemberError(std::string("this is no sieve file: there is no \"format\": \"") + formatName + '"');
  Json const found = json.contains("version") ? json["version"] : Json();
  if (!found.is_number_unsigned() || found == 0U) fail("version", "a whole number from 1 on", found);
  if (found.get<std::uint64_t>() > version)
    throw MemberError("the sieve is of version " + found.dump() +
                      ", written by a newer program; this one reads " + std::to_string(version));
}

SieveFile sieveOf(Json const& json)
{
  checkFormat(json);
  SieveFile sieve;
  auto const member = [&json](char const* name, auto& value) {
    if (json.contains(name)) take(name, json[name], value);
  };
  member("program", sieve.program);
  if (!json.contains("gates")) throw MemberError("there are no \"gates\"");
  member("gates", sieve.gates);
  takeNames(json["gates"], sieve.names);
  member("gates_off", sieve.off);
  member("join", sieve.join);
  member("thresholds", sieve.thresholds);
  if (json.contains("method")) eachPart(sieve.method.emplace(), Members("method", json["method"]));
  if (json.contains("read")) eachOption(sieve.read, Members("read", json["read"]));
  if (json.contains("data")) takeData(json["data"], sieve);
  if (json.contains("window")) {
    if (!json["window"].is_object()) fail("window", "an object", json["window"]);
    sieve.window = json["window"].dump();
  }
  if (!json.contains("counts")) return sieve;
  Members const counts("counts", json["counts"]);
  counts("runs", sieve.counts.runs);
  counts("passing", sieve.counts.passing);
  counts("after_gate", sieve.counts.afterGate);
  return sieve;
}

/// Line of a position in a text, from 1.
std::size_t lineOf(std::string_view text, std::size_t position)
{
  std::string_view const before = text.substr(0, position > 0 ? position - 1 : 0);
  return 1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
}

bool wasCounted(SieveFile const& sieve)
{
  return sieve.counts.runs > 0;
}

std::vector<std::string> compareData(SieveFile const& sieve, Scan const& scan)
{
  std::vector<std::string> lines;
  std::string const fingerprint = fingerprintOf(scan);
  if (!sieve.fingerprint.empty() && fingerprint != sieve.fingerprint)
    lines.push_back("the data differ: their fingerprint is " + fingerprint + ", that of the sieve " +
                    sieve.fingerprint);
  if (wasCounted(sieve) && scan.runs.size() != sieve.counts.runs)
    lines.push_back("the scan has " + std::to_string(scan.runs.size()) + " runs; it had " +
                    std::to_string(sieve.counts.runs));
  return lines;
}

void compareCounts(std::vector<std::string>& lines, SieveFile const& sieve, GateResult const& result,
                   std::vector<std::string> const& names = {})
{
  if (!wasCounted(sieve)) return;
  for (std::size_t i = 0; i < result.gates.size() && i < sieve.counts.afterGate.size(); ++i)
    if (sieve.counts.afterGate[i] != result.gates[i].left)
      lines.push_back("after " + (i < names.size() ? names[i] : "gate " + std::to_string(i + 1)) + ", " +
                      formatGate(sieve.gates[i]) + ", " + std::to_string(result.gates[i].left) +
                      " runs are left; there were " + std::to_string(sieve.counts.afterGate[i]));
  if (sieve.counts.passing && *sieve.counts.passing != result.runs.count())
    lines.push_back(std::to_string(result.runs.count()) + " runs pass; " +
                    std::to_string(*sieve.counts.passing) + " did");
}

} // namespace

std::string toSieveText(SieveFile const& sieve)
{
  try {
    return objectOf(sieve).dump(2) + '\n';
  } catch (Json::exception const&) {
    throw std::invalid_argument("a text of the sieve is not UTF-8, or its window no JSON");
  }
}

SieveFile readSieve(std::string_view text, std::string const& file)
{
  if (text.size() > mostBytes)
    throw ScanError(file, "a sieve file takes 16 MiB at most; this one has " + std::to_string(text.size()) +
                              " bytes");
  try {
    return sieveOf(parseJson(text));
  } catch (Json::parse_error const& error) {
    throw ScanError(file, {lineOf(text, error.byte), 0, ""},
                    "this is no JSON: something is wrong here or before");
  } catch (Json::exception const&) {
    throw ScanError(file, "the JSON holds a number that is too large");
  } catch (std::length_error const& error) {
    throw ScanError(file, error.what());
  } catch (MemberError const& error) {
    throw ScanError(file, error.what());
  }
}

void writeSieve(std::string const& path, SieveFile const& sieve)
{
  std::string const text = toSieveText(sieve);
  SafeFile file(path);
  file.write(text);
  file.commit();
}

SieveFile loadSieve(std::string const& path)
{
  MappedFile const file(path);
  return readSieve({file.begin(), static_cast<std::size_t>(file.end() - file.begin())}, path);
}

ReadOptions mergedOptions(ReadOptions own, ReadOptions const& ofSieve)
{
  eachOption(own, [&](std::string_view name, auto& target) {
    eachOption(ofSieve, [&](std::string_view other, auto const& value) {
      if constexpr (std::is_same_v<std::decay_t<decltype(target)>, std::decay_t<decltype(value)>>)
        if (name == other && isDefault(target)) target = value;
    });
  });
  return own;
}

SieveCounts countsOf(GateResult const& result)
{
  SieveCounts counts;
  counts.runs = result.runs.runs();
  counts.passing = result.runs.count();
  for (AppliedGate const& gate : result.gates) counts.afterGate.push_back(gate.left);
  return counts;
}

std::vector<std::string> compareWith(SieveFile const& sieve, Scan const& scan, GateContext const& context,
                                     std::vector<std::string> const& names)
{
  std::vector<std::string> lines = compareData(sieve, scan);
  try {
    compareCounts(lines, sieve, applyGates(sieve.gates, scan, sieve.join, context), names);
  } catch (GateError const& error) {
    lines.emplace_back(error.what());
  }
  return lines;
}

std::vector<std::string> compareWith(SieveFile const& sieve, Scan const& scan, GateResult const& left)
{
  std::vector<std::string> lines = compareData(sieve, scan);
  compareCounts(lines, sieve, left);
  return lines;
}

} // namespace runsieve
