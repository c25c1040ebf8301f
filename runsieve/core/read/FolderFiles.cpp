#include <runsieve/core/read/FolderFiles.h>

#include <runsieve/core/read/ColumnNames.h>
#include <runsieve/core/read/NaturalOrder.h>
#include <runsieve/core/scan/ScanError.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <deque>
#include <filesystem>
#include <unordered_set>

namespace runsieve {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t mostTexts = 1'000'000;
constexpr std::size_t mostEntries = 4'000'000; ///< with a folder and a list of parameters for each file
constexpr std::size_t deepest = 32;            ///< folders within folders

constexpr std::array<char const*, 6> parameterNames = {"parameters.csv", "parameters.tsv", "parameters.txt",
                                                       "params.csv",     "params.tsv",     "params.txt"};

std::string lowerCase(std::string text)
{
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

template <std::size_t N> bool isOneOf(std::string const& word, std::array<char const*, N> const& words)
{
  return std::find(words.begin(), words.end(), word) != words.end();
}

bool mayBeText(std::string const& path)
{
  constexpr std::array<char const*, 15> endings = {"",      ".csv",  ".tsv", ".tab", ".txt",
                                                   ".dat",  ".data", ".out", ".psv", ".asc",
                                                   ".gdat", ".cdat", ".prn", ".ssv", ".scan"};
  constexpr std::array<char const*, 14> documents = {
      "readme",   "license",    "licence", "copying",  "changelog",    "changes",      "notes",
      "makefile", "dockerfile", "authors", "manifest", "requirements", "contributing", "todo"};
  std::string const ending = lowerCase(endingOf(path));
  bool const isNumber = ending.size() > 1 && digitsAt(ending, 1).size() + 1 == ending.size();
  std::string const name = nameIn(path);
  return (isNumber || isOneOf(ending, endings)) &&
         !isOneOf(plainName(name.substr(0, name.size() - ending.size())), documents);
}

/// A folder that is yet to be listed.
struct Folder
{
  std::string path; ///< relative; empty for the outermost
  std::size_t depth = 0;
};

/// The listing of one folder.
class Listing
{
public:
  explicit Listing(std::string const& folder) : root(folder) {}

  FolderFiles list()
  {
    drain({{"", 0}});
    for (std::string const& link : linkedFiles) addLink(link);
    for (auto* const paths : {&found.texts, &found.parameterFiles})
      std::sort(paths->begin(), paths->end(), naturallyBefore);
    return std::move(found);
  }

private:
  void drain(std::deque<Folder> waiting)
  {
    while (!waiting.empty()) {
      Folder const folder = std::move(waiting.front());
      waiting.pop_front();
      if (!knownFolders.insert(canonical(folder.path)).second) {
        found.others.add(folder.path + " (a link to a folder that is read already)");
        continue;
      }
      if (folder.depth > deepest)
        throw ScanError(full(folder.path),
                        "more than " + std::to_string(deepest) + " folders lie within each other");
      for (Folder const& below : listOne(folder)) waiting.push_back(below);
      // Links come last: they may lead to what has a place of its own.
      if (waiting.empty()) waiting.swap(linkedFolders);
    }
  }

  std::vector<Folder> listOne(Folder const& folder)
  {
    std::vector<Folder> below;
    for (std::string const& name : namesIn(folder.path)) {
      std::string const path = folder.path.empty() ? name : folder.path + '/' + name;
      if (name.front() == '.') {
        found.others.add(path);
        continue;
      }
      std::error_code ignored;
      bool const isLink = fs::is_symlink(fs::symlink_status(full(path), ignored));
      fs::file_status const status = fs::status(full(path), ignored);
      if (fs::is_directory(status)) {
        if (isLink)
          linkedFolders.push_back({path, folder.depth + 1});
        else
          below.push_back({path, folder.depth + 1});
      } else if (fs::exists(status) && !fs::is_regular_file(status) && !isBroken(status)) {
        found.others.add(path + " (not a regular file)");
      } else if (isLink && fs::is_regular_file(status)) {
        linkedFiles.push_back(path);
      } else {
        addFile(path);
      }
    }
    return below;
  }

  // A link that leads nowhere, or a file whose kind cannot be told: reading it will say what is wrong.
  static bool isBroken(fs::file_status const& status)
  {
    return status.type() == fs::file_type::none || status.type() == fs::file_type::unknown;
  }

  std::vector<std::string> namesIn(std::string const& folder)
  {
    std::vector<std::string> names;
    std::error_code failure;
    for (fs::directory_iterator at(full(folder), failure), end; !failure && at != end;
         at.increment(failure)) {
      names.push_back(at->path().filename().string());
      if (++entries > mostEntries)
        throw ScanError(root, "more than " + std::to_string(mostEntries) + " files and folders");
    }
    if (failure) throw ScanError(full(folder), "the folder cannot be read: " + failure.message());
    std::sort(names.begin(), names.end(), naturallyBefore);
    return names;
  }

  void addFile(std::string const& path)
  {
    if (isParameterFile(path)) {
      found.parameterFiles.push_back(path);
    } else if (!mayBeText(path)) {
      found.others.add(path);
    } else {
      if (found.texts.size() == mostTexts)
        throw ScanError(root, "more than " + std::to_string(mostTexts) + " files of runs");
      found.texts.push_back(path);
    }
  }

  void addLink(std::string const& link)
  {
    if (knownFiles.empty())
      for (auto const* const paths : {&found.texts, &found.parameterFiles})
        for (std::string const& path : *paths) knownFiles.insert(canonical(path));
    if (knownFiles.insert(canonical(link)).second)
      addFile(link);
    else
      found.others.add(link + " (a link to a file that is read already)");
  }

  [[nodiscard]] std::string full(std::string const& path) const
  {
    return path.empty() ? root : (fs::path(root) / path).string();
  }

  [[nodiscard]] std::string canonical(std::string const& path) const
  {
    std::error_code failure;
    fs::path const found = fs::canonical(full(path), failure);
    return failure ? full(path) : found.string();
  }

  std::string const& root;
  FolderFiles found;
  std::deque<Folder> linkedFolders;
  std::vector<std::string> linkedFiles;
  std::unordered_set<std::string> knownFolders;
  std::unordered_set<std::string> knownFiles;
  std::size_t entries = 0;
};

} // namespace

FolderFiles listFolder(std::string const& folder)
{
  return Listing(folder).list();
}

bool isParameterFile(std::string const& path)
{
  return isOneOf(nameIn(path), parameterNames);
}

std::vector<std::string> parameterFilesIn(std::string const& folder)
{
  std::vector<std::string> paths;
  for (char const* const name : parameterNames) {
    std::error_code failure;
    fs::path const path = fs::path(folder) / name;
    if (fs::is_regular_file(path, failure)) paths.push_back(path.string());
  }
  return paths;
}

std::string endingOf(std::string const& path)
{
  std::string const name = nameIn(path);
  std::size_t const point = name.rfind('.');
  return point == std::string::npos || point == 0 ? "" : name.substr(point);
}

std::string nameIn(std::string const& path)
{
  return path.substr(path.rfind('/') + 1); // npos + 1 is 0
}

std::string folderOf(std::string const& path)
{
  std::size_t const slash = path.rfind('/');
  return slash == std::string::npos ? "" : path.substr(0, slash);
}

} // namespace runsieve
