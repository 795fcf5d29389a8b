//===- vorStringUtils.h - Text helpers of the toolbox -----------*- C++ -*-===//
//
// Small text operations used throughout the library. Case folding covers
// ASCII, Latin-1, Latin Extended-A, Greek and Cyrillic; other code points are
// left as they are. Number formatting writes the locale's decimal point
// (nlsUtils).
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PLATFORM_VORSTRINGUTILS_H
#define VORPARAMETER_PLATFORM_VORSTRINGUTILS_H

#include "vorparameter/platform/utString.h"
#include "vorparameter/platform/vorExport.h"

#include <vector>

/// Lower-case and upper-case copies of UTF-8 text.
VOR_API utString vordowncase(std::string_view text);
VOR_API utString vorupcase(std::string_view text);
/// Case-insensitive equality (by vordowncase).
VOR_API bool vorequal_nocase(std::string_view a, std::string_view b);

/// Three-way byte comparison: -1, 0 or 1.
VOR_API int vorcompare(std::string_view a, std::string_view b);

/// Copies without leading and/or trailing white space (ASCII blanks and
/// line breaks).
VOR_API utString vortrim(std::string_view text);
VOR_API utString vorltrim(std::string_view text);
VOR_API utString vorrtrim(std::string_view text);

/// Splits at every character of `delimiters`; runs of delimiters give no empty
/// tokens.
VOR_API std::vector<utString> vortokens(std::string_view text, std::string_view delimiters = " \t");

/// Index of the first occurrence of `what` in `text` at or after `from`, or -1.
VOR_API int vorindex(std::string_view text, std::string_view what, int from = 0);

/// `value` with exactly `places` decimals (0 to 17), as printf's "%.*f".
VOR_API utString vorformat_double(double value, int places);
/// The shortest text that reads back to exactly `value` ("0.1", "1e+300").
/// Non-finite values give "inf", "-inf" or "nan", which are not numbers to
/// utString::parse.
VOR_API utString vorformat_double_exact(double value);

#endif // VORPARAMETER_PLATFORM_VORSTRINGUTILS_H
