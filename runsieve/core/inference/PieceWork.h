#pragma once

#include <runsieve/core/parallel/Parallel.h>

#include <algorithm>
#include <cstddef>

namespace runsieve {

/// Long work in numbered pieces of about equal size, done a slice of pieces at a time, so that a host can
/// stop it. No piece may need the result of another of the same slice.
class PieceWork
{
public:
  /// \param steps of the innermost loop in one piece, to size slices
  /// \param threads 0 for as many as the machine has, at most 4
  PieceWork(std::size_t pieces, std::size_t steps, unsigned threads)
      : count(pieces), used(threadCount(threads)),
        perSlice(used * std::max<std::size_t>(1, STEPS_OF_SLICE / std::max<std::size_t>(1, steps)))
  {}

  [[nodiscard]] bool done() const { return next == count; }

  /// Calls work(piece) for the next pieces.
  /// \param pieces how many; 0 for some 50 ms of work
  template <class Work> void advance(std::size_t pieces, Work const& work)
  {
    const std::size_t slice = std::min(pieces > 0 ? pieces : perSlice, count - next);
    inParallel(used, slice, [&](std::size_t i) { work(next + i); });
    next += slice;
  }

private:
  static constexpr std::size_t STEPS_OF_SLICE = 10'000'000;

  std::size_t count;
  unsigned used;
  std::size_t perSlice;
  std::size_t next = 0;
};

} // namespace runsieve
