#include "app/scan/MappedFile.h"

#include "app/scan/ScanError.h"

#include <boost/interprocess/exceptions.hpp>
#include <boost/interprocess/file_mapping.hpp>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>

#include <sys/mman.h>

namespace runsieve::app {

namespace {

void checkRegularFile(std::string const& path)
{
  std::error_code error;
  auto status = std::filesystem::status(path, error);
  if (status.type() == std::filesystem::file_type::not_found) throw ScanError(path, "no such file");
  if (error) throw ScanError(path, "cannot be opened: " + error.message());
  if (std::filesystem::is_directory(status)) throw ScanError(path, "is a directory, not a scan file");
  if (!std::filesystem::is_regular_file(status)) throw ScanError(path, "is not a regular file");
}

} // namespace

MappedFile::MappedFile(std::string const& path)
{
  checkRegularFile(path);
  std::error_code error;
  if (std::filesystem::file_size(path, error) == 0 && !error) return; // an empty file cannot be mapped
  namespace ipc = boost::interprocess;
  try {
    ipc::file_mapping file(path.c_str(), ipc::read_only);
    ipc::mapped_region(file, ipc::read_only).swap(region);
  } catch (ipc::interprocess_exception const& e) {
    throw ScanError(path, std::string("cannot be opened: ") +
                              (e.get_native_error() != 0 ? std::strerror(e.get_native_error()) : e.what()));
  }
}

void MappedFile::release(char const* first, char const* last)
{
  std::uintptr_t const page = boost::interprocess::mapped_region::get_page_size();
  std::uintptr_t const begin = (reinterpret_cast<std::uintptr_t>(first) + page - 1) / page * page;
  std::uintptr_t const end = reinterpret_cast<std::uintptr_t>(last) / page * page;
  if (begin < end) ::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_DONTNEED);
}

} // namespace runsieve::app
