#pragma once

#include <QString>

namespace corvane::convert {

// The order of names in which numbers count as numbers: "Week 9" before "Week 10", and the rest
// character by character. Negative when a comes first, 0 when they are equal that way.
int compareNaturally(const QString &a, const QString &b);

}  // namespace corvane::convert
