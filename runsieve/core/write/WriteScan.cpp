#include <runsieve/core/write/WriteScan.h>

#include <runsieve/core/files/SafeFile.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/Decimal.h>
#include <runsieve/core/text/FieldText.h>
#include <runsieve/core/write/RowWriter.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <ostream>

namespace runsieve {

namespace {

using Each = WrittenColumn::Each;

// An output of a free name would be a parameter if it never changed.
std::string nameOf(ColumnLabel const& output)
{
  return output.type.empty() ? "Molecule: " + output.name : output.fullName();
}

std::string nameOfTime(ColumnLabel const& time)
{
  bool const isTaken = trimmed(time.name).empty() || time.name == "Run Index";
  return ": " + (isTaken ? "Time" : time.name) + (time.unit.empty() ? "" : " [" + time.unit + ']');
}

/// The keys of runs as numbers, if they come back as the same texts in the same order; else they are written
/// as texts, as those of "01" and "1e3" are.
std::optional<std::vector<double>> numbersOf(std::vector<ScanRun> const& runs)
{
  std::vector<double> numbers;
  for (ScanRun const& run : runs) {
    auto const number = parseNumber(run.key);
    if (!number || !std::isfinite(*number) || decimal(*number) != run.key) return std::nullopt;
    if (!numbers.empty() && !(*number > numbers.back())) return std::nullopt;
    numbers.push_back(*number);
  }
  return numbers;
}

/// Refuses what cannot stand in a field.
class Fields
{
public:
  explicit Fields(std::string const& nameOfFile) : file(nameOfFile) {}

  void check(Scan const& scan) const
  {
    check("name of the time", scan.time.name);
    check("unit of the time", scan.time.unit);
    for (ScanRun const& run : scan.runs) {
      check("name of a run", run.key);
      if (trimmed(run.key).empty()) throw ScanError(file, "a run without a name cannot be written as text");
    }
    for (ScanOutput const& output : scan.outputs) check("an output", output.label);
    for (ScanParameter const& parameter : scan.parameters) {
      check("a parameter", parameter.label);
      for (std::string const& text : parameter.texts) check("value of " + parameter.label.name, text);
    }
  }

private:
  void check(std::string const& what, ColumnLabel const& label) const
  {
    check("name of " + what, label.fullName());
  }

  void check(std::string const& what, std::string const& text) const
  {
    constexpr std::string_view lineEnds("\n\r\0", 3);
    if (text.find_first_of(lineEnds) == std::string::npos) return;
    throw ScanError(file, "the " + what + ", " + quoted(text) +
                              ", has a line end or a null character; neither can be written as text");
  }

  std::string const& file;
};

/// The columns of a scan, and what they need to live.
struct Written
{
  std::vector<double> keys;
  std::vector<WrittenColumn> columns;
};

std::vector<std::string> textsOf(ScanParameter const& parameter)
{
  std::vector<std::string> texts;
  for (double const value : parameter.values)
    texts.push_back(std::isnan(value) ? std::string() : parameter.texts[static_cast<std::size_t>(value)]);
  return texts;
}

void addRuns(Written& written, Scan const& scan)
{
  WrittenColumn column{": Run Index", nullptr, {}, Each::Run};
  if (auto numbers = numbersOf(scan.runs)) {
    written.keys = std::move(*numbers);
    column.numbers = written.keys.data();
  } else {
    for (ScanRun const& run : scan.runs) column.texts.push_back(run.key);
  }
  written.columns.push_back(std::move(column));
}

// Whether the values of a run that failed don't show it.
bool isSaidToHaveFailed(Scan const& scan, std::size_t run)
{
  if (scan.runs[run].status != RunStatus::Failed || scan.runs[run].end == 0) return false;
  for (std::size_t i = 0; i < scan.outputs.size(); ++i) {
    double const* const values = scan.valuesOf(i, run);
    if (!std::all_of(values, values + scan.runs[run].end, [](double value) { return std::isfinite(value); }))
      return false;
  }
  return true;
}

void addStatus(Written& written, Scan const& scan)
{
  bool any = false;
  for (std::size_t run = 0; run < scan.runs.size(); ++run) any = any || isSaidToHaveFailed(scan, run);
  if (!any) return;
  WrittenColumn column{"status", nullptr, {}, Each::Run};
  for (ScanRun const& run : scan.runs)
    column.texts.emplace_back(run.status == RunStatus::Failed ? "failed" : "ok");
  written.columns.push_back(std::move(column));
}

void write(Scan const& scan, std::string const& file, TextSink const& sink)
{
  Fields(file).check(scan);
  Written written;
  for (ScanOutput const& output : scan.outputs)
    written.columns.push_back({nameOf(output.label), output.values.get(), {}, Each::Row});
  written.columns.push_back({nameOfTime(scan.time), scan.times.data(), {}, Each::Time});
  addRuns(written, scan);
  for (ScanParameter const& parameter : scan.parameters) {
    WrittenColumn column{"Parameter: " + parameter.label.name, parameter.values.data(), {}, Each::Run};
    if (parameter.isText()) column.texts = textsOf(parameter);
    written.columns.push_back(std::move(column));
  }
  addStatus(written, scan);
  writeRows(written.columns, scan.runs.size(), scan.times.size(), sink);
}

void writeSome(Scan const& scan, RunSet const* runs, std::string const& file, TextSink const& sink)
{
  if (runs == nullptr)
    write(scan, file, sink);
  else
    write(subsetOf(scan, *runs), file, sink);
}

} // namespace

void writeScan(Scan const& scan, std::string const& path, RunSet const* runs)
{
  SafeFile file(path);
  writeSome(scan, runs, path, [&](std::string_view text) { file.write(text); });
  file.commit();
}

void writeScan(Scan const& scan, std::ostream& stream, RunSet const* runs)
{
  writeSome(scan, runs, "output stream", [&](std::string_view text) {
    if (!stream.write(text.data(), static_cast<std::streamsize>(text.size())))
      throw ScanError("output stream", "cannot be written");
  });
  if (!stream.flush()) throw ScanError("output stream", "cannot be written");
}

Scan subsetOf(Scan const& scan, RunSet const& runs)
{
  Scan some;
  some.time = scan.time;
  some.times = scan.times;
  std::vector<std::size_t> const members = runs.members();
  for (std::size_t const run : members) some.runs.push_back(scan.runs[run]);
  for (std::size_t i = 0; i < scan.outputs.size(); ++i) {
    double* to = some.addOutput(scan.outputs[i].label);
    for (std::size_t const run : members) to = std::copy_n(scan.valuesOf(i, run), scan.times.size(), to);
  }
  for (ScanParameter const& parameter : scan.parameters) {
    some.parameters.push_back({parameter.label, {}, parameter.texts});
    for (std::size_t const run : members) some.parameters.back().values.push_back(parameter.values[run]);
  }
  return some;
}

} // namespace runsieve
