#include <runsieve/core/files/Gzip.h>

#include <runsieve/core/files/Inflater.h>
#include <runsieve/core/scan/ScanError.h>

#include <algorithm>
#include <cstddef>
#include <new>
#include <stdexcept>

namespace runsieve {

namespace {

constexpr std::size_t mostBytes = std::size_t(16) << 30;
constexpr std::size_t firstRoom = 1 << 16;

/// Grows with what is there, so that a claim costs nothing.
void appendMember(std::string const& file, std::string_view& input, std::string& content)
{
  Inflater inflater(Inflater::Wrapping::Gzip);
  for (;;) {
    std::size_t const before = content.size();
    content.resize(before + std::max(firstRoom, before / 2));
    std::size_t written = 0;
    auto const result = inflater.inflate(input, content.data() + before, content.size() - before, written);
    content.resize(before + written);
    if (result == Inflater::Result::Ended) return;
    if (result == Inflater::Result::Short)
      throw ScanError(file, "the compressed file ends too early; was it copied completely?");
    if (result == Inflater::Result::Damaged)
      throw ScanError(file, "the compressed file is damaged after " + std::to_string(content.size()) +
                                " bytes of its content");
    if (content.size() > mostBytes)
      throw ScanError(file, "holds more than 16 GiB when it is decompressed; decompress it to a file first");
  }
}

} // namespace

bool isGzip(std::string_view bytes)
{
  return bytes.substr(0, 3) == "\x1f\x8b\x08";
}

std::string inflated(std::string const& file, std::string_view bytes)
{
  if (!isGzip(bytes)) throw ScanError(file, "is not a gzip file");
  std::string content;
  try {
    while (isGzip(bytes)) appendMember(file, bytes, content);
  } catch (std::bad_alloc const&) {
    throw ScanError(file, "there is not enough memory for its decompressed content");
  }
  if (bytes.find_first_not_of('\0') != std::string_view::npos)
    throw ScanError(file, "other bytes follow the compressed content");
  return content;
}

} // namespace runsieve
