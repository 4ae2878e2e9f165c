#pragma once

#include <QHash>
#include <QString>
#include <string_view>
#include <vector>

#include "core/bytes_map.h"

namespace corvane {

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

  BytesMap<Id> idOfBytes_;
  QHash<QString, Id> idOfText_;
  std::vector<QString> texts_;
};

}  // namespace corvane
