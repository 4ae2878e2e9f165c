#pragma once

#include <QtGlobal>
#include <string>
#include <vector>

#include "checks/check_table.h"
#include "checks/source_file.h"

namespace corvane::checks {

// Bytes of a file that --fix replaces.
struct Edit {
  std::size_t begin;
  std::size_t end;
  std::string replacement;
};

// One place in one file where a check found something.
struct Finding {
  Code code;
  Severity severity;
  const SourceFile *file;  // outlives the finding
  quint32 line = 0;        // 0: the file as a whole
  std::size_t offset = 0;  // in the line, bytes
  std::size_t length = 0;
  std::string detail;  // what is read instead
  std::string write;   // what to write; empty where the table's words say it
  std::vector<Edit> edits;
  FixKind fixKind = FixKind::kNone;
};

// "decimal comma: "44,75" is read as width 44 and quantity 75"
std::string messageOf(const Finding &finding);

// The line, without a byte order mark in front of it, and the place in it that is marked, in bytes.
struct MarkedText {
  std::string_view line;
  std::size_t begin;
  std::size_t length;
};
MarkedText markedText(const Finding &finding);

// The column, from 1, as an editor counts it: characters in a line of UTF-8, bytes in any other; a
// byte order mark is none.
std::size_t columnOf(const Finding &finding);
// The characters that the finding marks, at least 1.
std::size_t widthOf(const Finding &finding);

// Lets --fix write the text in place of what the finding marks.
void replaceMarked(Finding &finding, std::string text);
// Lets --fix drop the line of the finding.
void dropLine(Finding &finding);

// The same for the same finding in a file whose other lines have changed.
std::string keyOf(const Finding &finding);

}  // namespace corvane::checks
