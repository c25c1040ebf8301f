#include <runsieve/core/read/ReadScan.h>

#include <runsieve/core/files/Gzip.h>
#include <runsieve/core/files/MappedFile.h>
#include <runsieve/core/read/Hdf5Reader.h>
#include <runsieve/core/read/ImportFile.h>
#include <runsieve/core/read/NpzReader.h>
#include <runsieve/core/read/TextReader.h>
#include <runsieve/core/scan/ScanError.h>

namespace runsieve {

namespace {

constexpr std::size_t firstBytesOfHdf5 = 4096;

ScanFile readBytes(std::string const& path, std::string_view bytes, bool mapped, ReadOptions const& options)
{
  if (isNpy(bytes)) return readNpy(path, bytes, options);
  if (isNpz(bytes)) return readNpz(path, bytes, options);
  return readText({path, bytes, mapped}, options);
}

ScanFile readContent(std::string const& path, ReadOptions const& options)
{
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
