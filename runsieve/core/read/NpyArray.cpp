#include <runsieve/core/read/NpyArray.h>

#include <runsieve/core/read/NamedArray.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/FieldText.h>
#include <runsieve/core/text/Utf8.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <utility>

namespace runsieve {

namespace {

constexpr std::string_view magic = "\x93NUMPY";
constexpr std::size_t mostAxes = 64;

/// The text that describes the array: a Python dictionary of three entries.
class HeaderText
{
public:
  HeaderText(std::string const& file, std::string_view text) : fileName(file), left(text) {}

  void expect(char symbol)
  {
    if (!skip(symbol)) fail();
  }

  bool skip(char symbol)
  {
    skipBlanks();
    if (left.empty() || left.front() != symbol) return false;
    left.remove_prefix(1);
    return true;
  }

  bool skip(std::string_view word)
  {
    skipBlanks();
    if (left.substr(0, word.size()) != word) return false;
    left.remove_prefix(word.size());
    return true;
  }

  std::string string()
  {
    skipBlanks();
    if (left.empty() || (left.front() != '\'' && left.front() != '"')) fail();
    std::size_t const end = left.find(left.front(), 1);
    if (end == std::string_view::npos) fail();
    std::string const text(left.substr(1, end - 1));
    left.remove_prefix(end + 1);
    return text;
  }

  std::size_t number()
  {
    skipBlanks();
    std::size_t value = 0;
    auto const [end, error] = std::from_chars(left.data(), left.data() + left.size(), value);
    if (error != std::errc()) fail();
    left.remove_prefix(static_cast<std::size_t>(end - left.data()));
    (void)skip('L'); // Python 2
    return value;
  }

  [[nodiscard]] bool ended()
  {
    skipBlanks();
    return left.empty();
  }

  [[noreturn]] void fail() const { throw ScanError(fileName, "the header of the NumPy array is damaged"); }

private:
  void skipBlanks() { left.remove_prefix(std::min(left.find_first_not_of(" \t\r\n"), left.size())); }

  std::string const& fileName;
  std::string_view left;
};

bool isLittleEndian()
{
  std::uint16_t const one = 1;
  unsigned char first = 0;
  std::memcpy(&first, &one, 1);
  return first == 1;
}

[[noreturn]] void refuse(std::string const& file, std::string const& what)
{
  throw ScanError(file, "the NumPy array holds " + what +
                            "; save it as plain numbers (array.astype(float)) or texts (array.astype(str))");
}

std::optional<NpyHeader::Type> typeOf(char kind, std::size_t bytes)
{
  using Type = NpyHeader::Type;
  static constexpr struct
  {
    char kind;
    std::size_t bytes;
    Type type;
  } numbers[] = {{'b', 1, Type::UInt8},   {'i', 1, Type::Int8},   {'i', 2, Type::Int16},
                 {'i', 4, Type::Int32},   {'i', 8, Type::Int64},  {'u', 1, Type::UInt8},
                 {'u', 2, Type::UInt16},  {'u', 4, Type::UInt32}, {'u', 8, Type::UInt64},
                 {'f', 4, Type::Float32}, {'f', 8, Type::Float64}};
  for (auto const& number : numbers)
    if (number.kind == kind && number.bytes == bytes) return number.type;
  if (kind == 'S' && bytes > 0) return Type::Bytes;
  if (kind == 'U' && bytes > 0) return Type::Characters;
  return std::nullopt;
}

/// A type such as "<f8", "|S5" or ">U12".
void setType(std::string const& file, std::string const& descr, NpyHeader& header)
{
  std::string_view text = descr;
  char order = '=';
  if (!text.empty() && std::string_view("<>|=").find(text.front()) != std::string_view::npos) {
    order = text.front();
    text.remove_prefix(1);
  }
  if (!text.empty() && text.front() == 'O') refuse(file, "objects of Python");
  std::size_t count = 0;
  char const* const end = text.data() + text.size();
  auto const [stop, error] = text.empty() ? std::from_chars_result{end, std::errc::invalid_argument}
                                          : std::from_chars(text.data() + 1, end, count);
  constexpr std::size_t characterBytes = 4;
  if (error != std::errc() || stop != end || count > std::numeric_limits<std::uint32_t>::max())
    refuse(file, "values of the type " + quoted(descr));
  header.itemBytes = text.front() == 'U' ? count * characterBytes : count;
  auto const type = typeOf(text.front(), header.itemBytes);
  if (!type) refuse(file, "values of the type " + quoted(descr));
  header.type = *type;
  header.swapped = (order == '<' && !isLittleEndian()) || (order == '>' && isLittleEndian());
}

std::vector<std::size_t> shapeOf(HeaderText& text)
{
  std::vector<std::size_t> shape;
  text.expect('(');
  while (!text.skip(')')) {
    shape.push_back(text.number());
    if (shape.size() > mostAxes) text.fail();
    if (text.skip(',')) continue;
    text.expect(')');
    break;
  }
  return shape;
}

bool flagOf(HeaderText& text)
{
  if (text.skip("True")) return true;
  if (!text.skip("False")) text.fail();
  return false;
}

void readDictionary(std::string const& file, HeaderText text, NpyHeader& header)
{
  bool hasType = false;
  bool hasOrder = false;
  bool hasShape = false;
  text.expect('{');
  while (!text.skip('}')) {
    std::string const key = text.string();
    text.expect(':');
    if (key == "descr") {
      if (text.skip('[') || text.skip('(')) refuse(file, "records of several fields");
      setType(file, text.string(), header);
      hasType = true;
    } else if (key == "fortran_order") {
      header.fortran = flagOf(text);
      hasOrder = true;
    } else if (key == "shape") {
      header.shape = shapeOf(text);
      hasShape = true;
    } else {
      text.fail();
    }
    if (text.skip(',')) continue;
    text.expect('}');
    break;
  }
  if (!hasType || !hasOrder || !hasShape || !text.ended()) text.fail();
}

/// Nothing if a size_t does not hold it.
std::optional<std::size_t> product(std::size_t a, std::size_t b)
{
  if (b != 0 && a > std::numeric_limits<std::size_t>::max() / b) return std::nullopt;
  return a * b;
}

void checkSize(std::string const& file, NpyHeader& header, std::size_t dataBytes)
{
  std::optional<std::size_t> items = 1;
  for (std::size_t const length : header.shape)
    if (items) items = product(*items, length);
  auto const bytes = items ? product(*items, header.itemBytes) : std::nullopt;
  if (!bytes || *bytes > dataBytes)
    throw ScanError(file, "ends too early: the header of the NumPy array tells of " +
                              shapeText(header.shape) + " values, and " + std::to_string(dataBytes) +
                              " bytes follow; was it copied completely?");
  if (*bytes < dataBytes)
    throw ScanError(file, "holds more bytes than the header of the NumPy array tells; save each array to a "
                          "file of its own, or all with numpy.savez");
  header.items = *items;
}

std::size_t littleEndian(std::string_view bytes)
{
  std::size_t value = 0;
  for (std::size_t i = bytes.size(); i > 0; --i)
    value = value << 8 | static_cast<unsigned char>(bytes[i - 1]);
  return value;
}

template <class Number> Number loaded(char const* bytes, bool swapped)
{
  char order[sizeof(Number)];
  std::memcpy(order, bytes, sizeof(Number));
  if (swapped) std::reverse(order, order + sizeof(Number));
  Number value;
  std::memcpy(&value, order, sizeof(Number));
  return value;
}

template <class Number>
void copySlices(NpyHeader const& header, char const* data, std::size_t first, std::size_t count, double* to)
{
  std::size_t const axes = header.shape.size();
  std::size_t const slice = header.shape.front() > 0 ? header.items / header.shape.front() : 0;
  if (!header.fortran || axes == 1) {
    char const* from = data + first * slice * sizeof(Number);
    for (std::size_t i = 0; i < count * slice; ++i, from += sizeof(Number))
      *to++ = static_cast<double>(loaded<Number>(from, header.swapped));
    return;
  }
  std::vector<std::size_t> strides(axes, sizeof(Number));
  for (std::size_t axis = 1; axis < axes; ++axis) strides[axis] = strides[axis - 1] * header.shape[axis - 1];
  std::vector<std::size_t> place(axes, 0);
  place.front() = first;
  std::size_t offset = first * strides.front();
  for (std::size_t i = 0; i < count * slice; ++i) {
    *to++ = static_cast<double>(loaded<Number>(data + offset, header.swapped));
    for (std::size_t axis = axes; axis > 0; --axis) {
      offset += strides[axis - 1];
      if (++place[axis - 1] < header.shape[axis - 1] || axis == 1) break;
      offset -= strides[axis - 1] * header.shape[axis - 1];
      place[axis - 1] = 0;
    }
  }
}

std::string textOf(NpyHeader const& header, char const* item)
{
  if (header.type == NpyHeader::Type::Bytes) {
    std::string_view const bytes(item, header.itemBytes);
    return asUtf8(bytes.substr(0, bytes.find_last_not_of('\0') + 1)); // none found: 0, all zeros
  }
  std::string text;
  std::size_t zeros = 0; // those at the end are no part of the text
  for (std::size_t i = 0; i < header.itemBytes; i += sizeof(std::uint32_t)) {
    auto const character = loaded<std::uint32_t>(item + i, header.swapped);
    if (character == 0) {
      ++zeros;
      continue;
    }
    text.append(std::exchange(zeros, 0), '\0');
    appendUtf8(text, character);
  }
  return text;
}

} // namespace

NpyHeader readNpyHeader(std::string const& file, std::string_view head, std::size_t size)
{
  constexpr std::size_t versionBytes = 2;
  std::size_t const fixed = magic.size() + versionBytes;
  if (head.substr(0, magic.size()) != magic) throw ScanError(file, "is not a NumPy array");
  std::size_t const version = head.size() > magic.size() ? static_cast<unsigned char>(head[magic.size()]) : 0;
  std::size_t const lengthBytes = version == 1 ? 2 : 4;
  if (head.size() < fixed + lengthBytes) throw ScanError(file, "ends within the header of the NumPy array");
  if (version < 1 || version > 3)
    throw ScanError(file, "is a NumPy array of the unknown version " + std::to_string(version));
  std::size_t const length = littleEndian(head.substr(fixed, lengthBytes));
  NpyHeader header;
  header.dataFrom = fixed + lengthBytes + length;
  if (header.dataFrom > size) throw ScanError(file, "ends within the header of the NumPy array");
  if (header.dataFrom > head.size() || header.dataFrom > longestNpyHeader)
    refuse(file, "something that takes a header of " + std::to_string(length) + " bytes to tell");
  readDictionary(file, HeaderText(file, head.substr(fixed + lengthBytes, length)), header);
  checkSize(file, header, size - header.dataFrom);
  return header;
}

void copyNpyNumbers(NpyHeader const& header, std::string_view bytes, std::size_t first, std::size_t count,
                    double* to)
{
  using Type = NpyHeader::Type;
  char const* const data = bytes.data() + header.dataFrom;
  switch (header.type) {
  case Type::Int8:
    return copySlices<std::int8_t>(header, data, first, count, to);
  case Type::Int16:
    return copySlices<std::int16_t>(header, data, first, count, to);
  case Type::Int32:
    return copySlices<std::int32_t>(header, data, first, count, to);
  case Type::Int64:
    return copySlices<std::int64_t>(header, data, first, count, to);
  case Type::UInt8:
    return copySlices<std::uint8_t>(header, data, first, count, to);
  case Type::UInt16:
    return copySlices<std::uint16_t>(header, data, first, count, to);
  case Type::UInt32:
    return copySlices<std::uint32_t>(header, data, first, count, to);
  case Type::UInt64:
    return copySlices<std::uint64_t>(header, data, first, count, to);
  case Type::Float32:
    return copySlices<float>(header, data, first, count, to);
  case Type::Float64:
    return copySlices<double>(header, data, first, count, to);
  case Type::Bytes:
  case Type::Characters:
    return;
  }
}

std::vector<std::string> npyTexts(NpyHeader const& header, std::string_view bytes)
{
  std::vector<std::string> texts;
  texts.reserve(header.items);
  for (std::size_t i = 0; i < header.items; ++i)
    texts.push_back(textOf(header, bytes.data() + header.dataFrom + i * header.itemBytes));
  return texts;
}

} // namespace runsieve
