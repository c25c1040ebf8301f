#pragma once

#include <runsieve/core/gate/Gate.h>
#include <runsieve/core/runsieve_core_export.h>

#include <string>

namespace runsieve {

/// Reads a gate as people write it:
///
///     [not] [ever | never | crosses] NAME [@ SPAN] in RANGE
///     [not] max(OUTPUT) [@ SPAN] in RANGE        also min, mean, last, timeofmax, timeofmin
///     [not] PARAMETER is VALUE, VALUE ...
///     [not] status complete, short, failed       one of them or several
///     [not] runs KEY, KEY, FIRST-LAST ...
///     [not] cluster N of K (OUTPUT [, curves | phase | magnitude])
///
/// SPAN is TIME, TIME..TIME, TIME.., ..TIME or `..`; RANGE is LOW..HIGH, LOW.., ..HIGH or `..`, and may hold
/// inf. Numbers may have a sign and an exponent. Blanks are free around signs; words stand apart.
///
/// Names may hold anything, '@', " in " and brackets too: the text is read from its right end. A name without
/// a span that holds '@', and one that begins as a gate of another form does ("never seen", "max(A)"), is put
/// in double quotes; a quote inside is doubled. So may be values and keys, and must if they hold commas or
/// quotes. A text that ends as a range is a gate on a range, whatever it begins with.
///
/// \throw GateError that says what was expected, what was found, and shows an example
[[nodiscard]] RUNSIEVE_CORE_EXPORT Gate parseGate(std::string const& text);

/// The text that parseGate() reads back to the same gate, with all digits; names are in quotes only where
/// they must be.
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::string formatGate(Gate const& gate);

/// A span as in the text of a gate: "10", "10..12", "10..", "..".
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::string formatSpan(GateSpan const& span);

} // namespace runsieve
