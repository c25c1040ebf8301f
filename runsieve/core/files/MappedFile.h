#pragma once

#include <boost/interprocess/mapped_region.hpp>

#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>
#include <string>

namespace runsieve {

/// The bytes of a regular file, mapped read-only. A file that shrinks while it is mapped ends the process.
class RUNSIEVE_CORE_EXPORT MappedFile
{
public:
  /// \throw ScanError if there is no such file, it is not a regular one, or it cannot be read.
  explicit MappedFile(std::string const& path);

  [[nodiscard]] char const* begin() const { return static_cast<char const*>(region.get_address()); }
  [[nodiscard]] char const* end() const { return begin() + region.get_size(); }

  /// Tells the system that the bytes from `first` to `last` are not needed soon, so that their pages do not
  /// count as memory of this process. They may still be read.
  static void release(char const* first, char const* last);

private:
  boost::interprocess::mapped_region region; ///< without pages for an empty file
};

} // namespace runsieve
