#include "planning/text_table.h"

#include <algorithm>
#include <numeric>

#include "core/text.h"

namespace corvane {

TextTable::Id TextTable::idOf(std::string_view bytes) {
  const auto known = idOfBytes_.find(bytes);
  return known != idOfBytes_.end()
             ? known->second
             : idOfBytes_.emplace(bytes, add(textFromBytes(bytes))).first->second;
}

std::vector<quint32> TextTable::ranks() const {
  std::vector<Id> sorted(texts_.size());
  std::iota(sorted.begin(), sorted.end(), 0U);
  std::sort(sorted.begin(), sorted.end(), [this](Id a, Id b) { return texts_[a] < texts_[b]; });
  std::vector<quint32> ranks(texts_.size());
  for (quint32 rank = 0; rank < sorted.size(); ++rank) {
    ranks[sorted[rank]] = rank;
  }
  return ranks;
}

TextTable::Id TextTable::add(const QString &text) {
  const auto known = idOfText_.constFind(text);
  if (known != idOfText_.constEnd()) {
    return *known;
  }
  const auto id = static_cast<Id>(texts_.size());
  texts_.push_back(text);
  idOfText_.insert(text, id);
  return id;
}

}  // namespace corvane
