#include "app/store/ScanNotes.h"

#include <runsieve/adapters/ScanTable.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <stdexcept>

namespace runsieve::app {

namespace {

[[noreturn]] void failAsOfAnotherScan()
{
  throw std::runtime_error("the settings tell of other runs or parameters than the dump holds");
}

void nameRuns(std::vector<std::string> const& keys, Scan& scan)
{
  if (keys.empty()) return;
  if (keys.size() != scan.runs.size() ||
      std::set<std::string>(keys.begin(), keys.end()).size() != keys.size())
    failAsOfAnotherScan();
  for (std::size_t run = 0; run < keys.size(); ++run) scan.runs[run].key = keys[run];
}

void giveTexts(std::size_t position, std::vector<std::string> const& texts, Scan& scan)
{
  if (position >= scan.parameters.size()) failAsOfAnotherScan();
  ScanParameter& parameter = scan.parameters[position];
  for (double const value : parameter.values)
    if (!std::isnan(value) &&
        !(value >= 0.0 && value < static_cast<double>(texts.size()) && value == std::floor(value)))
      failAsOfAnotherScan();
  parameter.texts = texts;
}

} // namespace

ScanNotes notesOf(Scan const& scan, boost::shared_ptr<LinePlotTable> const& record)
{
  ScanNotes notes;
  Scan const plain = scanOf(record);
  for (std::size_t run = 0; run < scan.runs.size(); ++run)
    if (scan.runs[run].status == RunStatus::Failed && plain.runs[run].status != RunStatus::Failed)
      notes.failed.push_back(run);
  bool const isSame = std::equal(scan.runs.begin(), scan.runs.end(), plain.runs.begin(), plain.runs.end(),
                                 [](ScanRun const& a, ScanRun const& b) { return a.key == b.key; });
  for (ScanRun const& run : scan.runs)
    if (!isSame) notes.runs.push_back(run.key);
  for (std::size_t i = 0; i < scan.parameters.size(); ++i)
    if (scan.parameters[i].isText()) notes.texts.emplace_back(i, scan.parameters[i].texts);
  return notes;
}

void applyNotes(ScanNotes const& notes, Scan& scan)
{
  nameRuns(notes.runs, scan);
  for (std::size_t const run : notes.failed) {
    if (run >= scan.runs.size()) failAsOfAnotherScan();
    scan.runs[run].status = RunStatus::Failed;
  }
  for (auto const& [position, texts] : notes.texts) giveTexts(position, texts, scan);
}

} // namespace runsieve::app
