#include <runsieve/core/read/RunKeys.h>

#include <runsieve/core/read/FolderFiles.h>
#include <runsieve/core/read/NaturalOrder.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <string_view>
#include <unordered_set>

namespace runsieve {

namespace {

using Texts = std::vector<std::string>;

bool isDigit(char c)
{
  return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

bool isLetter(char c)
{
  return std::isalnum(static_cast<unsigned char>(c)) != 0 && !isDigit(c);
}

// Whether a name may be cut here: not within a word and not within a number.
bool mayCut(std::string_view text, std::size_t at)
{
  if (at == 0 || at == text.size()) return true;
  char const left = text[at - 1];
  char const right = text[at];
  if (isDigit(left)) return !isDigit(right) && right != '.' && !isLetter(right);
  if (left == '.') return !(isDigit(right) && at > 1 && isDigit(text[at - 2]));
  return !isLetter(left) || !isLetter(right);
}

bool mayCutAll(Texts const& texts, std::size_t at, bool fromEnd)
{
  return std::all_of(texts.begin(), texts.end(), [&](std::string const& text) {
    return at < text.size() && mayCut(text, fromEnd ? text.size() - at : at);
  });
}

std::size_t commonStart(Texts const& texts)
{
  std::size_t length = texts.front().size();
  for (std::string const& text : texts) {
    auto const end = text.begin() + static_cast<std::ptrdiff_t>(std::min(length, text.size()));
    length = static_cast<std::size_t>(std::mismatch(text.begin(), end, texts.front().begin()).first -
                                      text.begin());
  }
  return length;
}

// What all texts begin and end with is cut off.
void cutCommon(Texts& texts)
{
  for (bool const fromEnd : {false, true}) {
    Texts turned = texts;
    if (fromEnd)
      for (std::string& text : turned) std::reverse(text.begin(), text.end());
    std::size_t length = commonStart(turned);
    while (length > 0 && !mayCutAll(texts, length, fromEnd)) --length;
    for (std::string& text : texts) text.erase(fromEnd ? text.size() - length : 0, length);
  }
}

std::size_t differentTexts(Texts const& texts)
{
  return std::unordered_set<std::string>(texts.begin(), texts.end()).size();
}

void dropLeadingZeros(Texts& texts)
{
  Texts plain;
  for (std::string const& text : texts) {
    if (text.empty() || digitsAt(text, 0).size() != text.size()) return;
    plain.emplace_back(withoutLeadingZeros(text));
  }
  if (differentTexts(plain) == differentTexts(texts)) texts = std::move(plain);
}

Texts withoutEnding(Texts paths)
{
  std::string const ending = endingOf(paths.front());
  bool const isNumber = ending.size() > 1 && isDigit(ending[1]);
  bool const same = std::all_of(paths.begin(), paths.end(),
                                [&](std::string const& path) { return endingOf(path) == ending; });
  if (!same || isNumber) return paths;
  Texts shorter = paths;
  for (std::string& path : shorter) path.erase(path.size() - ending.size());
  return shorter;
}

/// The parts of all paths by their level; empty if the paths have different numbers of parts.
std::vector<Texts> levelsOf(Texts const& paths)
{
  auto const depth = [](std::string const& path) { return std::count(path.begin(), path.end(), '/'); };
  auto const levels = static_cast<std::size_t>(depth(paths.front())) + 1;
  std::vector<Texts> parts(levels);
  for (std::string const& path : paths) {
    if (static_cast<std::size_t>(depth(path)) + 1 != levels) return {};
    std::size_t begin = 0;
    for (Texts& level : parts) {
      std::size_t const end = std::min(path.find('/', begin), path.size());
      level.push_back(path.substr(begin, end - begin));
      begin = end + 1;
    }
  }
  return parts;
}

} // namespace

std::vector<std::string> runKeysOf(std::vector<std::string> const& paths)
{
  Texts const plain = withoutEnding(paths);
  Texts keys;
  Texts last;
  for (Texts& level : levelsOf(plain)) {
    if (differentTexts(level) == 1) continue;
    cutCommon(level);
    dropLeadingZeros(level);
    if (level == last) continue; // "12/out_12.csv"
    if (keys.empty())
      keys = level;
    else
      for (std::size_t i = 0; i < keys.size(); ++i) keys[i] += '/' + level[i];
    last = std::move(level);
  }
  return keys.empty() ? plain : keys;
}

} // namespace runsieve
