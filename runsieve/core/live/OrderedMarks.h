#pragma once

#include <runsieve/core/inference/OrderedValues.h>
#include <runsieve/core/live/LargestDifference.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace runsieve {

/// Which runs pass, one bit per run in the order of a parameter, and their distance from the others.
///
/// A run that begins or ends to pass flips a bit. The largest difference of the distribution functions is
/// found by whole words of bits: within one it can't leave what it would reach if all its passing runs came
/// first, or all its others. Words that can't hold the largest, most of them, are not looked into.
class OrderedMarks
{
public:
  /// No run passes.
  /// \param runs of the scan, with those that `ordered` leaves out
  OrderedMarks(OrderedValues const& ordered, std::size_t runs);

  /// These runs pass from now on if they did not, and the other way round. \param changed each run at most
  /// once
  void flip(std::vector<std::uint32_t> const& changed);

  /// As compareSamples() finds it. `place` is the first of the group of equal values in the order.
  [[nodiscard]] LargestDifference largest();

private:
  struct Walk;

  void countPassing();
  [[nodiscard]] std::int64_t largestAtWords(Walk const& walk) const;
  void lookInto(std::size_t word, Walk& walk) const;
  void stepThrough(std::size_t first, std::size_t runs, std::int64_t difference, Walk& walk) const;
  [[nodiscard]] std::size_t firstOfGroup(std::size_t end) const;

  std::size_t size;                  ///< runs that have a value
  std::vector<std::uint32_t> places; ///< of each run in the order; runs without a value share one behind all
  std::vector<std::uint64_t> passes; ///< by place; one word more, for runs without a value
  std::vector<std::uint64_t> ends;   ///< by place: whether it is the last of a group of equal values
  std::vector<std::uint32_t> before; ///< passing runs before each word, and all
};

} // namespace runsieve
