#pragma once

#include <nlohmann/json.hpp>

#include <cmath>
#include <stdexcept>
#include <string_view>

namespace runsieve {

/// JSON to be written: members stay in their order.
using WrittenJson = nlohmann::ordered_json;

/// JSON of others. Its objects are trees: in ordered ones each member is looked up among all before it.
using ReadJson = nlohmann::json;

/// A number, or the text "inf", "-inf" or "nan", as JSON has no numbers for these.
inline WrittenJson writtenNumber(double value)
{
  if (std::isfinite(value)) return value;
  return std::isnan(value) ? "nan" : value < 0.0 ? "-inf" : "inf";
}

/// Reads JSON that is nested no deeper than files of ours could ever be: a row of a million brackets would
/// take a hundred times its memory. \throw nlohmann::json::exception; std::length_error if it is nested
/// deeper
inline ReadJson parseJson(std::string_view text)
{
  constexpr int deepest = 64;
  auto const check = [](int depth, ReadJson::parse_event_t, ReadJson&) {
    if (depth > deepest) throw std::length_error("the JSON is nested too deeply");
    return true;
  };
  return ReadJson::parse(text, check);
}

} // namespace runsieve
