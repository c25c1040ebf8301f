#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <string>
#include <string_view>

namespace runsieve {

/// A file that takes the place of a former one only when it is complete.
///
/// The text goes to a new file beside the named one, which commit() renames; without commit() the new file
/// vanishes. A path that is no regular file (a pipe, a terminal) is written to directly. All failures throw
/// ScanError.
class RUNSIEVE_CORE_EXPORT SafeFile
{
public:
  explicit SafeFile(std::string const& path);
  SafeFile(SafeFile const&) = delete;
  SafeFile& operator=(SafeFile const&) = delete;
  ~SafeFile();

  void write(std::string_view text);
  void commit();

private:
  void openDirectly();
  void openAside();
  [[noreturn]] void fail() const;

  std::string path;   ///< as the user knows it
  std::string target; ///< with symbolic links followed
  std::string aside;  ///< empty if written to directly
  int descriptor = -1;
  bool replaces = false;
};

} // namespace runsieve
