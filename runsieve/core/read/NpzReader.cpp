#include <runsieve/core/read/NpzReader.h>

#include <runsieve/core/read/ArrayScan.h>
#include <runsieve/core/read/Fields.h>
#include <runsieve/core/read/NamedArray.h>
#include <runsieve/core/read/NpyArray.h>
#include <runsieve/core/read/ZipArchive.h>
#include <runsieve/core/scan/ScanError.h>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace runsieve {

namespace {

constexpr std::string_view npyEnding = ".npy";

/// \param bytes gives all bytes of the file of the array
NamedArray arrayOf(std::string name, NpyHeader const& header, std::function<std::string_view()> bytes)
{
  NamedArray array;
  array.name = std::move(name);
  array.shape = header.shape;
  array.kind = header.isText() ? NamedArray::Kind::Texts : NamedArray::Kind::Numbers;
  array.isSingle = header.type == NpyHeader::Type::Float32;
  array.numbers = [header, bytes](std::size_t first, std::size_t count, double* to) {
    copyNpyNumbers(header, bytes(), first, count, to);
  };
  array.texts = [header, bytes] { return npyTexts(header, bytes()); };
  return array;
}

/// The content of entries of an archive, of one at a time, because inflated ones take memory.
class Contents
{
public:
  explicit Contents(ZipArchive const& archive) : archive(archive) {}

  std::string_view of(ZipArchive::Entry const& entry)
  {
    if (held == &entry) return content;
    held = nullptr;
    room = std::string();
    content = archive.content(entry, room);
    held = &entry;
    return content;
  }

private:
  ZipArchive const& archive;
  ZipArchive::Entry const* held = nullptr;
  std::string room;
  std::string_view content;
};

NamedArray arrayOf(std::string const& file, ZipArchive const& archive, ZipArchive::Entry const& entry,
                   Contents& contents)
{
  std::string name = entry.name;
  if (name.size() > npyEnding.size() &&
      name.compare(name.size() - npyEnding.size(), npyEnding.size(), npyEnding) == 0)
    name.erase(name.size() - npyEnding.size());
  std::string room;
  std::string_view const head = archive.head(entry, longestNpyHeader, room);
  try {
    return arrayOf(name, readNpyHeader(file, head, entry.size), [&] { return contents.of(entry); });
  } catch (ScanError const& error) {
    NamedArray array;
    array.name = std::move(name);
    array.why = std::string(error.what()).substr(file.size() + 2); // without the name of the file and ": "
    return array;
  }
}

ScanFile scanOf(std::string const& file, std::vector<NamedArray> arrays, ReadOptions const& options,
                ReadReport report)
{
  return scanOfArrays(file, withMissingAsMeant(std::move(arrays), missingNumbers(options.missing, '.')),
                      options, std::move(report));
}

[[noreturn]] void failForMemory(std::string const& file)
{
  throw ScanError(file, "there is not enough memory for its values");
}

} // namespace

bool isNpy(std::string_view bytes)
{
  return bytes.substr(0, 6) == "\x93NUMPY";
}

bool isNpz(std::string_view bytes)
{
  return bytes.substr(0, 4) == std::string_view("PK\3\4", 4);
}

ScanFile readNpy(std::string const& file, std::string_view bytes, ReadOptions const& options)
{
  NpyHeader const header = readNpyHeader(file, bytes, bytes.size());
  ReadReport report;
  report.format = "NumPy array";
  try {
    std::string const name = std::filesystem::path(file).stem().string();
    return scanOf(file, {arrayOf(name, header, [bytes] { return bytes; })}, options, std::move(report));
  } catch (std::bad_alloc const&) {
    failForMemory(file);
  }
}

ScanFile readNpz(std::string const& file, std::string_view bytes, ReadOptions const& options)
{
  ReadReport report;
  report.format = "NumPy archive of arrays";
  try {
    ZipArchive const archive(file, bytes);
    Contents contents(archive);
    std::vector<NamedArray> arrays;
    for (ZipArchive::Entry const& entry : archive.entries())
      arrays.push_back(arrayOf(file, archive, entry, contents));
    return scanOf(file, std::move(arrays), options, std::move(report));
  } catch (std::bad_alloc const&) {
    failForMemory(file);
  }
}

} // namespace runsieve
