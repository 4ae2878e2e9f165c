#include "checks/random_mill.h"

#include "formats/number_text.h"

namespace corvane::checks {

namespace {

std::string number(double value) {
  return std::string(NumberText(value).view());
}

std::string rendered(const std::vector<Row> &rows) {
  std::string text;
  for (const Row &row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      text += (i > 0 ? "," : "") + row[i];
    }
    text += "\n";
  }
  return text;
}

}  // namespace

std::size_t below(Random &random, std::size_t bound) {
  return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random);
}

std::vector<Row> &RandomMill::rowsOf(const std::string &file) {
  return file == "machines" ? machines : file == "orders" ? orders : rates;
}

MillTexts RandomMill::texts() const {
  MillTexts texts;
  for (const std::string &line : parameters) {
    texts.parameters += line + "\n";
  }
  texts.machines = rendered(machines);
  texts.orders = rendered(orders);
  texts.rates = rendered(rates);
  if (damage) {
    damage(texts);
  }
  return texts;
}

RandomMill cleanRandomMill(Random &random) {
  const std::vector<std::string> mills = {"Alder Falls", "Birch Landing", "Cedar Narrows"};
  const std::vector<std::string> grades = {"LB42", "CM26", "BK50"};
  const std::vector<std::string> customers = {"Badger Box", "Clearwater Cartons", "Granite Display",
                                              "Kestrel Produce"};
  RandomMill mill;
  const std::size_t millCount = 1 + below(random, mills.size());
  const std::size_t gradeCount = 1 + below(random, grades.size());
  const std::size_t periodCount = 2 + below(random, 5);
  mill.parameters = {
      "# A random mill", "batch=" + std::string(below(random, 2) == 0 ? "True" : "False"),
      "maximum widths in pattern=10", "rand num gen seed=" + std::to_string(below(random, 9999))};
  for (std::size_t m = 0; m < millCount; ++m) {
    for (std::size_t g = 0; g < gradeCount; ++g) {
      mill.machines.push_back(
          {mills[m], mills[m].substr(0, 1) + "W" + std::to_string(m + 1), grades[g],
           number(120 + 0.5 * static_cast<double>(below(random, 60))),
           std::to_string(40 + below(random, 20)), std::to_string(60 + below(random, 10)),
           std::to_string(10 + below(random, 6))});
    }
  }
  // Every customer has widths of his own, in eighths, that are far enough from the others.
  for (std::size_t p = 1; p <= periodCount; ++p) {
    for (std::size_t g = 0; g < gradeCount; ++g) {
      for (std::size_t c = 0; c < customers.size(); ++c) {
        const std::size_t count = 1 + below(random, 2);
        for (std::size_t w = 0; w < count; ++w) {
          const double width = 26 + 10 * static_cast<double>(c) + 3 * static_cast<double>(w) +
                               static_cast<double>(g) +
                               0.125 * static_cast<double>(below(random, 8));
          mill.orders.push_back({std::to_string(p), grades[g], number(width),
                                 std::to_string(40 + below(random, 60)), customers[c]});
        }
      }
    }
  }
  for (const std::string &customer : customers) {
    for (std::size_t m = 0; m < millCount; ++m) {
      mill.rates.push_back({customer, mills[m], "Rail",
                            number(15 + 0.25 * static_cast<double>(below(random, 40))), "1"});
      mill.rates.push_back({customer, mills[m], "Truck",
                            number(20 + 0.25 * static_cast<double>(below(random, 40))), "0"});
    }
  }
  return mill;
}

}  // namespace corvane::checks
