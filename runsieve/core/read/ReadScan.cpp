#include <runsieve/core/read/ReadScan.h>

#include <runsieve/core/files/MappedFile.h>
#include <runsieve/core/read/ImportFile.h>
#include <runsieve/core/read/TextReader.h>

namespace runsieve {

namespace {

ScanFile readContent(std::string const& path, ReadOptions const& options)
{
  MappedFile const map(path);
  std::string_view const bytes(map.begin(), static_cast<std::size_t>(map.end() - map.begin()));
  return readText({path, bytes, true}, options);
}

} // namespace

ScanFile readScan(std::string const& path, ReadOptions const& options)
{
  std::string const importFile = importFileOf(path);
  if (importFile.empty()) return readContent(path, options);
  ScanFile result = readContent(path, withImportFile(importFile, options));
  result.report.findings.insert(result.report.findings.begin(),
                                {"options were taken from " + importFile, "", false});
  return result;
}

} // namespace runsieve
