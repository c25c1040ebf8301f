#include <runsieve/core/read/ZipArchive.h>

#include <runsieve/core/files/Inflater.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/FieldText.h>
#include <runsieve/core/text/Utf8.h>

#include <algorithm>
#include <limits>
#include <new>
#include <optional>
#include <stdexcept>
#include <utility>

namespace runsieve {

namespace {

constexpr std::string_view endMark("PK\5\6", 4);
constexpr std::string_view end64Mark("PK\6\6", 4);
constexpr std::string_view locator64Mark("PK\6\7", 4);
constexpr std::string_view entryMark("PK\1\2", 4);
constexpr std::string_view localMark("PK\3\4", 4);

constexpr std::size_t endBytes = 22;
constexpr std::size_t end64Bytes = 56;
constexpr std::size_t locator64Bytes = 20;
constexpr std::size_t entryBytes = 46;
constexpr std::size_t localBytes = 30;
constexpr std::size_t longestComment = 0xFFFF;

constexpr std::uint64_t see64 = 0xFFFFFFFF; // the number stands in the part for 64 bits
constexpr std::uint64_t encryptedFlag = 1;
constexpr std::uint64_t stored = 0;
constexpr std::uint64_t deflate = 8;

/// A byte of deflated data gives no more than this.
constexpr std::size_t mostInflation = 1032;

/// Little-endian number of `size` bytes at `at`; the caller has made sure that they are there.
std::uint64_t number(std::string_view bytes, std::size_t at, std::size_t size)
{
  std::uint64_t value = 0;
  for (std::size_t i = size; i > 0; --i) value = value << 8 | static_cast<unsigned char>(bytes[at + i - 1]);
  return value;
}

/// `size` bytes from `at` on; nothing if they are not all there.
std::optional<std::string_view> part(std::string_view bytes, std::uint64_t at, std::uint64_t size)
{
  if (at > bytes.size() || size > bytes.size() - at) return std::nullopt;
  return bytes.substr(at, size);
}

struct Directory
{
  std::uint64_t entries = 0;
  std::uint64_t at = 0;
  std::uint64_t size = 0;
};

/// The end record stands last, before a comment of any length.
std::optional<std::size_t> findEnd(std::string_view bytes)
{
  if (bytes.size() < endBytes) return std::nullopt;
  std::size_t const last = bytes.size() - endBytes;
  std::size_t const first = last - std::min(last, longestComment);
  for (std::size_t at = bytes.rfind(endMark, last); at != std::string_view::npos && at >= first;
       at = bytes.rfind(endMark, at - 1)) {
    if (number(bytes, at + 20, 2) == last - at) return at;
    if (at == 0) break;
  }
  return std::nullopt;
}

/// The directory as the end record of the 64 bit format has it, if there is one.
std::optional<Directory> findDirectory64(std::string_view bytes, std::size_t end)
{
  if (end < locator64Bytes) return std::nullopt;
  auto const locator = bytes.substr(end - locator64Bytes, locator64Bytes);
  if (locator.substr(0, 4) != locator64Mark) return std::nullopt;
  auto const record = part(bytes, number(locator, 8, 8), end64Bytes);
  if (!record || record->substr(0, 4) != end64Mark) return std::nullopt;
  return Directory{number(*record, 32, 8), number(*record, 48, 8), number(*record, 40, 8)};
}

/// Sizes and place of an entry; those of the 64 bit format stand in an extra part, in this order, and only
/// those that do not fit into 32 bits.
struct Extent
{
  std::uint64_t size;
  std::uint64_t packed;
  std::uint64_t at;
};

bool widen(Extent& extent, std::string_view extra)
{
  if (extent.size != see64 && extent.packed != see64 && extent.at != see64) return true;
  constexpr std::uint64_t id64 = 1;
  while (extra.size() >= 4) {
    std::uint64_t const id = number(extra, 0, 2);
    auto field = part(extra, 4, number(extra, 2, 2));
    if (!field) return false;
    if (id != id64) {
      extra.remove_prefix(4 + field->size());
      continue;
    }
    for (std::uint64_t* value : {&extent.size, &extent.packed, &extent.at}) {
      if (*value != see64) continue;
      if (field->size() < 8) return false;
      *value = number(*field, 0, 8);
      field->remove_prefix(8);
    }
    return true;
  }
  return false;
}

} // namespace

ZipArchive::ZipArchive(std::string file, std::string_view bytes) : fileName(std::move(file))
{
  readDirectory(bytes);
}

void ZipArchive::fail(std::string const& message) const
{
  throw ScanError(fileName, message);
}

void ZipArchive::fail(Entry const& entry, std::string const& message) const
{
  fail("the file " + quoted(entry.name) + " in the archive " + message);
}

void ZipArchive::readDirectory(std::string_view bytes)
{
  auto const end = findEnd(bytes);
  if (!end) fail("is no zip archive, or ends too early; was it copied completely?");
  auto const wide = findDirectory64(bytes, *end);
  Directory const directory =
      wide ? *wide
           : Directory{number(bytes, *end + 10, 2), number(bytes, *end + 16, 4), number(bytes, *end + 12, 4)};
  auto left = part(bytes, directory.at, directory.size);
  if (!left) fail("the directory of the zip archive is damaged");
  std::size_t taken = 0;
  for (std::uint64_t i = 0; i < directory.entries; ++i) {
    if (left->size() < entryBytes || left->substr(0, 4) != entryMark)
      fail("the directory of the zip archive is damaged");
    auto const name = part(*left, entryBytes, number(*left, 28, 2));
    auto const extra = part(*left, entryBytes + number(*left, 28, 2), number(*left, 30, 2));
    std::uint64_t const whole =
        entryBytes + number(*left, 28, 2) + number(*left, 30, 2) + number(*left, 32, 2);
    Extent extent = {number(*left, 24, 4), number(*left, 20, 4), number(*left, 42, 4)};
    if (!name || !extra || whole > left->size() || !widen(extent, *extra))
      fail("the directory of the zip archive is damaged");

    Entry entry;
    entry.name = asUtf8(*name);
    entry.size = extent.size;
    entry.crc = static_cast<std::uint32_t>(number(*left, 16, 4));
    std::uint64_t const method = number(*left, 10, 2);
    entry.deflated = method == deflate;
    if ((number(*left, 8, 2) & encryptedFlag) != 0) fail(entry, "is encrypted; extract it first");
    if (method != stored && method != deflate)
      fail(entry, "is compressed by an unknown method; save it with numpy.savez or numpy.savez_compressed");
    auto const local = part(bytes, extent.at, localBytes);
    if (!local || local->substr(0, 4) != localMark) fail(entry, "is damaged");
    auto const data =
        part(bytes, extent.at + localBytes + number(*local, 26, 2) + number(*local, 28, 2), extent.packed);
    if (!data) fail(entry, "is damaged");
    entry.packed = *data;
    if (!entry.deflated && entry.size != entry.packed.size()) fail(entry, "is damaged");
    if (entry.deflated && entry.size / mostInflation > entry.packed.size())
      fail(entry, "claims more content than its bytes can hold");
    // Entries that share their bytes could hold any amount.
    taken += entry.packed.size() + localBytes;
    if (taken > bytes.size()) fail("the files in the zip archive overlap");
    all.push_back(std::move(entry));
    left->remove_prefix(whole);
  }
}

std::string_view ZipArchive::inflate(Entry const& entry, std::size_t bytes, std::string& room) const
{
  try {
    room.resize(bytes);
    Inflater inflater(Inflater::Wrapping::None);
    std::string_view input = entry.packed;
    std::size_t written = 0;
    auto result = inflater.inflate(input, room.data(), bytes, written);
    if (result == Inflater::Result::Damaged || result == Inflater::Result::Short || written < bytes)
      fail(entry, "is damaged");
    if (bytes < entry.size) return room;
    char one = 0; // the end of the stream may stand behind its last byte
    std::size_t beyond = 0;
    if (result == Inflater::Result::More) result = inflater.inflate(input, &one, 1, beyond);
    if (result != Inflater::Result::Ended || beyond > 0) fail(entry, "is damaged");
    return room;
  } catch (std::bad_alloc const&) {
    fail(entry, "is too large for the memory: " + std::to_string(bytes) + " bytes");
  }
}

std::string_view ZipArchive::content(Entry const& entry, std::string& room) const
{
  std::string_view const bytes = entry.deflated ? inflate(entry, entry.size, room) : entry.packed;
  auto const crc = ::crc32_z(0, reinterpret_cast<Bytef const*>(bytes.data()), bytes.size());
  if (crc != entry.crc) fail(entry, "is damaged: its checksum is wrong");
  return bytes;
}

std::string_view ZipArchive::head(Entry const& entry, std::size_t bytes, std::string& room) const
{
  bytes = std::min(bytes, entry.size);
  return entry.deflated ? inflate(entry, bytes, room) : entry.packed.substr(0, bytes);
}

} // namespace runsieve
