#pragma once

#include <runsieve/core/gate/Gate.h>

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace runsieve {

/// The words of the kinds, in the order of GateKind. Text and JSON share them; in text Inside has no word.
inline constexpr std::array<std::string_view, 14> kindWords = {
    "inside", "ever",      "never",     "crosses", "max",    "min",  "mean",
    "last",   "timeofmax", "timeofmin", "is",      "status", "runs", "cluster"};

/// In the order of ClusterMode.
inline constexpr std::array<std::string_view, 3> modeWords = {"curves", "phase", "magnitude"};

/// In the order of RunStatus.
inline constexpr std::array<std::string_view, 3> statusWords = {"complete", "short", "failed"};

template <class Enumeration, std::size_t size>
[[nodiscard]] std::optional<Enumeration> fromWord(std::array<std::string_view, size> const& words,
                                                  std::string_view word)
{
  for (std::size_t i = 0; i < size; ++i)
    if (words[i] == word) return static_cast<Enumeration>(i);
  return std::nullopt;
}

template <class Enumeration, std::size_t size>
[[nodiscard]] std::string_view wordOf(std::array<std::string_view, size> const& words, Enumeration value)
{
  return words.at(static_cast<std::size_t>(value));
}

/// Whether the gate looks at one number of a run, written as a function: "max(A)".
[[nodiscard]] constexpr bool isFunction(GateKind kind)
{
  return kind >= GateKind::Max && kind <= GateKind::TimeOfMin;
}

/// Whether a range of values and perhaps a span of times belong to it.
[[nodiscard]] constexpr bool hasRange(GateKind kind)
{
  return kind <= GateKind::TimeOfMin;
}

} // namespace runsieve
