#include <runsieve/core/read/Hdf5Reader.h>

#include <runsieve/core/files/MappedFile.h>
#include <runsieve/core/read/ArrayRoles.h>
#include <runsieve/core/read/ArrayScan.h>
#include <runsieve/core/read/ArrayTables.h>
#include <runsieve/core/read/Fields.h>
#include <runsieve/core/read/Hdf5File.h>
#include <runsieve/core/read/NamedArray.h>
#include <runsieve/core/read/SedmlReport.h>
#include <runsieve/core/read/SeparateReading.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <cstddef>
#include <mutex>
#include <new>
#include <optional>
#include <set>
#include <utility>
#include <vector>

namespace runsieve {

namespace {

using Arrays = std::vector<NamedArray>;

/// No thread may leave this process, as a copy, while another is within the library: the copy would find the
/// state of the library, or its lock, as that one left it.
std::mutex& libraryMutex()
{
  static std::mutex mutex;
  return mutex;
}

std::string groupOf(std::string const& path)
{
  std::size_t const slash = path.rfind('/');
  return slash == std::string::npos ? "" : path.substr(0, slash);
}

class Hdf5Reader
{
public:
  Hdf5Reader(std::string const& file, std::size_t bytes, ReadOptions const& options)
      : fileName(file), options(options), hdf5(file, bytes),
        all(withMissingAsMeant(hdf5.dataSets(), missingNumbers(options.missing, '.')))
  {}

  ScanFile read()
  {
    if (!options.dataset.empty()) {
      NamedArray const& chosen = all[findArray(fileName, all, options.dataset)];
      if (sedmlKind(hdf5, chosen) != SedmlKind::None) return readSedmlReport(fileName, hdf5, chosen, options);
      if (auto table = scanOfTables(fileName, hdf5, {chosen}, options)) return std::move(*table);
      return readGroup(groupOf(chosen.name), &chosen);
    }
    if (auto const report = findReport()) return readSedmlReport(fileName, hdf5, all[*report], options);
    return readArrays();
  }

private:
  [[noreturn]] void fail(std::string const& message) const { throw ScanError(fileName, message); }

  [[nodiscard]] bool isWanted(NamedArray const& array) const
  {
    auto const names = {array.name, bareName(array.name)};
    return std::find_first_of(options.ignore.begin(), options.ignore.end(), names.begin(), names.end()) ==
           options.ignore.end();
  }

  [[nodiscard]] std::string listed(std::vector<std::size_t> const& positions) const
  {
    std::string list;
    for (std::size_t const i : positions)
      list += (list.empty() ? "" : ", ") + quoted(all[i].name) + " (" + shapeText(all[i].shape) + ')';
    return list;
  }

  /// The only report of SED-ML, or the only curves of a plot where there is none.
  [[nodiscard]] std::optional<std::size_t> findReport() const
  {
    std::vector<std::size_t> reports;
    std::vector<std::size_t> plots;
    for (std::size_t i = 0; i < all.size(); ++i) {
      if (!isWanted(all[i])) continue;
      SedmlKind const kind = sedmlKind(hdf5, all[i]);
      if (kind == SedmlKind::Report) reports.push_back(i);
      if (kind == SedmlKind::Plot) plots.push_back(i);
    }
    if (reports.empty()) reports = std::move(plots);
    if (reports.empty()) return std::nullopt;
    if (reports.size() > 1)
      fail("holds several reports: " + listed(reports) + "; name one of them as the data set");
    return reports.front();
  }

  [[nodiscard]] std::vector<std::size_t> numbersWith(std::size_t axes) const
  {
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < all.size(); ++i)
      if (isWanted(all[i]) && all[i].isNumbers(axes)) found.push_back(i);
    return found;
  }

  ScanFile readArrays()
  {
    Arrays wanted;
    for (NamedArray const& array : all)
      if (isWanted(array)) wanted.push_back(array);
    if (auto tables = scanOfTables(fileName, hdf5, wanted, options)) return std::move(*tables);
    auto const cubes = numbersWith(3);
    if (cubes.size() > 1)
      fail("several data sets could hold the values: " + listed(cubes) + "; name one of them");
    if (cubes.size() == 1) return readGroup(groupOf(all[cubes.front()].name), &all[cubes.front()]);
    auto const squares = numbersWith(2);
    std::set<std::string> groups;
    for (std::size_t const i : squares) groups.insert(groupOf(all[i].name));
    if (groups.size() > 1)
      fail("data sets in several groups could hold the values: " + listed(squares) + "; name one of them");
    return readGroup(groups.empty() ? "" : *groups.begin(), nullptr);
  }

  /// \param values the data set with all values, if there is only one
  ScanFile readGroup(std::string const& group, NamedArray const* values)
  {
    ReadReport report;
    report.format = "HDF5";
    Arrays arrays;
    std::vector<ColumnFinding> others;
    for (NamedArray const& array : all) {
      bool const isNamed = array.name == options.time || array.name == options.run;
      if (groupOf(array.name) == group || isNamed)
        arrays.push_back(array);
      else
        others.push_back({array.name, "ignored", "it is in another group than the values"});
    }
    if (values != nullptr)
      for (NamedArray& attribute : hdf5.textAttributes(values->name)) arrays.push_back(std::move(attribute));
    ScanFile result = scanOfArrays(fileName, arrays, options, std::move(report));
    for (ColumnFinding& other : others) result.report.columns.push_back(std::move(other));
    return result;
  }

  std::string const& fileName;
  ReadOptions const& options;
  Hdf5File hdf5;
  Arrays all;
};

} // namespace

bool isHdf5(std::string_view firstBytes)
{
  constexpr std::string_view magic("\x89HDF\r\n\x1a\n", 8);
  constexpr std::size_t firstPlace = 512; // and each that is twice as far
  for (std::size_t at = 0; at + magic.size() <= firstBytes.size(); at = at == 0 ? firstPlace : 2 * at)
    if (firstBytes.substr(at, magic.size()) == magic) return true;
  return false;
}

ScanFile readHdf5(std::string const& file, ReadOptions const& options)
{
  MappedFile const mapped(file); // says better than the library what is wrong with a path
  auto const bytes = static_cast<std::size_t>(mapped.end() - mapped.begin());
  if (!isHdf5({mapped.begin(), bytes})) throw ScanError(file, "is no HDF5 file");
  try {
    std::lock_guard<std::mutex> const lock(libraryMutex());
    ScanFile result = readSeparately(
        file, bytes, options, [&](ReadOptions const& told) { return Hdf5Reader(file, bytes, told).read(); });
    finishScan(file, options, result.scan); // again: the other process may have gone mad
    return result;
  } catch (std::bad_alloc const&) {
    throw ScanError(file, "there is not enough memory for its values");
  }
}

} // namespace runsieve
