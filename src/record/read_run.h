#pragma once

#include <QString>
#include <filesystem>
#include <optional>

#include "record/record.h"

namespace corvane::record {

// Where a run lies and what is to be taken of it.
struct RunSource {
  std::filesystem::path folder;
  // The plan; empty: plan/plan.json beside the import file, where there is one.
  std::filesystem::path plan;
};

// Fills a record from the folder of a run: its parameters, log, input files, import file and plan.
// Without an import file, or where that or the plan cannot be read, nothing; `fault` then says why.
std::optional<Record> readRun(const RunSource &source, const QString &version, QString &fault);

// The import file of the run in the folder.
std::filesystem::path importFileOf(const std::filesystem::path &folder);

}  // namespace corvane::record
