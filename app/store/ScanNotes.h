#pragma once

#include <runsieve/core/scan/Scan.h>
#include <runsieve/records/LinePlotTable.h>

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace runsieve::app {

/// What a scan has and its record for the plots, which is all numbers, has not.
struct ScanNotes
{
  std::vector<std::string> runs;   ///< keys of all runs; empty if they are the numbers of the record
  std::vector<std::size_t> failed; ///< positions of runs that failed though their values don't show it
  /// For each text parameter its position among the parameters and its texts, which the record numbers from
  /// 0.
  std::vector<std::pair<std::size_t, std::vector<std::string>>> texts;

  [[nodiscard]] bool isEmpty() const { return runs.empty() && failed.empty() && texts.empty(); }
};

/// \param record that of linePlotTableOf(scan)
[[nodiscard]] ScanNotes notesOf(Scan const& scan, boost::shared_ptr<LinePlotTable> const& record);

/// Gives the scan of a record back what notesOf() noted. \throw std::runtime_error if the notes are of
/// another scan
void applyNotes(ScanNotes const& notes, Scan& scan);

} // namespace runsieve::app
