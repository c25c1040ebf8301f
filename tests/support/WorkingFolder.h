#pragma once

#include <filesystem>

namespace runsieve::test {

/// Makes a folder the one that files without a path go to, as long as it lives.
class WorkingFolder
{
public:
  explicit WorkingFolder(std::filesystem::path const& folder) { std::filesystem::current_path(folder); }
  WorkingFolder(WorkingFolder const&) = delete;
  WorkingFolder& operator=(WorkingFolder const&) = delete;
  ~WorkingFolder()
  {
    std::error_code ignored;
    std::filesystem::current_path(former, ignored);
  }

private:
  std::filesystem::path former = std::filesystem::current_path();
};

} // namespace runsieve::test
