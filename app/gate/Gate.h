#pragma once

#include <stdexcept>
#include <string>

namespace runsieve::app {

/// A place that a run must pass through: an output, a time or a span of times, a range of values.
struct Gate
{
  std::string output; ///< full column name ("Molecule: A") or bare name ("A")
  double timeFirst = 0.0;
  double timeLast = 0.0; ///< equal to timeFirst for a single time
  double low = 0.0;      ///< both ends of the value range belong to it; they may be infinite
  double high = 0.0;
};

/// A gate that cannot be understood, or does not fit the scan.
class GateError : public std::runtime_error
{
public:
  using std::runtime_error::runtime_error;
};

/// Reads `OUTPUT @ TIME[..TIME] in LOW..HIGH`, as in "Molecule: A @ 10..12 in 2..5". Blanks are free. Numbers
/// may have a sign and an exponent; LOW and HIGH may be inf. The output's name may itself hold '@' or " in ":
/// the text is read from its right end. \throw GateError
[[nodiscard]] Gate parseGate(std::string const& text);

/// The text that parseGate() reads back to the same gate, for window titles and saved selections.
[[nodiscard]] std::string formatGate(Gate const& gate);

} // namespace runsieve::app
