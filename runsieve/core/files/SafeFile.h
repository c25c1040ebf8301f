#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <string>
#include <string_view>

namespace runsieve {

/// A file that takes the place of a former one only when it is complete.
///
/// The text goes to a new file without a name in the same folder, which commit() puts in the place of the
/// former one; without commit(), and when the process is killed, nothing is left. File systems that know no
/// files without a name get one beside the other, which vanishes without commit() unless the process is
/// killed. A path that is no regular file (a pipe, a terminal) is written to directly. All failures throw
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
  void openNameless(unsigned mode);
  void giveName();
  template <class Make> std::string newName(Make const& make) const;
  [[noreturn]] void fail() const;

  std::string path;   ///< as the user knows it
  std::string target; ///< with symbolic links followed
  std::string aside;  ///< name of the new file; empty as long as it has none
  int descriptor = -1;
  bool replaces = false;
  bool direct = false; ///< written to without a new file
};

} // namespace runsieve
