#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace runsieve {

/// Names for a message: the first ones, and how many more there are.
class NameList
{
public:
  void add(std::string const& name)
  {
    if (++total <= most) names.push_back(printable(name));
  }

  [[nodiscard]] std::size_t count() const { return total; }

  /// "a, b, c and 5 more"
  [[nodiscard]] std::string text() const
  {
    std::string joined;
    for (std::string const& name : names) joined += (joined.empty() ? "" : ", ") + name;
    return total > most ? joined + " and " + std::to_string(total - most) + " more" : joined;
  }

private:
  // Names of files may hold line ends.
  static std::string printable(std::string name)
  {
    for (char& c : name)
      if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) c = '?';
    return name;
  }

  static constexpr std::size_t most = 20;
  std::vector<std::string> names;
  std::size_t total = 0;
};

} // namespace runsieve
