#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>
#include <vector>

namespace runsieve {

/// Some of the runs of a scan, by their position.
class RUNSIEVE_CORE_EXPORT RunSet
{
public:
  RunSet() = default;
  /// \param all whether the set begins with all runs or with none
  explicit RunSet(std::size_t runs, bool all = false) : marks(runs, all ? 1 : 0) {}

  [[nodiscard]] bool contains(std::size_t run) const { return marks[run] != 0; }
  void set(std::size_t run, bool member = true) { marks[run] = member ? 1 : 0; }

  /// Runs of the scan, members or not.
  [[nodiscard]] std::size_t runs() const { return marks.size(); }
  /// Number of members.
  [[nodiscard]] std::size_t count() const;
  /// Positions of the members, ascending.
  [[nodiscard]] std::vector<std::size_t> members() const;

  /// Members of both, of either, of this one and not the other; the sets must be of one scan.
  RunSet& operator&=(RunSet const& other);
  RunSet& operator|=(RunSet const& other);
  RunSet& operator-=(RunSet const& other);
  /// All others.
  [[nodiscard]] RunSet complement() const;

  /// 0 or 1 per run, for kernels.
  [[nodiscard]] std::vector<unsigned char> const& mask() const { return marks; }

  friend bool operator==(RunSet const& a, RunSet const& b) { return a.marks == b.marks; }
  friend bool operator!=(RunSet const& a, RunSet const& b) { return !(a == b); }

private:
  std::vector<unsigned char> marks;
};

} // namespace runsieve
