#pragma once

#include <QString>

namespace corvane {

// The order of a skipList<T>. Comparators are handed to lists by pointer and outlive them.
template <typename T>
class Comparison {
 public:
  Comparison() = default;
  Comparison(const Comparison &) = delete;
  Comparison &operator=(const Comparison &) = delete;
  virtual ~Comparison() = default;

  // -1 when a orders before b, 1 when it orders after b, 0 when they are equal.
  virtual int compare(const T &a, const T &b) const = 0;

  // Marks a search in the scratch words for as long as it lives.
  class SearchScope {
   public:
    explicit SearchScope(Comparison &comparison) : comparison_(comparison) {
      comparison_.setScratch(1, 0, 0);
    }
    SearchScope(const SearchScope &) = delete;
    SearchScope &operator=(const SearchScope &) = delete;
    ~SearchScope() { comparison_.setScratch(0, 0, 0); }

   private:
    Comparison &comparison_;
  };

  // The scratch words: 1, 0, 0 while a search runs, all 0 otherwise.
  qint32 scratch(int index) const { return scratch_[index]; }

 private:
  void setScratch(qint32 first, qint32 second, qint32 third) {
    scratch_[0] = first;
    scratch_[1] = second;
    scratch_[2] = third;
  }

  qint32 scratch_[3] = {0, 0, 0};
};

// The comparison of one key, for comparators that chain them: "<" decides and nothing else, so that
// text orders by code unit and numbers exactly. Of two values that are not ordered neither is less.
template <typename K>
int compareKeys(const K &a, const K &b) {
  if (a < b) {
    return -1;
  }
  return b < a ? 1 : 0;
}

// Text order: code unit by code unit, case-sensitive.
class StrComp : public Comparison<QString> {
 public:
  int compare(const QString &a, const QString &b) const override { return compareKeys(a, b); }
};

// Numeric order, exact: no tolerance.
class DoubleComp : public Comparison<double> {
 public:
  int compare(const double &a, const double &b) const override { return compareKeys(a, b); }
};

}  // namespace corvane
