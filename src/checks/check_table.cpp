#include "checks/check_table.h"

#include <algorithm>
#include <array>

namespace corvane::checks {

namespace {

std::string_view familyTitle(int hundreds) {
  constexpr std::array<std::string_view, 9> kTitles = {
      "",         "Files and lines", "Fields",
      "Machines", "Orders",          "Freight rates",
      "Names",    "Parameters",      "Import files (`--import-file`)"};
  return kTitles.at(static_cast<std::size_t>(hundreds));
}

std::string_view fixWord(FixKind kind) {
  switch (kind) {
    case FixKind::kSafe:
      return "--fix";
    case FixKind::kUnsafe:
      return "--fix with --unsafe-fixes";
    case FixKind::kNone:
      break;
  }
  return "by hand";
}

// In a table of Markdown a bar would end the cell, and angle brackets would be markup.
std::string cell(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == '<') {
      result += "&lt;";
    } else if (c == '|' || c == '\\' || c == '*') {
      result += std::string("\\") + c;
    } else {
      result += c;
    }
  }
  return result;
}

std::string documentRow(const Check &check) {
  return "| " + codeText(check.code) + " | " + std::string(severityWord(check.severity)) + " | " +
         cell(check.title) + " | " + cell(check.why) + " | " + cell(check.example) + " | " +
         cell(check.fix) + " | " + std::string(fixWord(check.fixKind)) + " |\n";
}

}  // namespace

const Check &checkOf(Code code) {
  const auto checks = allChecks();
  return *std::lower_bound(checks.begin(), checks.end(), code,
                           [](const Check &check, Code wanted) { return check.code < wanted; });
}

const Check *findCheck(std::string_view code) {
  std::string upper(code);
  std::transform(upper.begin(), upper.end(), upper.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
  const auto checks = allChecks();
  const auto found = std::find_if(checks.begin(), checks.end(), [&](const Check &check) {
    return codeText(check.code) == upper;
  });
  return found != checks.end() ? &*found : nullptr;
}

std::string codeText(Code code) {
  return "CV" + std::to_string(static_cast<int>(code));
}

std::string_view severityWord(Severity severity) {
  switch (severity) {
    case Severity::kError:
      return "error";
    case Severity::kWarning:
      return "warning";
    case Severity::kNote:
      break;
  }
  return "note";
}

std::string explanation(const Check &check) {
  std::string text = codeText(check.code) + " (" + std::string(severityWord(check.severity)) +
                     "): " + std::string(check.title) + "\n\n" + std::string(check.why) + "\n\n" +
                     "Example: " + std::string(check.example) + "\n" +
                     "Write:   " + std::string(check.fix) + "\n";
  return text + "Mended:  " + std::string(fixWord(check.fixKind)) + "\n";
}

std::string checkList() {
  std::string text;
  for (const Check &check : allChecks()) {
    std::string severity(severityWord(check.severity));
    severity.resize(9, ' ');
    text += codeText(check.code) + "  " + severity + std::string(check.title) + "\n";
  }
  return text;
}

std::string checkDocument() {
  std::string text =
      "# What corvane-check looks for\n\n"
      "This page is made from the program's own table; `corvane-check --explain CODE` prints one "
      "of\n"
      "its rows, `corvane-check --list` all titles. An error makes the run use something else "
      "than\n"
      "what the line says, or keeps it from running. A warning is allowed and rarely meant. A note "
      "is\n"
      "good to know, and shown with `--level info`.\n";
  int family = 0;
  for (const Check &check : allChecks()) {
    if (const int hundreds = static_cast<int>(check.code) / 100; hundreds != family) {
      family = hundreds;
      text += "\n## CV" + std::to_string(family) + "xx: " + std::string(familyTitle(family)) +
              "\n\n| Code | Severity | What | Why it hurts | Example | Write | Mended |\n"
              "|---|---|---|---|---|---|---|\n";
    }
    text += documentRow(check);
  }
  return text;
}

}  // namespace corvane::checks
