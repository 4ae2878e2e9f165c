#pragma once

// The script of the scripted solver library; scripted_lp.h describes its syntax.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scripted_lp {

struct Answer {
  bool null = false;           // "null"
  int code = 0;                // "{code}"
  bool has_values = false;     // "[...]"
  std::vector<double> values;  // in the order of the script
};

class Script {
 public:
  // Replaces the entries. False when the text cannot be read; error then says why.
  bool Parse(std::string_view text, std::string &error);

  // The answer of the first entry that fits the n-th call (from 1) of the operation.
  std::optional<Answer> Find(std::string_view operation, long n) const;

 private:
  struct Entry {
    std::string operation;
    long first = 0;
    bool open_ended = false;
    Answer answer;
  };

  static bool ParseEntry(std::string_view text, Entry &entry);
  static bool ParseAnswer(std::string_view text, Answer &answer);

  std::vector<Entry> entries_;
};

}  // namespace scripted_lp
