#pragma once

#include <QHash>
#include <QString>
#include <string_view>

#include "planning/text_table.h"

namespace corvane {

// What the texts that recur in an order file stand for. Each is decoded, converted and looked up
// once, however many lines have it.
class OrderTexts {
 public:
  static constexpr quint32 kNoNumber = ~quint32{0};

  struct Place {
    TextTable::Id period;
    TextTable::Id grade;
    double widestCutter;         // of the grade, inches; not a number when there is none
    quint32 number = kNoNumber;  // its user's
  };
  struct Width {
    double inches;
    quint32 number = kNoNumber;  // its user's
  };

  // The widest cutter of each grade must outlive this.
  explicit OrderTexts(const QHash<QString, double> &widestCutter) : widestCutter_(widestCutter) {}

  // Of two fields of one line, the period before the grade. Valid as long as this, as the other is.
  Place &place(std::string_view period, std::string_view grade);
  // Of a field, which a NUL follows.
  Width &width(std::string_view field);
  TextTable::Id customer(std::string_view field) { return texts_.idOf(field); }

  // Of periods, grades and customers.
  const TextTable &table() const { return texts_; }

 private:
  const QHash<QString, double> &widestCutter_;
  TextTable texts_;
  ByBytes<Place> places_;
  ByBytes<Width> widths_;
};

}  // namespace corvane
