#pragma once

#include <runsieve/core/gate/Gate.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace runsieve {

/// Reads the text of a gate piece by piece from the left. All failures throw GateError with the whole text of
/// the gate and an example. The texts must outlive the reader.
class GateReader
{
public:
  /// A value or key of a list.
  struct Item
  {
    std::string text;
    bool inQuotes;
  };

  /// How to write a gate on a range, for messages.
  static constexpr char rangeExample[] =
      R"(write OUTPUT @ TIME[..TIME] in LOW..HIGH, for example "Molecule: A @ 10..12 in 2..5")";

  /// \param example how to write such a gate, "write ..., for example ..."
  GateReader(std::string_view wholeGate, std::string_view text, char const* exampleOfForm = rangeExample)
      : whole(wholeGate), rest(text), example(exampleOfForm)
  {}

  [[nodiscard]] double number(char const* what);
  /// Digits alone.
  [[nodiscard]] int wholeNumber(char const* what);
  /// The times after an '@'.
  [[nodiscard]] GateSpan span();
  [[nodiscard]] GateRange range();
  /// A text in double quotes, which must be next.
  [[nodiscard]] std::string quotedText();
  /// Texts with commas between them, up to the end.
  [[nodiscard]] std::vector<Item> items(char const* what);

  [[nodiscard]] bool accept(std::string_view token);
  void expect(std::string_view token, char const* where);
  void expectEnd(char const* what);
  [[nodiscard]] bool startsWith(std::string_view token);
  [[nodiscard]] bool atEnd();
  /// What is not read yet.
  [[nodiscard]] std::string_view remaining();

  [[noreturn]] void fail(std::string const& why) const;
  /// Tells what was found instead.
  [[noreturn]] void failExpecting(std::string const& what) const;

private:
  void skipBlanks();
  [[nodiscard]] std::optional<double> acceptNumber();
  [[nodiscard]] double time(char const* what);
  [[nodiscard]] Item item(char const* what);
  [[nodiscard]] char at(std::size_t i) const { return i < rest.size() ? rest[i] : '\0'; }
  [[nodiscard]] std::size_t afterDigits(std::size_t i) const;
  [[nodiscard]] std::size_t afterWord(std::size_t i, std::string_view word) const;
  [[nodiscard]] std::size_t numberLength() const;

  std::string_view whole;
  std::string_view rest;
  char const* example;
};

} // namespace runsieve
