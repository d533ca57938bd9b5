#pragma once
// Number text in and out. Input reads "." as the decimal mark whatever the
// locale; output always writes "." too.
#include <cstdint>
#include <string>
#include <string_view>

namespace gelvane {

// The longest numeric prefix of `text` (blanks, tabs and line feeds are skipped
// wherever they stand; "&H"/"&O" prefixes; exponent with E or D); 0 for none.
// A value beyond a 64-bit float is the failure "Overflow" (6).
double NumberValue(std::string_view text);

// Output text of a number: the general form, 15 significant digits for a 64-bit
// float, 7 for a 32-bit float, exponent only where the value doesn't fit.
std::string NumberText(double value);
std::string NumberText(float value);
std::string NumberText(int value);
std::string NumberText(long long value);
// A text that already holds a number passes through with "," made ".".
std::string NumberTextOfText(std::string_view text);

// Nearest whole number, an exact half going to the even one.
double RoundHalfEven(double value);
// Rounded to `places` decimals, ties to even on the scaled value.
double RoundPlaces(double value, int places);

// Conversions to the 16- and 32-bit integer stores: rounded half to even; a
// result out of range is the failure "Overflow" (6).
int16_t ToInt16(double value);
int32_t ToInt32(double value);

// Printed form of a signed integer with a leading blank for values that are
// not negative (" 1", "-1").
std::string SignedText(long long value);

} // namespace gelvane
