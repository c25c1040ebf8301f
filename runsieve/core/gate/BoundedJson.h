#pragma once

#include <nlohmann/json.hpp>

#include <stdexcept>
#include <string_view>

namespace runsieve {

/// Members stay in the order in which they were written.
using OrderedJson = nlohmann::ordered_json;

/// Reads JSON that is nested no deeper than files of ours could ever be: a row of a million brackets would
/// take a hundred times its memory. \throw nlohmann::json::exception; std::length_error if it is nested
/// deeper
inline OrderedJson parseJson(std::string_view text)
{
  constexpr int deepest = 64;
  auto const check = [](int depth, OrderedJson::parse_event_t event, OrderedJson&) {
    if (depth > deepest) throw std::length_error("it is nested too deeply");
    return true;
  };
  return OrderedJson::parse(text, check);
}

} // namespace runsieve
