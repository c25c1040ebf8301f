#include <runsieve/core/read/ReadScan.h>

#include <runsieve/core/files/Gzip.h>
#include <runsieve/core/files/MappedFile.h>
#include <runsieve/core/read/FolderFiles.h>
#include <runsieve/core/read/FolderReader.h>
#include <runsieve/core/read/ForeignFormats.h>
#include <runsieve/core/read/Hdf5Reader.h>
#include <runsieve/core/read/ImportFile.h>
#include <runsieve/core/read/NpzReader.h>
#include <runsieve/core/read/ParameterCopies.h>
#include <runsieve/core/read/ParameterTable.h>
#include <runsieve/core/read/ParametersFile.h>
#include <runsieve/core/read/TextReader.h>
#include <runsieve/core/scan/ScanError.h>

#include <filesystem>

namespace runsieve {

namespace {

constexpr std::size_t firstBytesOfHdf5 = 4096;

bool isFolder(std::string const& path)
{
  std::error_code failure;
  return std::filesystem::is_directory(path, failure);
}

ScanFile readBytes(std::string const& path, std::string_view bytes, bool mapped, ReadOptions const& options)
{
  std::string const foreign = foreignFormat(bytes);
  if (!foreign.empty()) throw ScanError(path, foreign);
  if (isNpy(bytes)) return readNpy(path, bytes, options);
  if (isNpz(bytes)) return readNpz(path, bytes, options);
  return readText({path, bytes, mapped}, options);
}

ScanFile readContent(std::string const& path, ReadOptions const& options)
{
  if (isFolder(path)) return readFolder(path, options);
  MappedFile const map(path);
  std::string_view const bytes(map.begin(), static_cast<std::size_t>(map.end() - map.begin()));
  if (isHdf5(bytes.substr(0, firstBytesOfHdf5))) return readHdf5(path, options);
  if (!isGzip(bytes)) return readBytes(path, bytes, true, options);
  std::string const content = inflated(path, bytes);
  if (isHdf5(content.substr(0, firstBytesOfHdf5)))
    throw ScanError(path, "an HDF5 file inside of gzip; unpack it first with gunzip");
  ScanFile result = readBytes(path, content, false, options);
  result.report.format += ", compressed by gzip";
  return result;
}

// Tables of parameters in the folder of a scan or beside its file, which are looked for unless options tell
// what the parameters are.
void joinParameters(ScanFile& result, std::string const& path, ReadOptions const& options)
{
  if (!options.parametersFile.empty()) {
    joinParameterTable(result, givenParametersFile(path, options), options, false);
    return;
  }
  if (options.parameters) return;
  bool taken = false;
  for (std::string const& table :
       parameterFilesIn(isFolder(path) ? path : std::filesystem::path(path).parent_path().string())) {
    std::error_code failure;
    if (std::filesystem::equivalent(table, path, failure)) continue;
    if (taken)
      result.report.findings.push_back({table + " was passed over", "another table was found first", true});
    else
      joinParameterTable(result, table, options, true);
    taken = true;
  }
}

/// Options with those of the file beside the scan; without them if that file is damaged by now.
ReadOptions mergedOptions(std::string const& importFile, ReadOptions const& options)
{
  try {
    return withImportFile(importFile, options);
  } catch (ScanError const&) {
    return options;
  }
}

void addFolder(std::vector<std::string>& files, std::string const& folder)
{
  try {
    FolderFiles const listed = listFolder(folder);
    for (auto const* const paths : {&listed.texts, &listed.parameterFiles})
      for (std::string const& path : *paths) files.push_back((std::filesystem::path(folder) / path).string());
  } catch (ScanError const&) {
    return; // it is gone, or may not be read any more
  }
}

ScanFile readWith(std::string const& path, ReadOptions const& options)
{
  ScanFile result = readContent(path, options);
  joinParameters(result, path, options);
  tellCopies(result.scan, result.report.findings);
  return result;
}

} // namespace

ScanFile readScan(std::string const& path, ReadOptions const& options)
{
  std::string const importFile = importFileOf(path);
  if (importFile.empty()) return readWith(path, options);
  ScanFile result = readWith(path, withImportFile(importFile, options));
  result.report.findings.insert(result.report.findings.begin(),
                                {"options were taken from " + importFile, "", false});
  return result;
}

std::vector<std::string> filesOfScan(std::string const& path, ReadOptions const& options)
{
  std::vector<std::string> files = {path};
  std::string const importFile = importFileOf(path);
  if (!importFile.empty()) files.push_back(importFile);
  ReadOptions const read = importFile.empty() ? options : mergedOptions(importFile, options);
  if (!read.parametersFile.empty()) {
    files.push_back(givenParametersFile(path, read));
  } else if (!read.parameters && !isFolder(path)) {
    for (std::string const& table : parameterFilesIn(std::filesystem::path(path).parent_path().string()))
      files.push_back(table);
  }
  if (isFolder(path)) addFolder(files, path);
  return files;
}

} // namespace runsieve
