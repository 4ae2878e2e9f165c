#include "convert/table_kinds.h"

namespace corvane::convert {

namespace {

TableKind machines() {
  return {"machines",
          "machines.data",
          {{"location",
            Dimension::kText,
            "the mill where the cutter stands",
            {"location", "mill", "site", "plant"}},
           {"name", Dimension::kText, "the cutter", {"name", "cutter", "winder", "machine"}},
           {"grade", Dimension::kText, "the paper grade", {"grade", "product", "papergrade"}},
           {"width",
            Dimension::kLength,
            "the usable deckle width",
            {"width", "deckle", "decklewidth", "maximumwidth", "maxwidth", "trimwidth"}},
           {"capacity",
            Dimension::kNumber,
            "deckles a day",
            {"capacity", "decklesperday", "deckles", "setsperday", "reelsperday"}},
           {"lbs per inch",
            Dimension::kWeightPerLength,
            "the weight of one roll per inch of its width",
            {"lbsperinch", "lbsinch", "poundsperinch", "weightperinch", "rollweight", "pli"}},
           {"waste cost",
            Dimension::kCostPerLength,
            "the cost of an inch of trim from one deckle",
            {"wastecost", "wastecostperinch", "trimcost", "costofwaste"}}},
          -1};
}

TableKind orders() {
  return {"orders",
          "orders.data",
          {{"period", Dimension::kText, "the planning period", {"period", "week", "month", "day"}},
           {"grade", Dimension::kText, "the paper grade", {"grade", "product", "papergrade"}},
           {"width", Dimension::kLength, "the width of the rolls", {"width", "rollwidth", "size"}},
           {"quantity",
            Dimension::kCount,
            "rolls",
            {"quantity", "qty", "rolls", "numberofrolls", "noofrolls", "pieces"}},
           {"customer",
            Dimension::kText,
            "who ordered them",
            {"customer", "customername", "client", "shipto", "soldto"}}},
          0};
}

TableKind freightRates() {
  return {"freight",
          "freightRates.data",
          {{"customer",
            Dimension::kText,
            "as in the orders",
            {"customer", "customername", "client", "shipto", "destination"}},
           {"mill",
            Dimension::kText,
            "a location of the machines",
            {"mill", "location", "site", "plant", "origin", "shipfrom"}},
           {"mode", Dimension::kText, "truck, rail, ...", {"mode", "carrier", "transport", "by"}},
           {"rate",
            Dimension::kRate,
            "the price of the way",
            {"rate", "freight", "freightrate", "price", "cost"}},
           {"delay",
            Dimension::kNumber,
            "the periods that the goods are under way",
            {"delay", "transit", "transittime", "periods", "leadtime"}}},
          -1};
}

}  // namespace

const std::vector<TableKind> &tableKinds() {
  static const std::vector<TableKind> kKinds = {machines(), orders(), freightRates()};
  return kKinds;
}

QString plainName(const QString &name) {
  QString plain;
  for (const QChar character : name) {
    if (character.isLetterOrNumber()) {
      plain += character.toLower();
    }
  }
  return plain;
}

}  // namespace corvane::convert
