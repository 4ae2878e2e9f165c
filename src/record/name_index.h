#pragma once

#include <QHash>
#include <QString>
#include <string>

namespace corvane::record {

// Names in the order of their first appearance, and their place in it.
class NameIndex {
 public:
  // The place of the name; `isNew` tells whether it was not there.
  int add(const QString &name, bool &isNew) {
    isNew = !places_.contains(name);
    if (isNew) {
      places_.insert(name, static_cast<int>(places_.size()));
    }
    return places_.value(name);
  }
  // -1 when there is none.
  int find(const QString &name) const { return places_.value(name, -1); }

 private:
  QHash<QString, int> places_;
};

inline QString text(const std::string &utf8) {
  return QString::fromStdString(utf8);
}

}  // namespace corvane::record
