#include <runsieve/core/files/MappedFile.h>

#include <runsieve/core/scan/ScanError.h>

#include <boost/interprocess/exceptions.hpp>
#include <boost/interprocess/file_mapping.hpp>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>

#include <sys/mman.h>

namespace runsieve {

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
  std::size_t const page = boost::interprocess::mapped_region::get_page_size();
  auto const intoPage = [page](char const* p) { return reinterpret_cast<std::uintptr_t>(p) % page; };
  char const* const begin = first + (page - intoPage(first)) % page;
  char const* const end = last - intoPage(last);
  if (begin < end) ::madvise(const_cast<char*>(begin), static_cast<std::size_t>(end - begin), MADV_DONTNEED);
}

} // namespace runsieve
