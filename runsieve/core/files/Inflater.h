#pragma once

#include <zlib.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace runsieve {

/// Takes deflated bytes apart, a piece at a time.
class Inflater
{
public:
  enum class Wrapping
  {
    None, ///< as in zip files
    Gzip  ///< one member of a gzip file, its checksum included
  };

  /// \throw std::bad_alloc
  explicit Inflater(Wrapping wrapping);
  Inflater(Inflater const&) = delete;
  Inflater& operator=(Inflater const&) = delete;
  ~Inflater() { ::inflateEnd(&stream); }

  enum class Result
  {
    Ended, ///< the deflated bytes end here
    More,  ///< the room is full
    Short, ///< the input ended too early
    Damaged
  };

  /// Inflates from the front of the input, which it shortens by what it took, into the room, of which it
  /// tells how much was written. \throw std::bad_alloc
  Result inflate(std::string_view& input, char* room, std::size_t roomSize, std::size_t& written);

private:
  z_stream stream = {};
};

} // namespace runsieve
