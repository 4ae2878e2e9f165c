#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace corvane {

// Text as it comes from a file: UTF-8, or Latin-1 where the bytes are not valid UTF-8, so that no
// character is lost. A byte order mark is a character like any other: the one at the start of a
// file is the line reader's affair.
QString textFromBytes(std::string_view bytes);

// Text as it is written: UTF-8.
std::string utf8(const QString &text);

}  // namespace corvane
