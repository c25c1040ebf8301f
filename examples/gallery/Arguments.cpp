#include "Arguments.h"

#include "pages/Pages.h"

#include <locale>
#include <map>
#include <sstream>

namespace gallery {

const char* const helpText =
    "gallery [--page PAGE]                    opens a window with all pages\n"
    "gallery --pictures FOLDER [--page PAGE]  writes FOLDER/<name>.png for each page, without a display\n"
    "gallery --list                           prints numbers, names and titles of the pages\n"
    "\n"
    "  --page PAGE        number or name of the page to show first, or of the only one to write\n"
    "  --size WxH         of the pictures in pixels (800x600)\n"
    "  --font-scale F     how much larger than usual texts are in the pictures, 0.5 to 4 (1)\n"
    "  --help             prints this\n";

namespace {

/// Reads a number that takes the whole text.
template <class Number> bool read(std::string const& text, Number& number)
{
  std::istringstream stream(text);
  stream.imbue(std::locale::classic());
  stream >> std::noskipws >> number;
  return !stream.fail() && stream.peek() == std::istringstream::traits_type::eof();
}

void setSize(Arguments& arguments, std::string const& text)
{
  constexpr int smallest = 100;
  constexpr int largest = 8192; // what software OpenGL still draws
  const std::size_t x = text.find('x');
  const bool isRead = x != std::string::npos && read(text.substr(0, x), arguments.width) &&
                      read(text.substr(x + 1), arguments.height);
  auto fits = [](int pixels) { return pixels >= smallest && pixels <= largest; };
  if (!isRead || !fits(arguments.width) || !fits(arguments.height))
    throw UsageError("--size " + text + ": not WIDTHxHEIGHT with 100 to 8192 pixels each");
}

void setFontScale(Arguments& arguments, std::string const& text)
{
  if (!read(text, arguments.fontScale) || !(arguments.fontScale >= 0.5 && arguments.fontScale <= 4.0))
    throw UsageError("--font-scale " + text + ": not a number from 0.5 to 4");
}

void setPage(Arguments& arguments, std::string const& text)
{
  arguments.page = findPage(text);
  if (!arguments.page) throw UsageError("--page " + text + ": no such page; --list prints all");
}

using Setter = void (*)(Arguments& arguments, std::string const& value);

void setPictures(Arguments& arguments, std::string const& folder)
{
  arguments.pictures = folder;
}

/// What an option with a value does; null if there is no such option.
Setter setterOf(std::string const& option)
{
  static const std::map<std::string, Setter> setters = {
      {"--page", setPage}, {"--pictures", setPictures}, {"--size", setSize}, {"--font-scale", setFontScale}};
  const auto found = setters.find(option);
  return found == setters.end() ? nullptr : found->second;
}

} // namespace

Arguments parseArguments(std::vector<std::string> const& words)
{
  Arguments arguments;
  bool shapesPictures = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    std::string const& word = words[i];
    if (word == "--help" || word == "-h")
      arguments.help = true;
    else if (word == "--list")
      arguments.list = true;
    else if (!setterOf(word))
      throw UsageError("unknown argument " + word + "; --help prints all");
    else if (i + 1 == words.size() || words[i + 1].empty())
      throw UsageError(word + " needs a value");
    else
      setterOf(word)(arguments, words[++i]);
    shapesPictures = shapesPictures || word == "--size" || word == "--font-scale";
  }
  if (shapesPictures && arguments.pictures.empty())
    throw UsageError("--size and --font-scale are for --pictures only");
  return arguments;
}

} // namespace gallery
