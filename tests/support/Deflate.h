#pragma once

#include <zlib.h>

#include <stdexcept>
#include <string>

namespace runsieve::test {

/// \param window as zlib takes it: 31 for gzip, -15 for the naked stream of a zip file
inline std::string deflated(std::string const& text, int window)
{
  z_stream stream = {};
  if (::deflateInit2(&stream, 6, Z_DEFLATED, window, 8, Z_DEFAULT_STRATEGY) != Z_OK)
    throw std::runtime_error("no deflate");
  std::string packed(::deflateBound(&stream, text.size()) + 32, '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
  stream.avail_in = static_cast<uInt>(text.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  const int state = ::deflate(&stream, Z_FINISH);
  packed.resize(stream.total_out);
  ::deflateEnd(&stream);
  if (state != Z_STREAM_END) throw std::runtime_error("deflate failed");
  return packed;
}

inline std::string gzipped(std::string const& text)
{
  return deflated(text, 31);
}

} // namespace runsieve::test
