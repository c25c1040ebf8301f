#include "app/scan/ReadingText.h"

#include <algorithm>

namespace runsieve::app {

namespace {

using Lines = std::vector<std::string>;

void addStatus(Lines& lines, Scan const& scan, RunStatus status)
{
  constexpr std::size_t most = 20;
  Lines const keys = keysOf(scan, status);
  if (keys.empty()) return;
  std::string line = statusName(status);
  line.resize(11, ' ');
  line += std::to_string(keys.size()) + (keys.size() == 1 ? " run: " : " runs: ");
  for (std::size_t i = 0; i < std::min(keys.size(), most); ++i) line += (i > 0 ? ", " : "") + keys[i];
  if (keys.size() > most) line += " and " + std::to_string(keys.size() - most) + " more";
  lines.push_back(line);
}

} // namespace

std::vector<std::string> readingLines(Scan const& scan, ReadReport const& report)
{
  Lines lines;
  addStatus(lines, scan, RunStatus::Failed);
  addStatus(lines, scan, RunStatus::Short);
  if (!report.format.empty()) lines.push_back("read as    " + report.format);
  for (ColumnFinding const& column : report.columns)
    if (column.role == "ignored" && !column.header.empty())
      lines.push_back("ignored    " + column.header + ": " + column.why);
  for (Finding const& finding : report.findings)
    lines.push_back((finding.guess ? "guessed    " : "note       ") + finding.what +
                    (finding.why.empty() ? "" : ": " + finding.why));
  return lines;
}

std::vector<std::string> keysOf(Scan const& scan, RunStatus status)
{
  Lines keys;
  for (ScanRun const& run : scan.runs)
    if (run.status == status) keys.push_back(run.key);
  return keys;
}

std::size_t remarks(Scan const& scan, ReadReport const& report)
{
  return readingLines(scan, report).size() - (report.format.empty() ? 0 : 1);
}

} // namespace runsieve::app
