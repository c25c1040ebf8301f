#include <runsieve/core/gate/GateText.h>

#include <runsieve/core/gate/GateReader.h>
#include <runsieve/core/gate/GateWords.h>
#include <runsieve/core/text/Decimal.h>
#include <runsieve/core/text/FieldText.h>

#include <charconv>
#include <string_view>

namespace runsieve {

namespace {

using View = std::string_view;

constexpr char isExample[] = R"(write PARAMETER is VALUE, VALUE, for example "strain is WT, mut1")";
constexpr char statusExample[] = R"(write status complete|short|failed, for example "status short, failed")";
constexpr char runsExample[] = R"(write runs KEY, FIRST-LAST, for example "runs 3, 5, 10-15")";
constexpr char clusterExample[] = "write cluster N of K (OUTPUT, curves|phase|magnitude), for example "
                                  "\"cluster 2 of 4 (cI, curves)\"";

bool isBlank(char c)
{
  return c == ' ' || c == '\t';
}

/// Whether the text begins with the word, and something stands behind it.
bool beginsWithWord(View text, View word)
{
  return text.size() > word.size() && text.substr(0, word.size()) == word && isBlank(text[word.size()]);
}

/// Takes a leading word away, unless it is all there is of a name: "ever @ 3", "not in 2..5".
bool acceptWord(View& text, View word)
{
  if (!beginsWithWord(text, word)) return false;
  View const after = trimmed(text.substr(word.size()));
  if (after.front() == '@' || beginsWithWord(after, "in") || beginsWithWord(after, "is")) return false;
  text = after;
  return true;
}

bool isRangeToTheEnd(View text)
{
  GateReader reader(text, text);
  try {
    (void)reader.range();
  } catch (GateError const&) {
    return false;
  }
  return reader.atEnd();
}

/// Whether an "in" may begin at this position: in "Protein 2..5" it ends a word.
bool isApart(View text, std::size_t position)
{
  return position == 0 || View(" \t\").0123456789").find(text[position - 1]) != View::npos;
}

/// Position of the "in" before the range with which the text ends, npos if it ends otherwise.
std::size_t rangeSign(View text)
{
  constexpr int mostIns = 5; // its own, and those of -infinity..infinity
  std::size_t position = text.size();
  for (int i = 0; i < mostIns && position > 0; ++i) {
    position = text.rfind("in", position - 1);
    if (position == View::npos) break;
    if (isApart(text, position) && isRangeToTheEnd(text.substr(position + 2))) return position;
  }
  return View::npos;
}

/// Position of the " is " before the values with which the text ends, npos without one. Those within quotes
/// have an odd number of quotes behind them.
std::size_t isSign(View text)
{
  bool quotesPair = true;
  for (std::size_t i = text.size(); i > 0; --i) {
    if (text[i - 1] == '"') quotesPair = !quotesPair;
    if (quotesPair && isBlank(text[i - 1]) && beginsWithWord(text.substr(i), "is")) return i;
  }
  return View::npos;
}

/// Whether the bracket that opens the text is the one that closes at its end.
bool isOneBracket(View text)
{
  int open = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '(') ++open;
    if (text[i] == ')') --open;
    if (open == 0) return i + 1 == text.size();
  }
  return false;
}

std::optional<GateKind> functionOf(View text)
{
  View const word = text.substr(0, text.find('('));
  auto const kind = fromWord<GateKind>(kindWords, word);
  return kind && isFunction(*kind) && word.size() < text.size() ? kind : std::nullopt;
}

/// Reads what stands before the "in" of a range.
class HeadReader
{
public:
  HeadReader(View wholeGate, View text) : whole(wholeGate), rest(text) {}

  /// Sets kind and column. \return the part that begins with the '@' of the span, empty without one
  View read(Gate& gate)
  {
    for (GateKind kind : {GateKind::Ever, GateKind::Never, GateKind::Crosses})
      if (acceptWord(rest, wordOf(kindWords, kind))) {
        gate.kind = kind;
        return readName(gate.column);
      }
    auto const function = functionOf(rest);
    if (function && readArgument(*function, gate.column)) {
      gate.kind = *function;
      return rest;
    }
    return readName(gate.column);
  }

private:
  View readName(std::string& name)
  {
    if (!rest.empty() && rest.front() == '"') {
      GateReader reader(whole, rest);
      name = reader.quotedText();
      rest = reader.remaining();
      if (!rest.empty() && rest.front() != '@') reader.failExpecting("\"@\" or \"in\" after the name");
      return rest;
    }
    std::size_t const at = rest.rfind('@');
    name = trimmed(rest.substr(0, at));
    if (name.empty())
      GateReader(whole, rest)
          .fail(at == View::npos ? "there is no name before \"in\"" : "there is no output before \"@\"");
    return at == View::npos ? View() : rest.substr(at);
  }

  /// Reads "max(NAME)"; leaves all as it is if the text is none but a name that begins like that.
  bool readArgument(GateKind function, std::string& name)
  {
    View const bracket = rest.substr(wordOf(kindWords, function).size());
    View const argument = trimmed(bracket.substr(1));
    if (!argument.empty() && argument.front() == '"') {
      GateReader reader(whole, argument);
      name = reader.quotedText();
      reader.expect(")", "after the name");
      rest = reader.remaining();
      if (!rest.empty() && rest.front() != '@') reader.failExpecting("\"@\" or \"in\" after the bracket");
      return true;
    }
    std::size_t const at = bracket.back() == ')' ? bracket.size() : bracket.rfind('@');
    View const closed = trimmed(bracket.substr(0, at));
    if (at == View::npos || !isOneBracket(closed)) return false;
    name = trimmed(closed.substr(1, closed.size() - 2));
    if (name.empty()) GateReader(whole, rest).fail("there is no output in the brackets");
    rest = bracket.substr(at);
    return true;
  }

  View whole;
  View rest;
};

/// \param sign position of the "in" before the range
Gate parseRangeGate(View whole, View text, std::size_t sign)
{
  Gate gate;
  View const span = HeadReader(whole, trimmed(text.substr(0, sign))).read(gate);
  View const range = text.substr(sign + 2);
  if (span.empty()) {
    gate.range = GateReader(whole, range).range();
    return gate;
  }
  // From the '@' on, so that messages show the text up to its end.
  GateReader reader(whole, text.substr(static_cast<std::size_t>(span.data() - text.data()) + 1));
  gate.span = reader.span();
  reader.expect("in", "after the time");
  gate.range = reader.range();
  reader.expectEnd("the value range");
  return gate;
}

Gate parseIsGate(View whole, View text, std::size_t sign)
{
  Gate gate;
  gate.kind = GateKind::Is;
  View const name = trimmed(text.substr(0, sign));
  GateReader nameReader(whole, name, isExample);
  if (nameReader.startsWith("\"")) {
    gate.column = nameReader.quotedText();
    if (!nameReader.atEnd()) nameReader.failExpecting("\"is\" after the name");
  } else {
    gate.column = name;
  }
  for (auto& item : GateReader(whole, text.substr(sign + 2), isExample).items("a value"))
    gate.texts.push_back(std::move(item.text));
  return gate;
}

Gate parseStatusGate(View whole, View list)
{
  Gate gate;
  gate.kind = GateKind::Status;
  GateReader reader(whole, list, statusExample);
  for (auto const& item : reader.items("a status")) {
    auto const status = fromWord<RunStatus>(statusWords, item.text);
    if (!status) reader.fail("expected complete, short or failed, found " + quoted(item.text));
    gate.statuses.push_back(*status);
  }
  return gate;
}

/// "10-15", "-3--1"; nothing for any other text.
std::optional<RunNumbers> runNumbers(View text)
{
  RunNumbers numbers;
  char const* const end = text.data() + text.size();
  auto const first = std::from_chars(text.data(), end, numbers.first);
  if (first.ec != std::errc() || first.ptr == end || *first.ptr != '-') return std::nullopt;
  auto const last = std::from_chars(first.ptr + 1, end, numbers.last);
  if (last.ec != std::errc() || last.ptr != end) return std::nullopt;
  return numbers;
}

Gate parseRunsGate(View whole, View list)
{
  Gate gate;
  gate.kind = GateKind::Runs;
  for (auto const& item : GateReader(whole, list, runsExample).items("the key of a run")) {
    auto const numbers = item.inQuotes ? std::nullopt : runNumbers(item.text);
    if (numbers)
      gate.runs.emplace_back(*numbers);
    else
      gate.runs.emplace_back(item.text);
  }
  return gate;
}

/// Takes ", phase" away from the end of a text.
std::optional<ClusterMode> acceptModeAtEnd(View& text)
{
  std::size_t const comma = text.rfind(',');
  if (comma == View::npos) return std::nullopt;
  auto const mode = fromWord<ClusterMode>(modeWords, trimmed(text.substr(comma + 1)));
  if (mode) text = trimmed(text.substr(0, comma));
  return mode;
}

Gate parseClusterGate(View whole, View text)
{
  Gate gate;
  gate.kind = GateKind::Cluster;
  GateReader reader(whole, text, clusterExample);
  auto const expect = [&](View token, char const* what) {
    if (!reader.accept(token)) reader.failExpecting(what);
  };
  gate.cluster = reader.wholeNumber("the number of a cluster");
  expect("of", "\"of\" after the number of the cluster");
  gate.clusters = reader.wholeNumber("the number of clusters");
  expect("(", "\"(\" before the output");
  View output = reader.remaining();
  if (output.empty() || output.back() != ')') reader.fail("there is no \")\" at the end");
  output = trimmed(output.substr(0, output.size() - 1));
  gate.mode = acceptModeAtEnd(output).value_or(ClusterMode::Curves);
  GateReader name(whole, output, clusterExample);
  if (name.startsWith("\"")) {
    gate.column = name.quotedText();
    if (!name.atEnd()) name.failExpecting("curves, phase or magnitude after the output");
  } else {
    gate.column = output;
    if (output.empty()) name.fail("there is no output in the brackets");
  }
  return gate;
}

/// Says what is wrong with a text that is no gate of any form.
[[noreturn]] void explain(View whole, View text)
{
  std::size_t const at = text.rfind('@');
  std::size_t const in = text.rfind(" in ");
  GateReader reader(whole, text.substr(at != View::npos ? at + 1 : in != View::npos ? in + 4 : 0));
  if (text.empty()) reader.fail("it is empty");
  if (at != View::npos) {
    (void)reader.span();
    reader.expect("in", "after the time");
  }
  if (at != View::npos || in != View::npos) {
    if (reader.startsWith("\"")) GateReader(whole, text, isExample).fail("texts stand behind \"is\"");
    (void)reader.range();
    reader.expectEnd("the value range");
  }
  reader.fail("there is no \"in\" with a range of values, and no \"is\"");
}

Gate parsePositive(View whole, View text)
{
  std::size_t const range = rangeSign(text);
  if (range != View::npos) return parseRangeGate(whole, text, range);
  View rest = text;
  if (acceptWord(rest, "status")) return parseStatusGate(whole, rest);
  if (acceptWord(rest, "runs")) return parseRunsGate(whole, rest);
  if (acceptWord(rest, "cluster")) return parseClusterGate(whole, rest);
  std::size_t const is = isSign(text);
  if (is != View::npos) return parseIsGate(whole, text, is);
  explain(whole, text);
}

std::string inQuotes(std::string const& text)
{
  std::string all = "\"";
  for (char c : text) all += c == '"' ? std::string("\"\"") : std::string(1, c);
  return all + '"';
}

/// Writes a gate with names, values and keys in quotes or as they are.
class GateWriter
{
public:
  GateWriter(Gate const& written, bool quotes) : gate(written), isQuoting(quotes) {}

  [[nodiscard]] std::string text() const
  {
    return (gate.negated ? "not " : "") + (hasRange(gate.kind) ? head() + span() + range() : list());
  }

private:
  [[nodiscard]] std::string name(std::string const& text) const { return isQuoting ? inQuotes(text) : text; }

  [[nodiscard]] std::string head() const
  {
    if (gate.kind == GateKind::Inside) return name(gate.column);
    std::string const word(wordOf(kindWords, gate.kind));
    return isFunction(gate.kind) ? word + '(' + name(gate.column) + ')' : word + ' ' + name(gate.column);
  }

  [[nodiscard]] std::string span() const { return gate.span ? " @ " + formatSpan(*gate.span) : ""; }

  [[nodiscard]] std::string range() const
  {
    return " in " + decimal(gate.range.low) + ".." + decimal(gate.range.high);
  }

  [[nodiscard]] std::string list() const
  {
    std::string const word(wordOf(kindWords, gate.kind));
    if (gate.kind == GateKind::Is)
      return name(gate.column) + " is " +
             joined(gate.texts, [this](std::string const& text) { return name(text); });
    if (gate.kind == GateKind::Status) return word + ' ' + joined(gate.statuses, statusName);
    if (gate.kind == GateKind::Runs)
      return word + ' ' + joined(gate.runs, [this](RunKey const& run) { return key(run); });
    return word + ' ' + std::to_string(gate.cluster) + " of " + std::to_string(gate.clusters) + " (" +
           name(gate.column) + ", " + std::string(wordOf(modeWords, gate.mode)) + ')';
  }

  [[nodiscard]] std::string key(RunKey const& run) const
  {
    if (auto const* text = std::get_if<std::string>(&run)) return name(*text);
    auto const& [first, last] = std::get<RunNumbers>(run);
    return std::to_string(first) + '-' + std::to_string(last);
  }

  template <class Value, class Function>
  static std::string joined(std::vector<Value> const& values, Function const& textOf)
  {
    std::string text;
    for (Value const& value : values) text += (text.empty() ? "" : ", ") + std::string(textOf(value));
    return text;
  }

  Gate const& gate;
  bool isQuoting;
};

bool readsBack(std::string const& text, Gate const& gate)
{
  try {
    return parseGate(text) == gate;
  } catch (GateError const&) {
    return false;
  }
}

} // namespace

Gate parseGate(std::string const& text)
{
  View rest = trimmed(text);
  bool const negated = acceptWord(rest, "not");
  if (negated && beginsWithWord(rest, "not")) GateReader(text, rest).fail("\"not\" stands twice");
  Gate gate = parsePositive(text, rest);
  gate.negated = negated;
  return gate;
}

std::string formatGate(Gate const& gate)
{
  // No list of names that need quotes could be trusted as much as reading the text again.
  std::string plain = GateWriter(gate, false).text();
  return readsBack(plain, gate) ? plain : GateWriter(gate, true).text();
}

std::string formatSpan(GateSpan const& span)
{
  if (span.first && span.last && *span.first == *span.last) return decimal(*span.first);
  return (span.first ? decimal(*span.first) : "") + ".." + (span.last ? decimal(*span.last) : "");
}

} // namespace runsieve
