#pragma once

// The rules that hold between the files under src/:
//  - includes run one way: core <- planning <- generation <- export <- app;
//  - the solver layer is a leaf: it includes no layer, and only generation includes it, through
//    callable_library.h alone;
//  - companions stand on the layers and on each other as their table says; no layer knows them;
//  - only core/fatal.cpp ends the process; beside it, the solver library's check of its own
//  answers,
//    which knows no layer, may abort in solver/callable_library.cpp.

#include <string>
#include <vector>

namespace corvane::architecture {

struct SourceFile {
  std::string path;  // relative to src/, with slashes: "core/skip_list.h"
  std::string text;
};

// All C++ files under `source_root`, by path. Throws std::filesystem::filesystem_error.
std::vector<SourceFile> ReadSources(const std::string &source_root);

// The text with comments, string and character literals blanked; line breaks stay.
std::string CodeOnly(const std::string &text);

// One complaint, "path:line: ...", for each break of a rule.
std::vector<std::string> IncludeComplaints(const std::vector<SourceFile> &files);
std::vector<std::string> ExitComplaints(const std::vector<SourceFile> &files);

}  // namespace corvane::architecture
