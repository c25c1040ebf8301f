#include <runsieve/core/read/FolderReader.h>

#include <runsieve/core/files/MappedFile.h>
#include <runsieve/core/parallel/Parallel.h>
#include <runsieve/core/read/Fields.h>
#include <runsieve/core/read/FolderFiles.h>
#include <runsieve/core/read/JoinedRows.h>
#include <runsieve/core/read/ParameterList.h>
#include <runsieve/core/read/ParameterTable.h>
#include <runsieve/core/read/ParametersFile.h>
#include <runsieve/core/read/RunKeys.h>
#include <runsieve/core/read/StackedRows.h>
#include <runsieve/core/read/TextReader.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/FieldText.h>
#include <runsieve/core/text/Utf16.h>

#include <algorithm>
#include <cctype>
#include <exception>
#include <filesystem>
#include <map>
#include <memory>
#include <new>
#include <set>
#include <string_view>
#include <unordered_map>

namespace runsieve {

namespace {

std::string_view bytesOf(MappedFile const& map)
{
  return {map.begin(), static_cast<std::size_t>(map.end() - map.begin())};
}

/// A file of runs.
struct RunFile
{
  std::string converted;
  CellTable table;
  TableRuns runs;
  ReadReport report;
};

void readRows(ScanText const& text, ReadOptions const& options, RunFile& file)
{
  file.table = readTextRows(text, options, file.converted, file.report);
  file.runs = findRuns(file.table, options, file.report.findings);
}

/// Whether the files of one kind belong to a scan.
struct Verdict
{
  enum class Is
  {
    Scan,
    NoScan, ///< a table without a time
    NoTable
  } is = Is::Scan;
  std::exception_ptr why; ///< what reading such a file says if it is not a scan
};

// The beginning of a file is enough to tell.
std::string_view beginningOf(std::string_view bytes)
{
  constexpr std::size_t judged = std::size_t(1) << 20;
  if (bytes.size() <= judged) return bytes;
  if (!isUtf16(bytes)) {
    std::size_t const end = bytes.rfind('\n', judged);
    return end == std::string_view::npos ? bytes : bytes.substr(0, end + 1);
  }
  for (std::size_t at = judged; at > 0; at -= 2) // characters of two bytes, the line end in either order
    if (std::string_view const character = bytes.substr(at - 2, 2);
        character == std::string_view("\n\0", 2) || character == std::string_view("\0\n", 2))
      return bytes.substr(0, at);
  return bytes;
}

Verdict judge(std::string const& path, ReadOptions const& options)
{
  MappedFile const map(path);
  RunFile file;
  Verdict verdict;
  try {
    file.table = readTextRows({path, beginningOf(bytesOf(map)), false}, options, file.converted, file.report);
    if (!columnOf(rolesByName(file.table, options), Role::Time)) verdict.is = Verdict::Is::NoScan;
    file.runs = findRuns(file.table, options, file.report.findings);
  } catch (ScanError const&) {
    if (verdict.is == Verdict::Is::Scan) verdict.is = Verdict::Is::NoTable;
    verdict.why = std::current_exception();
  }
  return verdict;
}

/// Files whose names differ by numbers only.
struct Kind
{
  std::vector<std::size_t> members;
  Verdict verdict;
};

// "out_12.csv" as "out_#.csv".
std::string shapeOf(std::string const& name)
{
  std::string shape;
  for (char const c : name) {
    if (std::isdigit(static_cast<unsigned char>(c)) == 0)
      shape += c;
    else if (shape.empty() || shape.back() != '#')
      shape += '#';
  }
  return shape;
}

// A path for a message.
std::string shown(std::string const& path)
{
  NameList list;
  list.add(path);
  return list.text();
}

/// One reading of one folder.
class FolderReading
{
public:
  FolderReading(std::string const& path, ReadOptions const& readOptions)
      : folder(path), options(readOptions), inner(readOptions), joined(path)
  {
    inner.threads = 1;
    inner.progress = nullptr;
  }

  ScanFile read()
  {
    FolderFiles const found = listFolder(folder);
    others = found.others;
    choose(found.texts);
    if (files.size() == 1)
      readSingle();
    else
      readAll();
    addLists(found.parameterFiles);
    tellOthers();
    return std::move(result);
  }

private:
  void tell(std::string what, std::string why = {}, bool guess = false)
  {
    result.report.findings.push_back({std::move(what), std::move(why), guess});
  }

  [[nodiscard]] std::string full(std::string const& path) const
  {
    return (std::filesystem::path(folder) / path).string();
  }

  // Files that hold a scan, of all that could be text.
  void choose(std::vector<std::string> const& texts)
  {
    std::map<std::string, std::size_t> places;
    std::vector<Kind> kinds;
    for (std::size_t i = 0; i < texts.size(); ++i) {
      if (isGivenTable(texts[i])) continue;
      auto const [place, isNew] = places.emplace(shapeOf(nameIn(texts[i])), kinds.size());
      if (isNew) kinds.emplace_back();
      kinds[place->second].members.push_back(i);
    }
    judgeAll(kinds, texts);
    rejectDamaged(kinds, texts);
    std::vector<bool> chosen(texts.size());
    for (Kind const& kind : kinds)
      for (std::size_t const i : kind.members) chosen[i] = kind.verdict.is == Verdict::Is::Scan;
    for (std::size_t i = 0; i < texts.size(); ++i) {
      if (chosen[i])
        files.push_back(texts[i]);
      else if (!isGivenTable(texts[i]))
        others.add(texts[i] + " (no table with a time)");
    }
  }

  // The table of parameters that an option names is no run.
  [[nodiscard]] bool isGivenTable(std::string const& path) const
  {
    if (options.parametersFile.empty() || nameIn(path) != nameIn(options.parametersFile)) return false;
    std::error_code failure;
    return std::filesystem::equivalent(full(path), givenParametersFile(folder, options), failure);
  }

  void judgeAll(std::vector<Kind>& kinds, std::vector<std::string> const& texts) const
  {
    std::vector<std::exception_ptr> faults(kinds.size());
    inParallel(threadCount(options.threads), kinds.size(), [&](std::size_t i) {
      try {
        std::vector<std::size_t> const& members = kinds[i].members;
        kinds[i].verdict = judge(full(texts[members.front()]), inner);
        // A damaged file is no sign that all are of no use.
        for (std::size_t const other : {members[members.size() / 2], members.back()}) {
          if (kinds[i].verdict.is == Verdict::Is::Scan || other == members.front()) continue;
          Verdict const again = judge(full(texts[other]), inner);
          if (again.is == Verdict::Is::Scan) kinds[i].verdict = again;
        }
      } catch (...) {
        faults[i] = std::current_exception();
      }
    });
    throwFirst(faults);
  }

  static void throwFirst(std::vector<std::exception_ptr> const& faults)
  {
    for (std::exception_ptr const& fault : faults)
      if (fault) std::rethrow_exception(fault);
  }

  // A file that is no table is of no concern, unless it has the ending of those that are.
  void rejectDamaged(std::vector<Kind> const& kinds, std::vector<std::string> const& texts) const
  {
    std::set<std::string> endings;
    for (Kind const& kind : kinds)
      if (kind.verdict.is == Verdict::Is::Scan) endings.insert(endingOf(texts[kind.members.front()]));
    for (Kind const& kind : kinds) {
      bool const isDamaged =
          kind.verdict.is == Verdict::Is::NoTable && endings.count(endingOf(texts[kind.members.front()])) > 0;
      if (isDamaged || (endings.empty() && kind.verdict.why)) std::rethrow_exception(kind.verdict.why);
    }
    if (endings.empty())
      throw ScanError(folder, "no scan was found in this folder: expected text files, one per run, such as "
                              "run_1.csv or realization-1/out.csv" +
                                  (others.count() > 0 ? "; passed over: " + others.text() : ""));
  }

  void readSingle()
  {
    MappedFile const map(full(files.front()));
    result = readText({full(files.front()), bytesOf(map), true}, options);
    tell("the one scan file of the folder is " + shown(files.front()));
    for (std::size_t run = 0; run < result.scan.runs.size(); ++run) fileOfRun.push_back(0);
  }

  void readAll()
  {
    std::vector<std::string> keys = runKeysOf(files);
    bool latin = false;
    for (std::string& key : keys) key = toUtf8(key, latin);
    try {
      for (std::size_t first = 0; first < files.size();) first = readBatch(first, keys);
      makeScan();
    } catch (std::bad_alloc const&) {
      throw ScanError(folder, "not enough memory for the runs of " + std::to_string(files.size()) + " files");
    }
  }

  // Several files at a time, so that threads have work and the callback is called; few enough that the memory
  // for them is small beside that of the scan.
  std::size_t readBatch(std::size_t first, std::vector<std::string> const& keys)
  {
    constexpr std::size_t mostFiles = 256;
    constexpr std::uintmax_t mostBytes = std::uintmax_t(64) << 20;
    std::size_t end = first;
    for (std::uintmax_t bytes = 0; end < files.size() && end < first + mostFiles && bytes < mostBytes;
         ++end) {
      std::error_code failure;
      std::uintmax_t const size = std::filesystem::file_size(full(files[end]), failure);
      if (!failure) bytes += size;
    }
    std::vector<RunFile> batch(end - first);
    std::vector<std::exception_ptr> faults(batch.size());
    inParallel(threadCount(options.threads), batch.size(), [&](std::size_t i) {
      try {
        MappedFile const map(full(files[first + i]));
        readRows({full(files[first + i]), bytesOf(map), true}, inner, batch[i]);
      } catch (...) {
        faults[i] = std::current_exception();
      }
    });
    throwFirst(faults);
    for (std::size_t i = 0; i < batch.size(); ++i) {
      joined.add(keys[first + i], batch[i].table, batch[i].runs);
      collect(batch[i].report, first + i);
      batch[i] = {};
    }
    if (options.progress && !options.progress(static_cast<double>(end) / static_cast<double>(files.size())))
      throw ReadCancelled();
    return end;
  }

  /// What several files were found to be alike in.
  struct SharedFinding
  {
    Finding finding;
    std::size_t file = 0; ///< the first
    std::size_t count = 0;
  };

  void collect(ReadReport const& report, std::size_t file)
  {
    if (file == 0) result.report.format = report.format;
    if (file == 0) result.report.columns = report.columns;
    for (Finding const& finding : report.findings) {
      auto const known = findingPlaces.find(finding.what + '\n' + finding.why);
      if (known != findingPlaces.end()) {
        ++shared[known->second].count;
      } else if (shared.size() == mostFindings) {
        ++furtherFindings;
      } else {
        findingPlaces.emplace(finding.what + '\n' + finding.why, shared.size());
        shared.push_back({finding, file, 1});
      }
    }
  }

  void makeScan()
  {
    CellTable table = joined.take();
    table.placeOf = [this](std::size_t row, std::size_t column) { return placeOf(row, headers[column]); };
    for (CellColumn const& column : table.columns) headers.push_back(column.header);
    tellFiles();
    ReadOptions forJoined = options;
    forJoined.run = joined.runHeader();
    result.scan = scanOfRows(std::move(table), forJoined, result.report);
    for (ColumnFinding& column : result.report.columns)
      if (column.role == "run") column.why = "the names of the files";
    std::unordered_map<std::string, std::size_t> fileOfKey;
    for (JoinedRows::Run const& run : joined.runs()) fileOfKey.emplace(run.key, run.file);
    for (ScanRun const& run : result.scan.runs) fileOfRun.push_back(fileOfKey.at(run.key));
  }

  // The file is read again: to keep the lines of all rows would take more memory than a message is worth.
  CellPlace placeOf(std::size_t row, std::string const& header) const
  {
    auto const isBefore = [](std::size_t at, JoinedRows::Run const& run) { return at < run.firstRow; };
    auto const next = std::upper_bound(joined.runs().begin(), joined.runs().end(), row, isBefore);
    std::size_t const file = (next - 1)->file;
    std::string const path = full(files[file]);
    MappedFile const map(path);
    RunFile again;
    readRows({path, bytesOf(map), true}, inner, again);
    CellPlace place;
    place.file = path;
    place.line = again.table.lineOf(again.runs.rows.row(row - joined.firstRowOf(file)));
    for (std::size_t i = 0; i < again.table.columns.size(); ++i)
      if (again.table.columns[i].header == header) place.column = i + 1;
    return place;
  }

  void tellFiles()
  {
    result.report.format = std::to_string(files.size()) + " files of " + result.report.format;
    tell("runs are named by their files: " + runsieve::quoted(joined.runs().front().key) + " is " +
             shown(files.front()),
         "what differs between the paths of the files", true);
    if (joined.replacedRunColumns() > 0)
      tell("the run column of " + std::to_string(joined.replacedRunColumns()) +
               (joined.replacedRunColumns() == 1 ? " file" : " files") +
               " only tells apart the runs of that file",
           "the names of the files tell apart those of all");
    NameList left;
    for (std::string const& name : joined.leftOut()) left.add(runsieve::quoted(name));
    if (left.count() > 0)
      tell("columns that not all files have were left out: " + left.text(), "runs have the same outputs",
           true);
    for (SharedFinding const& finding : shared) {
      std::string const where = finding.count == files.size() ? "in all files"
                                : finding.count == 1          ? "in " + shown(files[finding.file])
                                                     : "in " + std::to_string(finding.count) + " files";
      tell(where + ": " + finding.finding.what, finding.finding.why, finding.finding.guess);
    }
    if (furtherFindings > 0) tell(std::to_string(furtherFindings) + " more findings in single files");
  }

  // Lists of parameters in folders of a single file of runs.
  void addLists(std::vector<std::string> const& parameterFiles)
  {
    std::map<std::string, std::vector<std::size_t>> filesIn;
    for (std::size_t i = 0; i < files.size(); ++i) filesIn[folderOf(files[i])].push_back(i);
    bool const wanted = options.parametersFile.empty() && !options.parameters;
    std::map<std::size_t, ParameterList> lists;
    for (std::string const& path : parameterFiles) {
      std::string const place = folderOf(path);
      if (place.empty()) continue; // a table for all runs
      auto const here = filesIn.find(place);
      bool const isOfOne = wanted && here != filesIn.end() && here->second.size() == 1;
      if (!isOfOne || lists.count(here->second.front()) > 0) {
        others.add(path);
        continue;
      }
      auto list = readParameterList(full(path));
      if (!list) throw ScanError(full(path), "expected lines \"NAME VALUE\" with the parameters of one run");
      lists.emplace(here->second.front(), std::move(*list));
    }
    if (lists.empty()) return;
    tell("the parameters of " + std::to_string(lists.size()) +
             (lists.size() == 1 ? " file were" : " files were") + " read from lists such as " +
             lists.begin()->second.file,
         "it lies in the folder of the run", true);
    std::vector<ParameterList const*> listOfRun;
    for (std::size_t const file : fileOfRun) {
      auto const list = lists.find(file);
      listOfRun.push_back(list == lists.end() ? nullptr : &list->second);
    }
    joinParameterLists(result, listOfRun);
  }

  void tellOthers()
  {
    if (others.count() > 0)
      tell("passed over " + std::to_string(others.count()) + (others.count() == 1 ? " file" : " files") +
               ": " + others.text(),
           "no part of the scan", true);
  }

  static constexpr std::size_t mostFindings = 20;

  std::string const& folder;
  ReadOptions const& options;
  ReadOptions inner; ///< for one file
  std::vector<std::string> files;
  NameList others;
  JoinedRows joined;
  std::vector<std::string> headers; ///< of the joined table
  std::vector<SharedFinding> shared;
  std::unordered_map<std::string, std::size_t> findingPlaces; ///< in shared
  std::size_t furtherFindings = 0;
  std::vector<std::size_t> fileOfRun;
  ScanFile result;
};

} // namespace

ScanFile readFolder(std::string const& folder, ReadOptions const& options)
{
  return FolderReading(folder, options).read();
}

} // namespace runsieve
