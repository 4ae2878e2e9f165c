#pragma once

#include <optional>
#include <string_view>

#include "checks/finding_sink.h"
#include "planning/text_table.h"

namespace corvane::checks {

enum class FieldKind { kName, kNumber, kQuantity };

// What is known of the bytes of a field, whichever line they stand in.
struct FieldFacts {
  std::optional<Code> code;  // what is wrong with them
  TextTable::Id text = 0;    // of a name
  double number = 0;         // of a number, as it is read
};

// Looks at every distinct field of a column once.
class FieldTexts {
 public:
  FieldTexts(FieldKind kind, TextTable &texts) : kind_(kind), texts_(texts) {}

  // A NUL follows the field.
  FieldFacts of(std::string_view field) {
    const auto known = facts_.find(field);
    return known != facts_.end() ? known->second
                                 : facts_.emplace(field, lookAt(field)).first->second;
  }

 private:
  FieldFacts lookAt(std::string_view field);

  FieldKind kind_;
  TextTable &texts_;
  ByBytes<FieldFacts> facts_;
};

// What is wrong with a field: the worst, if anything.
std::optional<Code> faultOfName(std::string_view field);
std::optional<Code> faultOfNumber(std::string_view field, FieldKind kind);

struct BytePlace {
  std::size_t offset;
  std::size_t length;
};
// Control characters, U+0085, U+2028 and U+2029 among them; no tab.
std::optional<BytePlace> firstControlCharacter(std::string_view text);

// The name without what does not belong to it: outer blanks, quotes, control characters; in UTF-8.
std::string cleanedName(std::string_view field);

// Fills in what the code means for the field, which has the name ("grade") and stands at the
// finding's place in the file: detail, what to write, and the edit.
void describeField(Finding &finding, std::string_view field, std::string_view name, FieldKind kind);

}  // namespace corvane::checks
