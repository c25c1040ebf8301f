#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <vector>

namespace runsieve::app {

/// Runs that the user keeps an eye on, by their position, each with a number for its colour: it keeps that as
/// long as it is pinned, and one that comes later has the least number that is free.
class PinnedRuns
{
public:
  PinnedRuns() = default;
  /// \param inOrder of their numbers, which are 0, 1, ...
  explicit PinnedRuns(std::vector<std::size_t> const& inOrder);

  [[nodiscard]] std::set<std::size_t> const& runs() const { return all; }
  /// Of a pinned run.
  [[nodiscard]] std::size_t numberOf(std::size_t run) const { return numbers.at(run); }
  /// By their numbers.
  [[nodiscard]] std::vector<std::size_t> inOrder() const;
  void set(std::set<std::size_t> runs);

private:
  void add(std::size_t run);

  std::set<std::size_t> all;
  std::map<std::size_t, std::size_t> numbers; ///< by run
  std::set<std::size_t> gaps;                 ///< numbers that were given and are free again
};

} // namespace runsieve::app
