#include <runsieve/core/read/ArrayRoles.h>

#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace runsieve {

namespace {

using Names = std::initializer_list<std::string_view>;

/// The bare name in small letters without anything but letters and digits: "param_names" becomes
/// "paramnames".
std::string plainName(std::string const& name)
{
  std::string plain;
  for (char const symbol : bareName(name)) {
    if ((symbol >= 'a' && symbol <= 'z') || (symbol >= '0' && symbol <= '9')) plain += symbol;
    if (symbol >= 'A' && symbol <= 'Z') plain += static_cast<char>(symbol - 'A' + 'a');
  }
  return plain;
}

bool isOneOf(std::string const& name, Names names)
{
  return std::find(names.begin(), names.end(), plainName(name)) != names.end();
}

bool isRunName(std::string const& name)
{
  return isOneOf(name, {"run", "runs", "runid", "runids", "id", "ids", "runname", "runnames"});
}

bool isOutputNamesName(std::string const& name)
{
  return isOneOf(name, {"names", "outputs", "outputnames", "outputids", "species", "speciesnames",
                        "speciesids", "columns", "columnnames", "labels", "variables", "observables"});
}

bool isParameterTableName(std::string const& name)
{
  return isOneOf(name, {"parameters", "params", "parametervalues", "paramvalues", "x", "theta"});
}

bool isParameterNamesName(std::string const& name)
{
  return isOneOf(name, {"parameternames", "paramnames", "parameterids", "paramids", "parameterlabels",
                        "paramlabels", "thetanames", "xnames"});
}

char const* const axisAdvice =
    "; save the values as runs x times x outputs, or add arrays \"time\", \"names\" and "
    "\"run\" whose lengths tell the axes apart";

class RoleFinder
{
public:
  RoleFinder(std::string const& file, std::vector<NamedArray> const& arrays, ReadOptions const& options,
             ReadReport& report)
      : fileName(file), arrays(arrays), options(options), report(report), taken(arrays.size(), false)
  {}

  ArrayRoles find()
  {
    ignoreWhatIsNotWanted();
    findTime();
    findNames();
    findValues();
    findAxes();
    checkNames();
    findRunKeys();
    findTable();
    findParameters();
    tell();
    return std::move(roles);
  }

private:
  using Position = std::optional<std::size_t>;
  using Shape = std::vector<std::size_t>;

  [[noreturn]] void fail(std::string const& message) const { throw ScanError(fileName, message); }

  [[nodiscard]] std::string shown(std::size_t i) const
  {
    return quoted(arrays[i].name) + " (" + shapeText(arrays[i].shape) + ')';
  }

  [[nodiscard]] bool isIgnored(std::string const& name) const
  {
    return std::find(options.ignore.begin(), options.ignore.end(), name) != options.ignore.end();
  }

  void take(std::size_t i, char const* role, std::string why)
  {
    taken[i] = true;
    found.push_back({i, {arrays[i].name, role, std::move(why)}});
  }

  void ignoreWhatIsNotWanted()
  {
    for (std::size_t i = 0; i < arrays.size(); ++i) {
      if (isIgnored(arrays[i].name) || isIgnored(bareName(arrays[i].name)))
        take(i, "ignored", "as asked for");
      else if (arrays[i].kind == NamedArray::Kind::Unreadable)
        unreadable.push_back(i);
    }
  }

  /// The first array that is not taken yet and meets a condition.
  [[nodiscard]] Position first(std::function<bool(NamedArray const&)> const& condition) const
  {
    for (std::size_t i = 0; i < arrays.size(); ++i)
      if (!taken[i] && condition(arrays[i])) return i;
    return std::nullopt;
  }

  [[nodiscard]] std::size_t asked(std::string const& name) const
  {
    std::size_t const i = findArray(fileName, arrays, name);
    if (arrays[i].kind == NamedArray::Kind::Unreadable) fail(quoted(arrays[i].name) + ": " + arrays[i].why);
    return i;
  }

  [[nodiscard]] static bool canBeTime(NamedArray const& array)
  {
    return array.isNumbers(1) || array.isNumbers(2);
  }

  void findTime()
  {
    if (!options.time.empty()) {
      bool const isArray = std::any_of(arrays.begin(), arrays.end(), [&](NamedArray const& array) {
        return array.name == options.time || bareName(array.name) == options.time;
      });
      if (!isArray) return; // it may be one of the outputs
      roles.time = asked(options.time);
      if (!canBeTime(arrays[*roles.time])) fail("the time " + shown(*roles.time) + " is no row of numbers");
      take(*roles.time, "time", "as asked for");
      return;
    }
    roles.time = first([](NamedArray const& array) { return canBeTime(array) && isTimeName(array.name); });
    if (roles.time) take(*roles.time, "time", "by its name");
  }

  void findNames()
  {
    roles.parameterNames =
        first([](NamedArray const& array) { return array.isTexts() && isParameterNamesName(array.name); });
    if (roles.parameterNames) taken[*roles.parameterNames] = true;
    if (!options.names.empty()) return;
    roles.outputNames =
        first([](NamedArray const& array) { return array.isTexts() && isOutputNamesName(array.name); });
    if (roles.outputNames) taken[*roles.outputNames] = true;
  }

  /// Numbers of outputs that names tell; 0 if nothing does.
  [[nodiscard]] std::size_t namedOutputs() const
  {
    if (!options.names.empty()) return options.names.size();
    return roles.outputNames ? arrays[*roles.outputNames].shape.front() : 0;
  }

  void findValues()
  {
    if (!options.dataset.empty()) {
      std::size_t const i = asked(options.dataset);
      if (!arrays[i].isNumbers(3) && !arrays[i].isNumbers(2))
        fail(shown(i) + " cannot hold the values of a scan: two or three axes of numbers are needed");
      if (taken[i]) fail(shown(i) + " is asked for as values, and as something else");
      roles.values = {i};
      take(i, "output", "as asked for");
    } else if (!findCube()) {
      findSquares();
    }
    Shape const& shape = arrays[roles.values.front()].shape;
    if (std::find(shape.begin(), shape.end(), std::size_t(0)) != shape.end())
      fail("the array " + shown(roles.values.front()) + " is empty");
  }

  /// Whether there is an array of three axes. It is the only one.
  bool findCube()
  {
    std::string others;
    for (std::size_t i = 0; i < arrays.size(); ++i) {
      if (taken[i] || !arrays[i].isNumbers(3)) continue;
      if (!roles.values.empty()) others += ", " + shown(i);
      if (roles.values.empty()) roles.values = {i};
    }
    if (!others.empty())
      fail("several arrays could hold the values: " + shown(roles.values.front()) + others +
           "; name one of them as the data set");
    if (roles.values.empty()) return false;
    take(roles.values.front(), "output", "the only array of numbers with three axes");
    return true;
  }

  /// Arrays of two axes and one shape, that of the time if it tells.
  void findSquares()
  {
    std::vector<std::size_t> candidates;
    for (std::size_t i = 0; i < arrays.size(); ++i)
      if (!taken[i] && arrays[i].isNumbers(2) && !isParameterTable(i) && fitsTime(arrays[i].shape))
        candidates.push_back(i);
    if (candidates.empty()) failWithoutValues();
    for (std::size_t const i : candidates)
      if (arrays[i].shape != arrays[candidates.front()].shape)
        fail("arrays of different shapes could hold the values: " + shown(candidates.front()) + " and " +
             shown(i) + "; name one of them as the data set, or add an array \"time\"");
    roles.values = std::move(candidates);
    for (std::size_t const i : roles.values)
      take(i, "output",
           roles.values.size() > 1 ? "an array of runs and times, as others are"
                                   : "the only array of numbers with two axes");
  }

  /// Whether an array of two axes is a table of parameters. Short names may be those of an output as well: if
  /// another array has the shape, unless there are as many names of parameters.
  [[nodiscard]] bool isParameterTable(std::size_t i) const
  {
    if (!isParameterTableName(arrays[i].name)) return false;
    if (!isOneOf(arrays[i].name, {"x", "theta"})) return true;
    Shape const& shape = arrays[i].shape;
    if (roles.parameterNames && arrays[*roles.parameterNames].shape.front() == shape.back()) return true;
    for (std::size_t other = 0; other < arrays.size(); ++other)
      if (other != i && !taken[other] && arrays[other].isNumbers(2) && arrays[other].shape == shape)
        return false;
    return true;
  }

  [[noreturn]] void failWithoutValues() const
  {
    std::string message =
        "holds no values of a scan: an array of runs x times x outputs, or arrays of runs x times";
    if (roles.time) message += " whose times are as many as those of " + shown(*roles.time);
    if (!unreadable.empty())
      message += "; " + quoted(arrays[unreadable.front()].name) + ": " + arrays[unreadable.front()].why;
    fail(message);
  }

  /// Whether an array of runs and times has the shape of the time.
  [[nodiscard]] bool fitsTime(Shape const& shape) const
  {
    if (!roles.time) return true;
    Shape const& time = arrays[*roles.time].shape;
    return time.size() == 2 ? shape == time : shape[0] == time[0] || shape[1] == time[0];
  }

  /// All ways to see the axes of the values, the usual one first.
  [[nodiscard]] std::vector<ValueAxes> waysToSee(std::size_t axes) const
  {
    if (axes == 3) return {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
    std::vector<ValueAxes> ways = {{0, 1, std::nullopt}, {1, 0, std::nullopt}};
    // Of one run, but only if names speak for it.
    if (roles.values.size() == 1 && namedOutputs() > 1)
      ways.insert(ways.end(), {{std::nullopt, 0, 1}, {std::nullopt, 1, 0}});
    return ways;
  }

  [[nodiscard]] bool agreesWithTime(ValueAxes const& axes, Shape const& shape) const
  {
    if (!roles.time) return true;
    Shape const& time = arrays[*roles.time].shape;
    if (time.back() != ValueAxes::length(shape, axes.times)) return false;
    return time.size() == 1 || time.front() == ValueAxes::length(shape, axes.runs);
  }

  /// Whether the dimensions that are named like times or runs are those.
  [[nodiscard]] bool agreesWithNames(ValueAxes const& axes, std::vector<std::string> const& names) const
  {
    for (std::size_t axis = 0; axis < names.size(); ++axis) {
      bool const isTime = isTimeName(names[axis]) || (roles.time && names[axis] == arrays[*roles.time].name);
      if (isTime && axes.times != axis) return false;
      if (isRunName(names[axis]) && axes.runs != axis) return false;
    }
    return true;
  }

  /// Arrays with one value per run, if the runs lie along that axis.
  [[nodiscard]] std::size_t arraysPerRun(ValueAxes const& axes, Shape const& shape) const
  {
    std::size_t const runs = ValueAxes::length(shape, axes.runs);
    std::size_t number = 0;
    for (std::size_t i = 0; i < arrays.size(); ++i)
      if (!taken[i] && arrays[i].kind != NamedArray::Kind::Unreadable && !arrays[i].shape.empty() &&
          (arrays[i].shape.size() == 1 || isParameterTableName(arrays[i].name)) &&
          arrays[i].shape.front() == runs)
        ++number;
    return number;
  }

  /// The ways that meet a condition; all if none does.
  static std::vector<ValueAxes> narrowed(std::vector<ValueAxes> const& ways,
                                         std::function<bool(ValueAxes const&)> const& condition)
  {
    std::vector<ValueAxes> kept;
    for (ValueAxes const& axes : ways)
      if (condition(axes)) kept.push_back(axes);
    return kept.empty() ? ways : kept;
  }

  void findAxes()
  {
    std::size_t const values = roles.values.front();
    Shape const& shape = arrays[values].shape;
    std::vector<ValueAxes> ways = waysToSee(shape.size());
    std::size_t const all = ways.size();
    ways = narrowed(ways, [&](ValueAxes const& axes) { return agreesWithTime(axes, shape); });
    if (!agreesWithTime(ways.front(), shape))
      fail("the time " + shown(*roles.time) + " fits no axis of the values " + shown(values) +
           "; ignore it if it is something else");
    std::size_t const ofThatLength = ways.size();
    ways = narrowed(ways,
                    [&](ValueAxes const& axes) { return agreesWithNames(axes, arrays[values].axisNames); });
    bool const areNamed = ways.size() == 1 && ofThatLength > 1;
    std::size_t const outputs = namedOutputs();
    ways = narrowed(ways,
                    [&](ValueAxes const& axes) { return ValueAxes::length(shape, axes.outputs) == outputs; });
    std::size_t most = 0;
    for (ValueAxes const& axes : ways) most = std::max(most, arraysPerRun(axes, shape));
    ways = narrowed(ways, [&](ValueAxes const& axes) { return arraysPerRun(axes, shape) == most; });
    bool const usual = ways.front().runs == std::size_t(0) && ways.front().times == std::size_t(1);
    if (ways.size() > 1 && !usual)
      fail("the axes of the values " + shown(values) +
           " could be runs, times and outputs in more than one way" + axisAdvice);
    roles.axes = ways.front();
    if (areNamed)
      report.findings.push_back(
          {"the axes of the values are " + axesText(), "their dimensions are named so", false});
    else if (shape.size() == 2 && roles.values.size() == 1 && most == 0 && namedOutputs() == 0)
      report.findings.push_back(
          {"the axes of the values are " + axesText(),
           "if the " + std::to_string(runs()) + " runs are outputs of a single run, name them with --names",
           true});
    else
      tellAxes(ways.size() < all, ways.size() > 1, usual);
  }

  [[nodiscard]] std::string axesText() const
  {
    std::vector<std::string> words(arrays[roles.values.front()].shape.size());
    if (roles.axes.runs) words[*roles.axes.runs] = "runs";
    if (roles.axes.times) words[*roles.axes.times] = "times";
    if (roles.axes.outputs) words[*roles.axes.outputs] = "outputs";
    std::string text = words.front();
    for (std::size_t axis = 1; axis < words.size(); ++axis) text += " x " + words[axis];
    return text;
  }

  void tellAxes(bool lengthsTell, bool othersFit, bool usual)
  {
    std::string why = "no other order fits the lengths of the other arrays";
    if (othersFit)
      why = lengthsTell ? "the usual order among those that fit" : "the usual order; no array tells another";
    report.findings.push_back({"the axes of the values are " + axesText(), why, othersFit || !usual});
  }

  /// Names of another number than the outputs are none.
  void checkNames()
  {
    std::size_t const outputs =
        roles.values.size() > 1 ? roles.values.size()
                                : ValueAxes::length(arrays[roles.values.front()].shape, roles.axes.outputs);
    if (!options.names.empty() && options.names.size() != outputs)
      fail(std::to_string(options.names.size()) + " names are given for " + std::to_string(outputs) +
           " outputs");
    if (!roles.outputNames) return;
    std::size_t const i = *std::exchange(roles.outputNames, std::nullopt);
    taken[i] = false;
    if (roles.values.size() > 1 || arrays[i].shape.front() != outputs) return; // perhaps one text per run
    roles.outputNames = i;
    take(i, "ignored", "names the outputs");
  }

  [[nodiscard]] std::size_t runs() const
  {
    return ValueAxes::length(arrays[roles.values.front()].shape, roles.axes.runs);
  }

  [[nodiscard]] bool hasOnePerRun(NamedArray const& array) const
  {
    return (array.isNumbers(1) || array.isTexts()) && array.shape.front() == runs();
  }

  void findRunKeys()
  {
    if (!options.run.empty()) {
      std::size_t const i = asked(options.run);
      if (taken[i] || !hasOnePerRun(arrays[i]))
        fail("the names of runs " + shown(i) + " are not one for each of " + std::to_string(runs()) +
             " runs");
      roles.runKeys = i;
      take(i, "run", "as asked for");
      return;
    }
    roles.runKeys =
        first([this](NamedArray const& array) { return hasOnePerRun(array) && isRunName(array.name); });
    if (roles.runKeys) take(*roles.runKeys, "run", "by its name");
  }

  void findTable()
  {
    roles.parameterTable = first([this](NamedArray const& array) {
      return array.isNumbers(2) && isParameterTableName(array.name) && array.shape.front() == runs();
    });
    if (roles.parameterTable) take(*roles.parameterTable, "parameter", "by its name, a row per run");
    if (!roles.parameterNames) return;
    std::size_t const i = *std::exchange(roles.parameterNames, std::nullopt);
    taken[i] = false;
    if (!roles.parameterTable || arrays[i].shape.front() != arrays[*roles.parameterTable].shape.back())
      return;
    roles.parameterNames = i;
    take(i, "ignored", "names the parameters");
  }

  void findParameters()
  {
    for (std::size_t i = 0; i < arrays.size(); ++i) {
      if (taken[i] || !hasOnePerRun(arrays[i])) continue;
      roles.parameters.push_back(i);
      take(i, "parameter", "one value per run");
    }
  }

  void tell()
  {
    for (std::size_t i = 0; i < arrays.size(); ++i)
      if (!taken[i])
        take(i, "ignored",
             arrays[i].kind == NamedArray::Kind::Unreadable
                 ? arrays[i].why
                 : "its shape, " + shapeText(arrays[i].shape) + ", fits neither " + std::to_string(runs()) +
                       " runs nor anything else");
    std::sort(found.begin(), found.end(), [](auto const& a, auto const& b) { return a.first < b.first; });
    for (auto& [position, finding] : found) report.columns.push_back(std::move(finding));
  }

  std::string const& fileName;
  std::vector<NamedArray> const& arrays;
  ReadOptions const& options;
  ReadReport& report;
  std::vector<bool> taken;
  std::vector<std::size_t> unreadable;
  std::vector<std::pair<std::size_t, ColumnFinding>> found;
  ArrayRoles roles;
};

} // namespace

bool isTimeName(std::string const& name)
{
  return isOneOf(name, {"time", "times", "t", "timepoint", "timepoints", "timecourse", "tspan"});
}

std::string nameOfTime(std::string const& name)
{
  return isTimeName(name) ? "Time" : name;
}

std::vector<NamedArray> withPlainVectors(std::vector<NamedArray> arrays)
{
  bool const hasLonger = std::any_of(arrays.begin(), arrays.end(), [](NamedArray const& array) {
    return array.kind == NamedArray::Kind::Numbers && array.shape.size() > 1 &&
           *std::min_element(array.shape.begin(), array.shape.end()) > 1;
  });
  bool const hasTimeOrCube = std::any_of(arrays.begin(), arrays.end(), [](NamedArray const& array) {
    return isTimeName(array.name) || array.isNumbers(3);
  });
  if (!hasLonger || !hasTimeOrCube) return arrays;
  for (NamedArray& array : arrays) {
    if (!array.isNumbers(2) || isParameterTableName(array.name) ||
        std::min(array.shape[0], array.shape[1]) != 1)
      continue;
    bool const isRow = array.shape[0] == 1;
    array.shape = {std::max(array.shape[0], array.shape[1])};
    if (!isRow) continue;
    array.grain = 1;
    array.numbers = [row = array.numbers, length = array.shape[0]](std::size_t first, std::size_t count,
                                                                   double* to) {
      std::vector<double> values(length);
      row(0, 1, values.data());
      std::copy_n(values.begin() + static_cast<std::ptrdiff_t>(first), count, to);
    };
  }
  return arrays;
}

std::size_t findArray(std::string const& file, std::vector<NamedArray> const& arrays, std::string const& name)
{
  std::vector<std::size_t> bare;
  for (std::size_t i = 0; i < arrays.size(); ++i) {
    if (arrays[i].name == name || '/' + arrays[i].name == name) return i;
    if (bareName(arrays[i].name) == name) bare.push_back(i);
  }
  if (bare.size() == 1) return bare.front();
  constexpr std::size_t mostShown = 20;
  std::string there;
  for (std::size_t i = 0; i < std::min(arrays.size(), mostShown); ++i)
    there += (i > 0 ? ", " : "") + quoted(arrays[i].name);
  if (arrays.size() > mostShown) there += " and others";
  throw ScanError(file, (bare.empty() ? "there is no array " : "several arrays have the name ") +
                            quoted(name) + "; there are " + there);
}

ArrayRoles findRoles(std::string const& file, std::vector<NamedArray> const& arrays,
                     ReadOptions const& options, ReadReport& report)
{
  return RoleFinder(file, arrays, options, report).find();
}

} // namespace runsieve
