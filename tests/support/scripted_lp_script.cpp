#include "scripted_lp_script.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>

namespace scripted_lp {
namespace {

constexpr std::array<std::string_view, 13> kOperations = {
    "open",    "close",     "createprob", "copylp", "addcols", "primopt", "hybbaropt",
    "getstat", "getobjval", "getx",       "getpi",  "getdj",   "freeprob"};

std::string_view Trimmed(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" \t\r\n");
  if (begin == std::string_view::npos) {
    return {};
  }
  return text.substr(begin, text.find_last_not_of(" \t\r\n") - begin + 1);
}

// Cuts the text up to the separator off the front of rest.
std::string_view NextPiece(std::string_view &rest, char separator) {
  const std::size_t end = std::min(rest.find(separator), rest.size());
  const std::string_view piece = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return piece;
}

template <typename Integer>
bool ParseInteger(std::string_view text, Integer &value) {
  const char *end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value);
  return result.ec == std::errc() && result.ptr == end;
}

bool ParseNumber(std::string_view text, double &value) {
  const std::string copy(text);
  char *end = nullptr;
  value = std::strtod(copy.c_str(), &end);
  return !copy.empty() && *end == '\0';
}

bool HandsOutValues(std::string_view operation) {
  return operation == "getobjval" || operation == "getx" || operation == "getpi" ||
         operation == "getdj";
}

bool MakesHandle(std::string_view operation) {
  return operation == "open" || operation == "createprob";
}

bool FitsOperation(const Answer &answer, std::string_view operation) {
  return (!answer.null || MakesHandle(operation)) &&
         (!answer.has_values || HandsOutValues(operation)) &&
         (answer.null || answer.has_values || answer.code != 0 || !MakesHandle(operation));
}

}  // namespace

bool Script::ParseAnswer(std::string_view text, Answer &answer) {
  if (text == "null") {
    answer.null = true;
    return true;
  }
  if (text.size() < 2 || text.front() != '[' || text.back() != ']') {
    return ParseInteger(text, answer.code);
  }
  answer.has_values = true;
  std::string_view rest = text.substr(1, text.size() - 2);
  while (!rest.empty()) {
    double value = 0.0;
    if (!ParseNumber(Trimmed(NextPiece(rest, ',')), value)) {
      return false;
    }
    answer.values.push_back(value);
  }
  return true;
}

bool Script::ParseEntry(std::string_view text, Entry &entry) {
  const std::size_t colon = text.find(':');
  const std::size_t equals = text.find('=');
  if (colon == std::string_view::npos || equals == std::string_view::npos || equals < colon) {
    return false;
  }
  entry.operation = Trimmed(text.substr(0, colon));
  std::string_view call = Trimmed(text.substr(colon + 1, equals - colon - 1));
  entry.open_ended = !call.empty() && call.back() == '+';
  call.remove_suffix(entry.open_ended ? 1 : 0);
  return std::find(kOperations.begin(), kOperations.end(), entry.operation) != kOperations.end() &&
         ParseInteger(call, entry.first) && entry.first >= 1 &&
         ParseAnswer(Trimmed(text.substr(equals + 1)), entry.answer) &&
         FitsOperation(entry.answer, entry.operation);
}

bool Script::Parse(std::string_view text, std::string &error) {
  entries_.clear();
  while (!text.empty()) {
    const std::string_view piece = Trimmed(NextPiece(text, ';'));
    if (piece.empty()) {
      continue;
    }
    Entry entry;
    if (!ParseEntry(piece, entry)) {
      error =
          "scripted solver library: cannot read the script entry \"" + std::string(piece) + "\"";
      return false;
    }
    entries_.push_back(entry);
  }
  return true;
}

std::optional<Answer> Script::Find(std::string_view operation, long n) const {
  for (const Entry &entry : entries_) {
    if (entry.operation == operation &&
        (n == entry.first || (entry.open_ended && n > entry.first))) {
      return entry.answer;
    }
  }
  return std::nullopt;
}

}  // namespace scripted_lp
