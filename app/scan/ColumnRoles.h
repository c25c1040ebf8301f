#pragma once

#include "app/scan/Header.h"
#include "app/scan/ScanReader.h"

#include <runsieve/records/TypedConcentrationName.h>

#include <string>
#include <vector>

namespace runsieve::app {

/// What a column of a scan file is.
enum class Role
{
  Output,
  Time,
  Run,
  Parameter,
  Free,   ///< an output or a parameter: the values will tell
  Ignored ///< not part of the scan
};

struct FileColumn
{
  std::string header; ///< name in the file
  Role role = Role::Free;
  Kestrane::TypedConcentrationName name; ///< name in the record
};

/// Tells what each column is from the header alone. There is exactly one of role Time and at most one of role
/// Run. \throw ScanError if there is no time column, or a named column is missing, or two could be the time
/// or the run.
[[nodiscard]] std::vector<FileColumn> findRoles(std::string const& file, Header const& header,
                                                ReadOptions const& options);

} // namespace runsieve::app
