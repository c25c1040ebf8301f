#pragma once

#include "support/Deflate.h"
#include "support/NpyBytes.h"

#include <zlib.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace runsieve::test {

/// How a zip archive is written.
struct ZipForm
{
  bool deflate = false;
  bool wide = false; ///< sizes and places in the parts of the 64 bit format
  std::string comment;
  std::uint16_t flags = 0;
};

/// A zip archive of files, each a name and its content.
inline std::string zipOf(std::vector<std::pair<std::string, std::string>> const& files,
                         ZipForm const& form = {})
{
  using U16 = std::uint16_t;
  using U32 = std::uint32_t;
  using U64 = std::uint64_t;
  const U32 all = 0xFFFFFFFF;
  std::string archive;
  std::string directory;
  for (auto const& [name, content] : files) {
    const std::string packed = form.deflate ? deflated(content, -15) : content;
    const auto crc = static_cast<U32>(
        ::crc32(0, reinterpret_cast<Bytef const*>(content.data()), static_cast<uInt>(content.size())));
    const auto at = archive.size();
    const std::string extra = form.wide ? bytesOf(U16(1)) + bytesOf(U16(24)) + bytesOf(U64(content.size())) +
                                              bytesOf(U64(packed.size())) + bytesOf(U64(at))
                                        : "";
    const std::string sizes =
        form.wide ? bytesOf(all) + bytesOf(all) : bytesOf(U32(packed.size())) + bytesOf(U32(content.size()));
    const std::string common = bytesOf(U16(45)) + bytesOf(form.flags) + bytesOf(U16(form.deflate ? 8 : 0)) +
                               bytesOf(U32(0)) + bytesOf(crc) + sizes + bytesOf(U16(name.size()));
    archive += "PK\3\4" + common + bytesOf(U16(0)) + name + packed;
    directory += "PK\1\2" + bytesOf(U16(45)) + common + bytesOf(U16(extra.size())) + bytesOf(U16(0)) +
                 bytesOf(U16(0)) + bytesOf(U16(0)) + bytesOf(U32(0)) + bytesOf(form.wide ? all : U32(at)) +
                 name + extra;
  }
  const auto at = archive.size();
  archive += directory;
  if (form.wide) {
    const auto end = archive.size();
    archive += "PK\6\6" + bytesOf(U64(44)) + bytesOf(U16(45)) + bytesOf(U16(45)) + bytesOf(U32(0)) +
               bytesOf(U32(0)) + bytesOf(U64(files.size())) + bytesOf(U64(files.size())) +
               bytesOf(U64(directory.size())) + bytesOf(U64(at));
    archive += "PK\6\7" + bytesOf(U32(0)) + bytesOf(U64(end)) + bytesOf(U32(1));
  }
  archive += "PK\5\6" + bytesOf(U16(0)) + bytesOf(U16(0)) + bytesOf(U16(files.size())) +
             bytesOf(U16(files.size())) + bytesOf(U32(directory.size())) +
             bytesOf(form.wide ? all : U32(at)) + bytesOf(U16(form.comment.size())) + form.comment;
  return archive;
}

} // namespace runsieve::test
