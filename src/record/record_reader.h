#pragma once

#include <QByteArray>
#include <optional>

#include "record/record.h"

namespace corvane::record {

// Reads what toJson() wrote. Members that this version does not know are passed over, missing ones
// keep their defaults, so that records of other versions can be compared. Empty for what is no
// record, or one whose indexes lead nowhere; `fault` then says why.
std::optional<Record> fromJson(const QByteArray &json, QString &fault);

}  // namespace corvane::record
