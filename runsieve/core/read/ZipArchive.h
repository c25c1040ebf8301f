#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace runsieve {

/// The files in a zip archive that lies in memory: stored or deflated ones, also of the 64 bit format. Source
/// of the format: APPNOTE.TXT - .ZIP File Format Specification, version 6.3.
class RUNSIEVE_CORE_EXPORT ZipArchive
{
public:
  struct Entry
  {
    std::string name;
    std::size_t size = 0;    ///< bytes of the file
    std::string_view packed; ///< the bytes in the archive
    bool deflated = false;   ///< or stored as they are
    std::uint32_t crc = 0;   ///< CRC-32 of the file
  };

  /// \param file name of the archive, for messages
  /// \param bytes the archive; must live longer than this
  /// \throw ScanError if it is damaged, encrypted, compressed by another method or split into several files
  ZipArchive(std::string file, std::string_view bytes);

  [[nodiscard]] std::vector<Entry> const& entries() const { return all; }

  /// The bytes of a file, which lie in the archive or else in `room`. \throw ScanError if they are damaged or
  /// too large for the memory
  [[nodiscard]] std::string_view content(Entry const& entry, std::string& room) const;

  /// Its first bytes, without a check. \throw ScanError as above
  [[nodiscard]] std::string_view head(Entry const& entry, std::size_t bytes, std::string& room) const;

private:
  [[noreturn]] void fail(std::string const& message) const;
  [[noreturn]] void fail(Entry const& entry, std::string const& message) const;
  [[nodiscard]] std::string_view inflate(Entry const& entry, std::size_t bytes, std::string& room) const;
  void readDirectory(std::string_view bytes);

  std::string fileName;
  std::vector<Entry> all;
};

} // namespace runsieve
