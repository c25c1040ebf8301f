#include <runsieve/core/scan/ScanError.h>

#include <runsieve/core/text/ShownText.h>

#include <utility>

namespace runsieve {

namespace {

std::string fullMessage(std::string const& file, ScanError::Place const& place, std::string const& message)
{
  std::string text = file;
  if (place.line > 0) text += ':' + std::to_string(place.line);
  text += ": ";
  if (place.column > 0) {
    text += "column " + std::to_string(place.column);
    if (!place.field.empty()) text += " (\"" + printable(place.field) + "\")";
    text += ": ";
  }
  return text + message;
}

} // namespace

ScanError::ScanError(std::string file, Place place, std::string const& message)
    : std::runtime_error(fullMessage(file, place, message)), fileName(std::move(file)),
      where(std::move(place))
{}

} // namespace runsieve
