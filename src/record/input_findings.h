#pragma once

#include <filesystem>

#include "record/record.h"

namespace corvane::record {

inline constexpr int kMostFindingsOfACode = 20;

// Adds what the check of the input files finds in the folder of a run to the record: warnings and
// errors, at most so many of a code. False where the files cannot be checked.
bool checkInputs(Record &record, const std::filesystem::path &folder);

}  // namespace corvane::record
