#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace runsieve::test {

/// A new folder that vanishes with its content.
class TempFolder
{
public:
  TempFolder()
  {
    std::string name = (std::filesystem::temp_directory_path() / "runsieve-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    folder = name;
  }
  TempFolder(TempFolder const&) = delete;
  TempFolder& operator=(TempFolder const&) = delete;
  ~TempFolder()
  {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  }

  [[nodiscard]] std::string file(std::string const& name) const { return (folder / name).string(); }

  /// Writes a file and returns its path.
  [[nodiscard]] std::string write(std::string const& content, std::string const& name = "scan.csv") const
  {
    std::ofstream(file(name), std::ios::binary) << content;
    return file(name);
  }

  [[nodiscard]] static std::string contentOf(std::string const& path)
  {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  [[nodiscard]] std::size_t fileCount() const
  {
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator()));
  }

private:
  std::filesystem::path folder;
};

} // namespace runsieve::test
