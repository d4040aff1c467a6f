// Numbers between text and double, the same in every window, file and cohort.
#pragma once

#include <QLocale>
#include <QString>
#include <optional>
#include <string_view>

namespace Vse {

// Reads a number that a person typed. Blanks around it are ignored. It is an optional sign, digits
// with at most one separator (point or comma, whatever the locale; one side may be empty) and an
// optional exponent. Empty for anything else: group marks, hexadecimal, "nan", "inf", currency, and
// numbers above 1E+300, whose radians or fifteen digits would be beyond a double. A number too
// small for a double is 0.
std::optional<double> ReadNumber(std::string_view text);

// Whether a text that ReadNumber refuses would be a number if it were not above 1E+300 in size.
bool IsTooLarge(std::string_view text);

// Int(x·10^n) / 10^n, where Int rounds towards minus infinity: -3.456 to 2 decimals is -3.46.
// `decimals` is 0 to 15.
double TruncateToDecimals(double value, int decimals);

// The number as text: at most 15 significant digits, as short as possible, an exponent form such as
// "1E-05" for the very small and the very large, the locale's decimal separator, no group marks, an
// ASCII minus, never "-0". A value that is not finite gives "nan", "inf" or "-inf".
QString NumberText(double value, const QLocale& locale);

}  // namespace Vse
