#include <runsieve/core/files/Inflater.h>

#include <algorithm>
#include <limits>
#include <new>

namespace runsieve {

namespace {

constexpr int largestWindow = 15; // bits; zlib adds 16 for gzip and takes negative ones as "no wrapping"

/// zlib counts in 32 bits.
uInt atOnce(std::size_t bytes)
{
  return static_cast<uInt>(std::min<std::size_t>(bytes, std::numeric_limits<uInt>::max()));
}

} // namespace

Inflater::Inflater(Wrapping wrapping)
{
  int const window = wrapping == Wrapping::Gzip ? largestWindow + 16 : -largestWindow;
  if (::inflateInit2(&stream, window) != Z_OK) throw std::bad_alloc();
}

Inflater::Result Inflater::inflate(std::string_view& input, char* room, std::size_t roomSize,
                                   std::size_t& written)
{
  written = 0;
  while (written < roomSize) {
    uInt const given = atOnce(input.size());
    uInt const space = atOnce(roomSize - written);
    stream.next_in = const_cast<Bytef*>(reinterpret_cast<Bytef const*>(input.data()));
    stream.avail_in = given;
    stream.next_out = reinterpret_cast<Bytef*>(room + written);
    stream.avail_out = space;
    int const state = ::inflate(&stream, Z_NO_FLUSH);
    input.remove_prefix(given - stream.avail_in);
    written += space - stream.avail_out;
    if (state == Z_STREAM_END) return Result::Ended;
    if (state == Z_MEM_ERROR) throw std::bad_alloc();
    if (state == Z_BUF_ERROR && input.empty()) return Result::Short;
    if (state != Z_OK) return Result::Damaged;
  }
  return Result::More;
}

} // namespace runsieve
