#pragma once

#include <QHash>
#include <QString>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace corvane {

// A value for each of many byte strings. Look-ups take bytes that no string holds.
struct BytesHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view bytes) const {
    return std::hash<std::string_view>()(bytes);
  }
};
template <typename Value>
using ByBytes = std::unordered_map<std::string, Value, BytesHash, std::equal_to<>>;

// Gives every distinct text of a file a small number, so that a text that recurs is decoded once,
// held once and compared by its number. Different bytes may spell the same text.
class TextTable {
 public:
  using Id = quint32;

  // The number of the text, numbered from 0 in order of first appearance.
  Id idOf(std::string_view bytes);

  // Valid as long as the table; texts are shared, so that a copy costs nothing.
  const QString &text(Id id) const { return texts_[id]; }

  // For every number its place in the order of the texts.
  std::vector<quint32> ranks() const;

 private:
  Id add(const QString &text);

  ByBytes<Id> idOfBytes_;
  QHash<QString, Id> idOfText_;
  std::vector<QString> texts_;
};

}  // namespace corvane
