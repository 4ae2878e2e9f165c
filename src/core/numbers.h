#pragma once

#include <QString>
#include <string>

namespace corvane {

// Reading and writing of numbers. Nothing here depends on the locale of the environment.

// Parameter values: the whole text must be a decimal number, blanks around it allowed; anything
// else is 0. Integers outside 32 bits are 0. Floating numbers are rounded to single precision; what
// lies beyond it, words such as nan, and hexadecimal are 0.
qint32 parameterInteger(const QString &text);
double parameterFloat(const QString &text);

// Fields of data files: the leading number of the text, in the manner of atof and atoi; 0 when
// there is none. Integers beyond 32 bits stay at the nearest bound.
double leadingNumber(const char *text);
qint32 leadingInteger(const char *text);

// a + b, kept at the largest 32-bit value when it would leave it. Both are >= 0.
qint32 saturatedSum(qint32 a, qint32 b);

// Appends the number in general notation: six significant digits, no trailing zeros ("%g").
void appendGeneral(std::string &text, double value);
// Appends the number with a fixed count of decimals, 0 to 9 ("%.3f"); takes numbers of any size.
void appendFixed(std::string &text, double value, int decimals);
void appendInteger(std::string &text, qint64 value);

std::string general(double value);
std::string fixed(double value, int decimals);

}  // namespace corvane
