#include "app/cli/WrappedText.h"

#include <runsieve/core/text/ShownText.h>

#include <ostream>
#include <sstream>

namespace runsieve::app {

void printWrapped(std::ostream& out, std::string const& label, std::vector<std::string> const& sentences,
                  std::size_t width)
{
  std::string const indent(shownWidth(label), ' ');
  std::string start = label;
  for (std::string const& sentence : sentences) {
    std::istringstream words(sentence);
    std::string word;
    std::size_t column = 0; // 0: at the start of a line
    while (words >> word) {
      std::size_t const wide = shownWidth(word);
      bool const fits = column + 1 + wide <= width;
      if (column > 0 && !fits) out << '\n';
      bool const isFirst = column == 0 || !fits;
      out << (isFirst ? start : " ") << word;
      column = (isFirst ? indent.size() : column + 1) + wide;
      if (isFirst) start = indent;
    }
    out << '\n';
  }
}

} // namespace runsieve::app
