#pragma once

#include <zlib.h>

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace runsieve::test {

inline std::string inflated(std::string const& packed)
{
  z_stream stream = {};
  if (::inflateInit(&stream) != Z_OK) throw std::runtime_error("no inflate");
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
  stream.avail_in = static_cast<uInt>(packed.size());
  std::string text;
  std::string part(1 << 16, '\0');
  int state = Z_OK;
  while (state == Z_OK) {
    stream.next_out = reinterpret_cast<Bytef*>(part.data());
    stream.avail_out = static_cast<uInt>(part.size());
    state = ::inflate(&stream, Z_NO_FLUSH);
    text.append(part, 0, part.size() - stream.avail_out);
  }
  ::inflateEnd(&stream);
  if (state != Z_STREAM_END) throw std::runtime_error("a stream that cannot be inflated");
  return text;
}

/// A PDF with all streams inflated; the lengths of these are those of the file.
/// \throw std::runtime_error if a stream is not as long as it says or not whole
inline std::string inflatedPdf(std::string const& pdf)
{
  std::string text;
  std::size_t at = 0;
  for (std::size_t stream; (stream = pdf.find("stream\n", at)) != std::string::npos;) {
    const std::size_t dictionary = pdf.rfind(" obj\n", stream);
    const std::string head = pdf.substr(dictionary, stream - dictionary);
    const std::size_t length = head.find("/Length ");
    if (length == std::string::npos) throw std::runtime_error("a stream without a length");
    const std::size_t size = std::strtoul(head.c_str() + length + 8, nullptr, 10);
    const std::string packed = pdf.substr(stream + 7, size);
    text += pdf.substr(at, stream + 7 - at);
    text += head.find("/FlateDecode") == std::string::npos ? packed : inflated(packed);
    at = stream + 7 + size;
    if (pdf.compare(at, 10, "\nendstream") != 0) throw std::runtime_error("a stream of another length");
    at += 10;
  }
  return text + pdf.substr(at);
}

} // namespace runsieve::test
