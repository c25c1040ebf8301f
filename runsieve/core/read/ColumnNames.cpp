#include <runsieve/core/read/ColumnNames.h>

#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <array>
#include <cctype>

namespace runsieve {

namespace {

constexpr std::array<std::string_view, 5> outputTypes = {"Complex", "Molecule", "Complex With Molecule",
                                                         "Pattern", "Undefined Type"};

std::string lowerCase(std::string_view text)
{
  std::string lower(text);
  for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return lower;
}

template <std::size_t N> bool isOneOf(std::string_view name, std::array<std::string_view, N> const& names)
{
  return std::find(names.begin(), names.end(), name) != names.end();
}

bool startsWith(std::string_view text, std::string_view start)
{
  return text.substr(0, start.size()) == start;
}

} // namespace

NamedColumn describeColumn(std::string const& header)
{
  NamedColumn column;
  column.label.name = header;
  if (startsWith(header, ": ")) {
    column.kind = NamedKind::Unnamed;
    column.label.name = header.substr(2);
  } else if (startsWith(header, "Parameter: ")) {
    column.kind = NamedKind::Parameter;
    column.label.name = header.substr(11);
    column.label.type = "Parameter";
  }
  for (std::string_view const type : outputTypes)
    if (startsWith(header, std::string(type) + ": ")) {
      column.kind = NamedKind::Output;
      column.label.type = type;
      column.label.name = header.substr(type.size() + 2);
    }
  return column;
}

std::optional<ColumnLabel> timeLabel(std::string_view header)
{
  std::string_view const name = trimmed(header);
  std::string const lower = lowerCase(name);
  if (lower == "[step]") return ColumnLabel{"step", "", "", ""};
  std::size_t const stem = startsWith(lower, "time") ? 4 : (startsWith(lower, "t") ? 1 : 0);
  if (stem == 0) return std::nullopt;
  std::string_view const rest = trimmed(name.substr(stem));
  if (rest.empty()) return ColumnLabel{"Time", "", "", ""};
  bool const bracketed = rest.size() > 2 && ((rest.front() == '[' && rest.back() == ']') ||
                                             (rest.front() == '(' && rest.back() == ')'));
  if (bracketed) return ColumnLabel{"Time", std::string(rest.substr(1, rest.size() - 2)), "", ""};
  constexpr std::array<std::string_view, 10> units = {"_s",     "_sec", "_ms",   "_min",     "_h",
                                                      "_hours", "_d",   "_days", "_seconds", "_minutes"};
  if (stem == 4 && isOneOf(lowerCase(rest), units))
    return ColumnLabel{"Time", std::string(rest.substr(1)), "", ""};
  return std::nullopt;
}

std::optional<ColumnLabel> ownTimeLabel(std::string_view header)
{
  if (!startsWith(header, ": ") || header == ": Run Index") return std::nullopt;
  std::string_view const name = trimmed(header.substr(2));
  std::size_t const bracket = name.rfind(" [");
  if (name.empty() || name.back() != ']' || bracket == std::string_view::npos || bracket == 0)
    return ColumnLabel{std::string(name), "", "", ""};
  return ColumnLabel{std::string(name.substr(0, bracket)),
                     std::string(name.substr(bracket + 2, name.size() - bracket - 3)), "", ""};
}

std::string plainName(std::string_view name)
{
  std::string plain = lowerCase(name);
  auto const isFiller = [](char c) { return std::string_view(" _-.#").find(c) != std::string_view::npos; };
  plain.erase(std::remove_if(plain.begin(), plain.end(), isFiller), plain.end());
  return plain;
}

RunName runName(std::string_view header)
{
  constexpr std::array<std::string_view, 12> sure = {"run",   "runindex",   "runid",        "runnumber",
                                                     "runno", "simulation", "simulationid", "sim",
                                                     "simid", "trajectory", "trajectoryid", "realization"};
  constexpr std::array<std::string_view, 16> likely = {
      "id",         "uid",          "sample",    "sampleid",    "replicate",
      "rep",        "iteration",    "iter",      "realisation", "member",
      "experiment", "experimentid", "condition", "conditionid", "simulationconditionid",
      "cell"};
  std::string const plain = plainName(header);
  if (plain == "[runnumber]") return RunName::Surely; // of agent-based models, with "[step]"
  if (isOneOf(plain, sure)) return RunName::Surely;
  return isOneOf(plain, likely) ? RunName::Likely : RunName::No;
}

bool isStatusName(std::string_view header)
{
  constexpr std::array<std::string_view, 6> names = {"status",    "success",   "ok",
                                                     "converged", "runstatus", "solverstatus"};
  return isOneOf(plainName(header), names);
}

bool isRowNumberName(std::string_view header)
{
  constexpr std::array<std::string_view, 6> names = {"index", "x", "unnamed:0", "row", "rownumber", "rowid"};
  return isOneOf(plainName(header), names);
}

} // namespace runsieve
