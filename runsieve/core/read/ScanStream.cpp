#include <runsieve/core/read/ScanStream.h>

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace runsieve {

namespace {

/// Memory that is taken for a length before its bytes are there.
constexpr std::size_t onTrust = 1 << 16;

constexpr std::size_t mostBytes = std::size_t(64) << 30;

template <class Number> void putNumber(Number number, PutBytes const& put)
{
  put(&number, sizeof number);
}

template <class Number> Number getNumber(GetBytes const& get)
{
  Number number;
  get(&number, sizeof number);
  return number;
}

/// Fills a row of plain values, piece by piece.
template <class Row> Row getRow(GetBytes const& get)
{
  using Value = typename Row::value_type;
  auto left = getNumber<std::uint64_t>(get);
  if (left > mostBytes / sizeof(Value)) throw std::length_error("absurd length");
  Row row;
  for (std::size_t held = 0; left > 0; held = row.size()) {
    std::size_t const piece = std::min<std::size_t>(left, std::max(held, onTrust));
    row.resize(held + piece);
    get(row.data() + held, piece * sizeof(Value));
    left -= piece;
  }
  return row;
}

template <class Row> void putRow(Row const& row, PutBytes const& put)
{
  putNumber<std::uint64_t>(row.size(), put);
  if (!row.empty()) put(row.data(), row.size() * sizeof(typename Row::value_type));
}

template <class Item, class PutItem>
void putAll(std::vector<Item> const& items, PutBytes const& put, PutItem putItem)
{
  putNumber<std::uint64_t>(items.size(), put);
  for (Item const& item : items) putItem(item);
}

template <class Item, class GetItem> std::vector<Item> getAll(GetBytes const& get, GetItem getItem)
{
  std::vector<Item> items;
  for (auto left = getNumber<std::uint64_t>(get); left > 0; --left) items.push_back(getItem());
  return items;
}

void putLabel(ColumnLabel const& label, PutBytes const& put)
{
  for (std::string const* text : {&label.name, &label.unit, &label.label, &label.type}) putText(*text, put);
}

ColumnLabel getLabel(GetBytes const& get)
{
  ColumnLabel label;
  for (std::string* text : {&label.name, &label.unit, &label.label, &label.type}) *text = getText(get);
  return label;
}

void putReport(ReadReport const& report, PutBytes const& put)
{
  putText(report.format, put);
  putAll(report.columns, put, [&](ColumnFinding const& column) {
    for (std::string const* text : {&column.header, &column.role, &column.why}) putText(*text, put);
  });
  putAll(report.findings, put, [&](Finding const& finding) {
    putText(finding.what, put);
    putText(finding.why, put);
    putNumber<std::uint8_t>(finding.guess ? 1 : 0, put);
  });
}

ReadReport getReport(GetBytes const& get)
{
  ReadReport report;
  report.format = getText(get);
  report.columns = getAll<ColumnFinding>(get, [&] {
    ColumnFinding column;
    for (std::string* text : {&column.header, &column.role, &column.why}) *text = getText(get);
    return column;
  });
  report.findings = getAll<Finding>(get, [&] {
    Finding finding;
    finding.what = getText(get);
    finding.why = getText(get);
    finding.guess = getNumber<std::uint8_t>(get) != 0;
    return finding;
  });
  return report;
}

ScanRun getRun(GetBytes const& get)
{
  ScanRun run;
  run.key = getText(get);
  auto const status = getNumber<std::uint8_t>(get);
  if (status > static_cast<std::uint8_t>(RunStatus::Failed)) throw std::length_error("no such status");
  run.status = static_cast<RunStatus>(status);
  run.end = static_cast<std::size_t>(getNumber<std::uint64_t>(get));
  return run;
}

} // namespace

void putText(std::string const& text, PutBytes const& put)
{
  putRow(text, put);
}

std::string getText(GetBytes const& get)
{
  return getRow<std::string>(get);
}

void putScan(ScanFile scanFile, PutBytes const& put)
{
  Scan& scan = scanFile.scan;
  putReport(scanFile.report, put);
  putLabel(scan.time, put);
  putRow(scan.times, put);
  putAll(scan.runs, put, [&](ScanRun const& run) {
    putText(run.key, put);
    putNumber(static_cast<std::uint8_t>(run.status), put);
    putNumber<std::uint64_t>(run.end, put);
  });
  putAll(scan.parameters, put, [&](ScanParameter const& parameter) {
    putLabel(parameter.label, put);
    putRow(parameter.values, put);
    putAll(parameter.texts, put, [&](std::string const& text) { putText(text, put); });
  });
  putNumber<std::uint64_t>(scan.outputs.size(), put);
  for (ScanOutput& output : scan.outputs) {
    putLabel(output.label, put);
    put(output.values.get(), scan.rows() * sizeof(double));
    output.values.reset();
  }
}

ScanFile getScan(GetBytes const& get)
{
  ScanFile result;
  Scan& scan = result.scan;
  result.report = getReport(get);
  scan.time = getLabel(get);
  scan.times = getRow<std::vector<double>>(get);
  scan.runs = getAll<ScanRun>(get, [&] { return getRun(get); });
  scan.parameters = getAll<ScanParameter>(get, [&] {
    ScanParameter parameter;
    parameter.label = getLabel(get);
    parameter.values = getRow<std::vector<double>>(get);
    parameter.texts = getAll<std::string>(get, [&] { return getText(get); });
    return parameter;
  });
  std::size_t const most = mostBytes / sizeof(double);
  if (!scan.times.empty() && scan.runs.size() > most / scan.times.size())
    throw std::length_error("absurd length");
  for (auto left = getNumber<std::uint64_t>(get); left > 0; --left) {
    ColumnLabel label = getLabel(get);
    get(scan.addOutput(std::move(label)), scan.rows() * sizeof(double));
  }
  return result;
}

} // namespace runsieve
