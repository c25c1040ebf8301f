#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace runsieve::test {

/// The bytes of a value as they lie in memory.
template <class Number> std::string bytesOf(Number value)
{
  std::string bytes(sizeof value, '\0');
  std::memcpy(bytes.data(), &value, sizeof value);
  return bytes;
}

template <class Number> std::string bytesOf(std::vector<Number> const& values)
{
  std::string bytes;
  for (Number value : values) bytes += bytesOf(value);
  return bytes;
}

/// "(3, 4)" or "(3,)".
inline std::string tupleOf(std::vector<std::size_t> const& shape)
{
  std::string text = "(";
  for (std::size_t length : shape) text += std::to_string(length) + ", ";
  if (shape.size() == 1) return text.substr(0, text.size() - 1) + ')';
  return (shape.empty() ? text : text.substr(0, text.size() - 2)) + ')';
}

/// A .npy file with any text for a header.
inline std::string npyWithHeader(std::string const& header, std::string const& data, int version = 1)
{
  std::string file = std::string("\x93NUMPY") + static_cast<char>(version) + '\0';
  file += version == 1 ? bytesOf(static_cast<std::uint16_t>(header.size() + 1))
                       : bytesOf(static_cast<std::uint32_t>(header.size() + 1));
  return file + header + '\n' + data;
}

/// A .npy file, on a machine of the little end.
inline std::string npy(std::string const& type, std::vector<std::size_t> const& shape,
                       std::string const& data, bool fortran = false, int version = 1)
{
  return npyWithHeader("{'descr': '" + type + "', 'fortran_order': " + (fortran ? "True" : "False") +
                           ", 'shape': " + tupleOf(shape) + ", }",
                       data, version);
}

inline std::string npy(std::vector<std::size_t> const& shape, std::vector<double> const& values)
{
  return npy("<f8", shape, bytesOf(values));
}

/// Texts of ASCII as NumPy's type U.
inline std::string npyTexts(std::vector<std::string> const& texts)
{
  std::size_t longest = 1;
  for (std::string const& text : texts) longest = std::max(longest, text.size());
  std::string data;
  for (std::string const& text : texts)
    for (std::size_t i = 0; i < longest; ++i)
      data += bytesOf(static_cast<std::uint32_t>(i < text.size() ? text[i] : 0));
  return npy("<U" + std::to_string(longest), {texts.size()}, data);
}

} // namespace runsieve::test
