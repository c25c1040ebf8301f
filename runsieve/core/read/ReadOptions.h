#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace runsieve {

/// How to read a scan. The defaults find everything out by themselves; what is set here is not guessed.
/// Columns are named as in the file, or by their bare name without type or unit.
struct ReadOptions
{
  std::string time;                                   ///< the time column
  std::string run;                                    ///< the column that tells the runs apart
  std::optional<std::vector<std::string>> parameters; ///< these columns and no others
  std::vector<std::string> outputs;                   ///< outputs even if they never change within a run
  std::vector<std::string> ignore;                    ///< not part of the scan
  std::vector<std::string> missing;                   ///< texts or numbers for "no value", besides the usual
  std::vector<std::string> names;                     ///< of all columns, for a file without a header
  char decimal = 0;                                   ///< '.' or ','
  char delimiter = 0;                                 ///< ' ' means any run of blanks and tabs
  std::string dataset;        ///< path of a data set in an HDF5 file, or name in an npz
  std::string parametersFile; ///< table of the parameters of each run; a path as it is or beside the scan
  bool exactTimes = false;    ///< runs are not put on a common time grid
  unsigned threads = 0;       ///< 0: as many as the machine has, at most 4
  /// Told the share that is done, 0 to 1, now and then, by the thread that reads. False stops the reading,
  /// which then throws ReadCancelled.
  std::function<bool(double)> progress;
};

} // namespace runsieve
