#include <runsieve/core/read/SedmlReport.h>

#include <runsieve/core/read/ArrayRoles.h>
#include <runsieve/core/read/ArrayScan.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace runsieve {

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// The type of a data set without a result.
constexpr std::string_view noType = "__None__";

/// What one SED-ML data set has of the runs and times of the report; the rest is padding.
struct Extent
{
  std::size_t runs = 0;
  std::size_t times = 0;
};

/// The numbers of a text such as "5,11"; nothing for another text.
std::optional<std::vector<std::size_t>> lengthsOf(std::string_view text)
{
  std::vector<std::size_t> lengths;
  while (!(text = trimmed(text)).empty()) {
    std::size_t length = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
    if (error != std::errc()) return std::nullopt;
    lengths.push_back(length);
    text = trimmed(text.substr(static_cast<std::size_t>(end - text.data())));
    if (text.empty()) break;
    if (text.front() != ',') return std::nullopt;
    text.remove_prefix(1);
  }
  return lengths;
}

/// Whether a name has the word "time" in it, as "task1_time" does.
bool hasTimeWord(std::string const& name)
{
  std::string word;
  for (char const symbol : name + ' ') {
    if (std::isalpha(static_cast<unsigned char>(symbol)) != 0) {
      word += static_cast<char>(std::tolower(static_cast<unsigned char>(symbol)));
      continue;
    }
    if (word == "time") return true;
    word.clear();
  }
  return false;
}

class SedmlReader
{
public:
  SedmlReader(std::string const& file, Hdf5File const& hdf5, NamedArray const& dataSet,
              ReadOptions const& options)
      : fileName(file), data(dataSet), options(options)
  {
    std::size_t const number = dataSet.shape.front();
    labels = hdf5.texts(dataSet.name, "sedmlDataSetLabels").value_or(std::vector<std::string>());
    ids = hdf5.texts(dataSet.name, "sedmlDataSetIds").value_or(std::vector<std::string>());
    types = hdf5.texts(dataSet.name, "sedmlDataSetDataTypes").value_or(std::vector<std::string>());
    shapes = hdf5.texts(dataSet.name, "sedmlDataSetShapes").value_or(std::vector<std::string>());
    for (auto* list : {&labels, &ids, &types, &shapes})
      if (!list->empty() && list->size() != number)
        fail("has " + std::to_string(number) + " data sets, but attributes for " +
             std::to_string(list->size()));
  }

  ScanFile read()
  {
    result.report.format = "HDF5, report of SED-ML";
    checkAxes();
    chooseNames();
    result.scan.runs = countedRuns(runs, result.report);
    auto const time = findTime();
    setTimes(time);
    std::size_t const number = data.shape.front();
    for (std::size_t i = 0; i < number; ++i) {
      ColumnFinding finding = {names[i], "time", options.time.empty() ? "by its name" : "as asked for"};
      if (i != time) finding = readDataSet(i);
      result.report.columns.push_back(std::move(finding));
      tellProgress(options, static_cast<double>(i + 1) / static_cast<double>(number));
    }
    leaveOutMissing(options, result);
    finishScan(fileName, options, result.scan);
    return std::move(result);
  }

private:
  [[noreturn]] void fail(std::string const& message) const
  {
    throw ScanError(fileName, "the report " + quoted(data.name) + ' ' + message);
  }

  /// Axes between the data sets and the times that count to one are no axes of their own.
  void checkAxes()
  {
    std::size_t repeats = 0;
    runs = 1;
    times = data.shape.back();
    for (std::size_t axis = 1; axis + 1 < data.shape.size(); ++axis) {
      if (data.shape[axis] != 1) ++repeats;
      runs *= data.shape[axis];
    }
    if (repeats > 1)
      fail("is of nested repeats (" + shapeText(data.shape) + "); save a report of one repeated task");
    if (data.shape.front() == 0 || runs == 0 || times == 0) fail("is empty");
  }

  /// Labels, or ids where labels do not tell the data sets apart.
  void chooseNames()
  {
    std::size_t const number = data.shape.front();
    names = labels.empty() ? ids : labels;
    names.resize(number);
    for (std::size_t i = 0; i < number; ++i)
      if (names[i].empty())
        names[i] = ids.empty() || ids[i].empty() ? "output " + std::to_string(i + 1) : ids[i];
    std::unordered_set<std::string> const different(names.begin(), names.end());
    if (different.size() == number || ids.empty()) return;
    names = ids;
    result.report.findings.push_back(
        {"data sets are called by their ids", "several have the same label", false});
  }

  [[nodiscard]] bool isCalled(std::size_t i, std::string const& name) const
  {
    return names[i] == name || (!labels.empty() && labels[i] == name) || (!ids.empty() && ids[i] == name);
  }

  [[nodiscard]] std::optional<std::size_t> findTime() const
  {
    std::size_t const number = names.size();
    for (std::size_t i = 0; i < number; ++i)
      if (options.time.empty() ? isTimeName(names[i]) : isCalled(i, options.time)) return i;
    if (!options.time.empty()) fail("has no data set " + quoted(options.time));
    std::vector<std::size_t> like;
    for (std::size_t i = 0; i < number; ++i)
      if (hasTimeWord(names[i]) || (!ids.empty() && (isTimeName(ids[i]) || hasTimeWord(ids[i]))))
        like.push_back(i);
    if (like.size() > 1)
      fail("has several times, " + quoted(names[like[0]]) + " and " + quoted(names[like[1]]) +
           "; name one of them");
    if (like.empty()) return std::nullopt;
    return like.front();
  }

  [[nodiscard]] Extent extentOf(std::size_t i) const
  {
    Extent const whole = {runs, times};
    if (shapes.empty()) return whole;
    auto const lengths = lengthsOf(shapes[i]);
    if (!lengths) return whole;
    Extent extent = {1, 1};
    bool const hasTimes = lengths->size() + 1 == data.shape.size();
    for (std::size_t axis = 0; axis < lengths->size(); ++axis) {
      bool const isTimes = hasTimes && axis + 1 == lengths->size();
      std::size_t& length = isTimes ? extent.times : extent.runs;
      std::size_t const most = isTimes ? times : runs;
      length = length == 0 ? 0 : std::min((*lengths)[axis], most / length) * length;
    }
    return extent;
  }

  /// The values of a data set, runs x times, valid until the next call. What is stored together is read once.
  [[nodiscard]] double const* valuesOf(std::size_t i)
  {
    std::size_t const slice = runs * times;
    if (i < heldFrom || i >= heldTo) {
      std::size_t const grain = std::clamp<std::size_t>(data.grain, 1, data.shape.front());
      heldFrom = i / grain * grain;
      heldTo = std::min(heldFrom + grain, data.shape.front());
      held.resize((heldTo - heldFrom) * slice);
      data.numbers(heldFrom, heldTo - heldFrom, held.data());
    }
    return held.data() + (i - heldFrom) * slice;
  }

  /// The first times of a data set in each run, NaN for what is padding.
  void copyValues(std::size_t i, std::size_t length, double* to)
  {
    Extent const extent = extentOf(i);
    double const* const values = valuesOf(i);
    for (std::size_t run = 0; run < runs; ++run)
      for (std::size_t t = 0; t < length; ++t)
        *to++ = run < extent.runs && t < extent.times ? values[run * times + t] : nan;
  }

  void setTimes(std::optional<std::size_t> time)
  {
    Scan& scan = result.scan;
    if (!time) {
      scan.time.name = "Time";
      scan.times = countedTimes(times, result.report);
      return;
    }
    scan.time.name = nameOfTime(names[*time]);
    std::vector<double> values(runs * times);
    copyValues(*time, times, values.data());
    std::size_t length = times; // without what is padding in all runs
    auto const isPadding = [&](std::size_t t) {
      for (std::size_t run = 0; run < runs; ++run)
        if (!std::isnan(values[run * times + t])) return false;
      return true;
    };
    while (length > 0 && isPadding(length - 1)) --length;
    if (length == 0) fail("has no value of the time " + quoted(names[*time]));
    values.resize(runs * length);
    copyValues(*time, length, values.data());
    scan.times = commonTimes(fileName, names[*time], values, length);
  }

  ColumnFinding readDataSet(std::size_t i)
  {
    for (std::string const& name : options.ignore)
      if (isCalled(i, name)) return {names[i], "ignored", "as asked for"};
    if (!types.empty() && types[i] == noType) return {names[i], "ignored", "it has no result"};
    Scan& scan = result.scan;
    Extent const extent = extentOf(i);
    if (extent.times == 1 && scan.times.size() > 1) {
      ScanParameter parameter;
      parameter.label.name = names[i];
      parameter.values.resize(runs);
      copyValues(i, 1, parameter.values.data());
      scan.parameters.push_back(std::move(parameter));
      return {names[i], "parameter", "one value per run"};
    }
    if (!shapes.empty() && extent.times > scan.times.size())
      return {names[i], "ignored",
              "it has " + std::to_string(extent.times) + " values, and the time " +
                  std::to_string(scan.times.size())};
    copyValues(i, scan.times.size(), scan.addOutput({names[i], "", "", ""}));
    return {names[i], "output", "a data set of the report"};
  }

  std::string const& fileName;
  NamedArray const& data;
  ReadOptions const& options;
  std::vector<std::string> labels;
  std::vector<std::string> ids;
  std::vector<std::string> types;
  std::vector<std::string> shapes;
  std::vector<std::string> names;
  std::size_t runs = 0;
  std::size_t times = 0;
  std::vector<double> held;
  std::size_t heldFrom = 0;
  std::size_t heldTo = 0;
  ScanFile result;
};

} // namespace

SedmlKind sedmlKind(Hdf5File const& hdf5, NamedArray const& dataSet)
{
  if (dataSet.kind != NamedArray::Kind::Numbers || dataSet.shape.size() < 2) return SedmlKind::None;
  auto const type = hdf5.texts(dataSet.name, "_type");
  bool const isTyped = type && type->size() == 1;
  if (isTyped && type->front() == "sedml:Report") return SedmlKind::Report;
  bool const hasSets =
      hdf5.texts(dataSet.name, "sedmlDataSetLabels") || hdf5.texts(dataSet.name, "sedmlDataSetIds");
  if (!hasSets) return SedmlKind::None;
  return isTyped && type->front().rfind("sedml:Plot", 0) == 0 ? SedmlKind::Plot : SedmlKind::Report;
}

ScanFile readSedmlReport(std::string const& file, Hdf5File const& hdf5, NamedArray const& dataSet,
                         ReadOptions const& options)
{
  return SedmlReader(file, hdf5, dataSet, options).read();
}

} // namespace runsieve
