#pragma once

#include <runsieve/runsieve_export.h>

#include <QString>

namespace Kestrane {

/// A number's text as a person writes it on an axis: "12.5", "1.5e-7", with superscript "1.5×10⁻⁷".
///
/// \param number text of the number; what is not a number comes back as it is
/// \param digits decimals of the mantissa at most; zeros at its end are left out
/// \param longest a plain text of up to so many characters stays plain
/// \param superscript a power of ten with raised digits instead of the letter e
RUNSIEVE_EXPORT QString getScientificFormat(QString const& number, int digits, int longest, bool superscript);

} // namespace Kestrane
