// Every code five times, each in another random mill at a random place: it is found there, and
// nothing else is said of that line that is not true of it too.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "checks/random_mill.h"

namespace corvane::checks {
namespace {

// Where a mistake was planted.
struct Spot {
  std::string file;
  std::size_t row = 0;    // from 0
  int field = 0;          // of a data file
  std::size_t shift = 0;  // characters into the field, or the line of a parameter file
  bool isWholeFile = false;
};

Spot wholeFile(const std::string &file) {
  return {file, 0, 0, 0, true};
}

struct Planter {
  const char *code;
  std::function<Spot(RandomMill &, Random &)> plant;
  // True of the same line.
  std::set<std::string> also;
};

Spot change(RandomMill &mill, Random &random, const std::string &file, int field,
            const std::function<void(std::string &)> &edit) {
  std::vector<Row> &rows = mill.rowsOf(file);
  const std::size_t row = below(random, rows.size());
  edit(rows[row][static_cast<std::size_t>(field)]);
  return {file, row, field};
}

std::function<Spot(RandomMill &, Random &)> changed(
    const std::string &file, int field, const std::function<void(std::string &)> &edit) {
  return [=](RandomMill &mill, Random &random) { return change(mill, random, file, field, edit); };
}

std::function<Spot(RandomMill &, Random &)> replacedBy(const std::string &file, int field,
                                                       const std::string &text) {
  return changed(file, field, [text](std::string &value) { value = text; });
}

std::function<Spot(RandomMill &, Random &)> parameter(const std::string &line, std::size_t shift) {
  return [=](RandomMill &mill, Random & /*random*/) {
    mill.parameters.push_back(line);
    return Spot{"parameters", mill.parameters.size() - 1, 0, shift};
  };
}

// A row more, at the end or, with front, before the others.
std::function<Spot(RandomMill &, Random &)> inserted(const std::string &file, const Row &row,
                                                     int field) {
  return [=](RandomMill &mill, Random & /*random*/) {
    mill.rowsOf(file).push_back(row);
    return Spot{file, mill.rowsOf(file).size() - 1, field};
  };
}

// An order of a grade's width and a little more.
Spot nearWidth(RandomMill &mill, Random &random, const std::string &digits) {
  Row row = mill.orders[below(random, mill.orders.size())];
  row[0] = mill.orders.back()[0];
  row[2] += (row[2].find('.') == std::string::npos ? "." : "") + digits;
  mill.orders.push_back(row);
  return {"orders", mill.orders.size() - 1, 2};
}

Spot damaged(RandomMill &mill, const std::string &file,
             const std::function<void(std::string &)> &edit) {
  mill.damage = [=](MillTexts &texts) { edit(texts.of(file)); };
  return {file, 0, 0};
}

std::string oneFile(Random &random) {
  static const std::vector<std::string> kFiles = {"machines", "orders", "rates"};
  return kFiles[below(random, kFiles.size())];
}

// Every character of the text as two bytes.
std::string wide(const std::string &text, bool littleEndian, bool marked) {
  std::string result = !marked ? "" : littleEndian ? "\xff\xfe" : "\xfe\xff";
  for (const char c : text) {
    result += littleEndian ? std::string({c, '\0'}) : std::string({'\0', c});
  }
  return result;
}

std::vector<Planter> planters() {
  return {
      {"CV101",
       [](RandomMill &mill, Random &random) {
         const std::string file = oneFile(random);
         const std::string key = file == "machines" ? "machine file="
                                 : file == "orders" ? "order file="
                                                    : "freight rate file=";
         mill.parameters.push_back(key + "data/nowhere.data");
         return Spot{"parameters", mill.parameters.size() - 1, 0, key.size()};
       },
       {}},
      {"CV102",
       [](RandomMill &mill, Random &) {
         Spot spot = damaged(mill, "orders", [](std::string &text) { text.pop_back(); });
         spot.row = mill.orders.size() - 1;
         spot.field = 4;
         spot.shift = mill.orders.back()[4].size();
         return spot;
       },
       {}},
      {"CV104",
       [](RandomMill &mill, Random &random) {
         Spot spot =
             change(mill, random, "orders", 4, [](std::string &text) { text.insert(3, 1, '\0'); });
         spot.shift = 3;
         return spot;
       },
       {}},
      {"CV103",
       [](RandomMill &mill, Random &random) {
         const std::string file = oneFile(random);
         Spot spot = damaged(mill, file, [](std::string &text) {
           std::replace(text.begin(), text.end(), '\n', '\r');
         });
         spot.field = static_cast<int>(mill.rowsOf(file)[0].size()) - 1;
         spot.shift = mill.rowsOf(file)[0].back().size();
         return spot;
       },
       {}},
      {"CV104",
       [](RandomMill &mill, Random &random) {
         const bool littleEndian = below(random, 2) == 0;
         const bool marked = below(random, 2) == 0;
         return damaged(mill, oneFile(random),
                        [=](std::string &text) { text = wide(text, littleEndian, marked); });
       },
       {}},
      {"CV106",
       [](RandomMill &mill, Random &random) {
         return damaged(mill, oneFile(random),
                        [](std::string &text) { text.insert(0, "\xef\xbb\xbf"); });
       },
       {}},
      {"CV105",
       changed("rates", 2,
               [](std::string &text) { text = text == "Rail" ? "Schn\xe4ll" : "Tr\xe4ger"; }),
       {"CV503"}},
      {"CV107",
       [](RandomMill &mill, Random &random) {
         Spot spot =
             change(mill, random, "rates", 0, [](std::string &text) { text.append(1100, 'x'); });
         spot.shift = 1023;
         return spot;
       },
       {}},
      {"CV108",
       [](RandomMill &mill, Random &random) {
         const std::size_t row = below(random, mill.machines.size());
         mill.machines.insert(mill.machines.begin() + static_cast<std::ptrdiff_t>(row), Row{""});
         return Spot{"machines", row, 0};
       },
       {}},
      {"CV109", changed("orders", 1, [](std::string &text) { text += "\xc2\xa0"; }), {}},
      {"CV110",
       [](RandomMill &mill, Random &random) {
         const std::size_t at = below(random, mill.orders.size());
         Row &row = mill.orders[at];
         const std::size_t shift = row[0].size();
         row = {row[0] + ";" + row[1] + ";" + row[2] + ";" + row[3] + ";" + row[4]};
         return Spot{"orders", at, 0, shift};
       },
       {}},
      {"CV111",
       [](RandomMill &mill, Random &) {
         mill.rates.insert(mill.rates.begin(), Row{"Customer", "Mill", "Mode", "Rate", "Delay"});
         return Spot{"rates", 0, 0};
       },
       {}},
      {"CV112", changed("orders", 4, [](std::string &text) { text = "\"" + text + "\""; }), {}},
      {"CV113", changed("orders", 4, [](std::string &text) { text.insert(4, "\r"); }), {}},
      {"CV201",
       [](RandomMill &mill, Random &random) {
         Spot spot = change(mill, random, "machines", 4, [](std::string &text) { text.clear(); });
         spot.field = 3;
         spot.shift = mill.machines[spot.row][3].size();
         return spot;
       },
       {}},
      {"CV202",
       [](RandomMill &mill, Random &random) {
         const std::size_t at = below(random, mill.orders.size());
         mill.orders[at].pop_back();
         return Spot{"orders", at, 3, mill.orders[at][3].size()};
       },
       {}},
      {"CV203",
       [](RandomMill &mill, Random &random) {
         const std::size_t at = below(random, mill.orders.size());
         mill.orders[at].push_back("urgent");
         return Spot{"orders", at, 5};
       },
       {}},
      {"CV204", changed("orders", 2, [](std::string &text) { text = "44,75"; }), {}},
      {"CV205", changed("orders", 3, [](std::string &text) { text = "1'0" + text; }), {}},
      {"CV206", replacedBy("orders", 2, "wide"), {}},
      {"CV207", replacedBy("orders", 2, "0x1F"), {}},
      {"CV208", replacedBy("orders", 3, "60.9"), {}},
      {"CV209", replacedBy("orders", 3, "4000000000"), {"CV410", "CV411"}},
      {"CV210", changed("orders", 1, [](std::string &text) { text += " "; }), {}},
      {"CV211",
       changed("rates", 2,
               [](std::string &text) {
                 text[0] = 'r';
                 text = "rail";
               }),
       {"CV501"}},
      {"CV212",
       [](RandomMill &mill, Random &random) { return nearWidth(mill, random, "001"); },
       {}},
      {"CV213", replacedBy("orders", 2, "31.05"), {}},
      {"CV214", changed("orders", 4, [](std::string &text) { text = "'" + text + "'"; }), {}},
      {"CV301",
       [](RandomMill &mill, Random &random) {
         mill.machines.push_back(mill.machines[below(random, mill.machines.size())]);
         return Spot{"machines", mill.machines.size() - 1, 1};
       },
       {}},
      {"CV302",
       [](RandomMill &mill, Random &random) {
         Row row = mill.machines[below(random, mill.machines.size())];
         row[0] = mill.machines[0][0] == row[0] ? "Dogwood Mills" : mill.machines[0][0];
         row[2] = "BK99";
         mill.machines.push_back(row);
         return Spot{"machines", mill.machines.size() - 1, 1};
       },
       {"CV307"}},
      {"CV303", replacedBy("machines", 3, "-124"), {"CV307"}},
      {"CV304", replacedBy("machines", 4, "0"), {}},
      {"CV305", replacedBy("machines", 5, "0"), {}},
      {"CV306", replacedBy("machines", 6, "-1"), {}},
      {"CV307",
       inserted("machines", {"Alder Falls", "AW9", "LB99", "120", "50", "60", "10"}, 2),
       {}},
      {"CV308", replacedBy("machines", 3, "3149.6"), {}},
      {"CV309",
       [](RandomMill &mill, Random &) {
         mill.machines.push_back({"Alder Falls", "AW9", "LB42", "60", "50", "60", "10"});
         mill.orders.push_back({mill.orders.back()[0], "LB42", "70", "50", "Badger Box"});
         return Spot{"orders", mill.orders.size() - 1, 2};
       },
       {}},
      {"CV401", replacedBy("orders", 3, "0"), {}},
      {"CV402",
       [](RandomMill &mill, Random &random) {
         Row row = mill.orders[below(random, mill.orders.size())];
         row[4] = row[4] == "Badger Box" ? "Granite Display" : "Badger Box";
         row[3] = "7";
         mill.orders.push_back(row);
         // The last period again, so that the order of the periods stays.
         return Spot{"orders", mill.orders.size() - 1, 2};
       },
       {}},
      {"CV403", replacedBy("orders", 1, "LB24"), {}},
      {"CV404",
       [](RandomMill &mill, Random &) {
         mill.orders.clear();
         return wholeFile("orders");
       },
       {}},
      {"CV405",
       [](RandomMill &mill, Random &) {
         mill.orders.insert(mill.orders.begin(), {"9", "LB42", "39", "50", "Badger Box"});
         return Spot{"orders", 1, 0};
       },
       {"CV410", "CV408"}},
      {"CV406",
       changed("orders", 0, [](std::string &text) { text = "0" + text; }),
       {"CV408", "CV410"}},
      {"CV407",
       [](RandomMill &mill, Random &random) {
         mill.orders.push_back(mill.orders[below(random, mill.orders.size())]);
         return Spot{"orders", mill.orders.size() - 1, 0};
       },
       {}},
      {"CV408",
       [](RandomMill &mill, Random &random) {
         mill.machines.push_back({"Alder Falls", "AW9", "WT77", "125", "50", "60", "10"});
         const std::string width = std::to_string(30 + below(random, 40));
         mill.orders.insert(mill.orders.begin(), {"1", "WT77", width, "50", "Badger Box"});
         return Spot{"orders", 0, 1};
       },
       {}},
      {"CV409",
       [](RandomMill &mill, Random &random) {
         mill.machines.push_back({"Alder Falls", "AW9", "WT77", "125", "50", "60", "10"});
         std::vector<Row> narrow;
         for (const Row &order : mill.orders) {
           if (narrow.empty() || narrow.back()[0] != order[0]) {
             narrow.push_back({order[0], "WT77", "11", "50", "Badger Box"});
           }
         }
         const std::size_t row = below(random, narrow.size());
         narrow[row][2] = "9.5";
         mill.orders.insert(mill.orders.begin(), narrow.begin(), narrow.end());
         return Spot{"orders", row, 2};
       },
       {}},
      {"CV410",
       [](RandomMill &mill, Random &random) {
         const std::size_t row = below(random, mill.orders.size());
         mill.orders[row][3] = "30000";
         std::size_t first = 0;
         while (mill.orders[first][0] != mill.orders[row][0] ||
                mill.orders[first][1] != mill.orders[row][1]) {
           ++first;
         }
         return Spot{"orders", first, 1};
       },
       {"CV411"}},
      {"CV411",
       [](RandomMill &mill, Random &random) {
         const std::size_t first = mill.orders.size();
         for (int i = 0; i < 5; ++i) {
           mill.orders.push_back(
               {mill.orders.back()[0], "LB42", std::to_string(70 + i), "45", "Badger Box"});
         }
         const std::size_t row = first + below(random, 5);
         mill.orders[row][3] = "9000";
         return Spot{"orders", row, 3};
       },
       {"CV410"}},
      {"CV412",
       [](RandomMill &mill, Random &random) { return nearWidth(mill, random, "000000001"); },
       {}},
      {"CV413",
       [](RandomMill &mill, Random &random) {
         // A width that the grade has in another line too.
         const std::size_t row = below(random, mill.orders.size());
         mill.orders[row][2] = "39.375";
         mill.orders[row][3] = "61";
         Row swapped = mill.orders[row];
         std::swap(swapped[2], swapped[3]);
         mill.orders.push_back(swapped);
         return Spot{"orders", mill.orders.size() - 1, 2};
       },
       {}},
      {"CV414",
       [](RandomMill &mill, Random &) {
         mill.orders.push_back({std::to_string(std::stoi(mill.orders.back()[0]) + 2), "LB42", "39",
                                "50", "Badger Box"});
         return Spot{"orders", mill.orders.size() - 1, 0};
       },
       {"CV408", "CV410"}},
      {"CV501",
       [](RandomMill &mill, Random &random) {
         Row row = mill.rates[below(random, mill.rates.size())];
         row[3] = "99";
         mill.rates.push_back(row);
         return Spot{"rates", mill.rates.size() - 1, 2};
       },
       {}},
      {"CV502", changed("orders", 4, [](std::string &text) { text.erase(2, 1); }), {"CV211"}},
      {"CV503",
       [](RandomMill &mill, Random &random) {
         mill.machines.push_back({"Dogwood Mills", "DW9", "LB42", "125", "50", "60", "10"});
         const std::vector<std::string> customers = {"Badger Box", "Clearwater Cartons",
                                                     "Granite Display", "Kestrel Produce"};
         const std::string without = customers[below(random, customers.size())];
         for (const std::string &customer : customers) {
           if (customer != without) {
             mill.rates.push_back({customer, "Dogwood Mills", "Truck", "25", "0"});
           }
         }
         std::size_t row = 0;
         while (mill.orders[row][4] != without || mill.orders[row][1] != "LB42") {
           ++row;
         }
         return Spot{"orders", row, 4};
       },
       {}},
      {"CV504", replacedBy("rates", 3, "0"), {}},
      {"CV505", replacedBy("rates", 4, "-1"), {"CV506"}},
      {"CV506",
       [](RandomMill &mill, Random &) {
         mill.machines.push_back({"Dogwood Mills", "DW9", "LB42", "125", "50", "60", "10"});
         for (const char *customer : {"Badger Box", "Clearwater Cartons", "Granite Display"}) {
           mill.rates.push_back({customer, "Dogwood Mills", "Truck", "25", "0"});
         }
         mill.rates.push_back({"Kestrel Produce", "Dogwood Mills", "Truck", "25", "1"});
         return Spot{"rates", mill.rates.size() - 1, 2};
       },
       {}},
      {"CV507", inserted("rates", {"Old Carton Works", "Alder Falls", "Truck", "25", "0"}, 0), {}},
      {"CV508",
       [](RandomMill &mill, Random &random) {
         mill.parameters.push_back("delay=False");
         const std::size_t row = 2 * below(random, mill.rates.size() / 2);
         mill.rates[row][3] = "30";
         mill.rates[row + 1][3] = "20";
         return Spot{"rates", row + 1, 3};
       },
       {}},
      {"CV509",
       [](RandomMill &mill, Random &) {
         for (std::size_t row = 0; row < mill.rates.size(); ++row) {
           if (mill.rates[row][0] == "Granite Display") {
             mill.rates[row][2] = mill.rates[row][2] == "Truck" ? "Boat" : "Rail";
             mill.rates[row][4] = "1";
           }
         }
         std::size_t row = 0;
         while (mill.orders[row][4] != "Granite Display") {
           ++row;
         }
         return Spot{"orders", row, 4};
       },
       {}},
      {"CV601",
       [](RandomMill &mill, Random &) {
         mill.machines.push_back({"Alder Falls", "B_C", "A", "125", "50", "60", "10"});
         mill.machines.push_back({"Alder Falls", "C", "A_B", "125", "50", "60", "10"});
         const std::string period = mill.orders.back()[0];
         mill.orders.push_back({period, "A", "40", "50", "Badger Box"});
         mill.orders.push_back({period, "A_B", "50", "50", "Badger Box"});
         return Spot{"machines", mill.machines.size() - 1, 1};
       },
       {}},
      {"CV602",
       [](RandomMill &mill, Random &) {
         const std::string period = mill.orders.back()[0];
         mill.orders.push_back({period, "LB42", "33.33331", "50", "Badger Box"});
         mill.orders.push_back({period, "LB42", "33.33334", "50", "Badger Box"});
         return Spot{"orders", mill.orders.size() - 1, 2};
       },
       {}},
      {"CV603",
       [](RandomMill &mill, Random &) {
         mill.orders.push_back({mill.orders.back()[0], "LB42", "33", "50", "Waste"});
         for (const char *name : {"Alder Falls", "Birch Landing", "Cedar Narrows"}) {
           mill.rates.push_back({"Waste", name, "Truck", "25", "0"});
         }
         return Spot{"orders", mill.orders.size() - 1, 4};
       },
       {"CV503"}},
      {"CV701", parameter("occur mim=2", 0), {}},
      {"CV702", parameter("delay=true", 6), {}},
      {"CV703", parameter("occur min=two", 10), {}},
      {"CV704", parameter("new patterns per iteration=200000", 27), {}},
      {"CV705", parameter("batch=True", 0), {}},
      {"CV706",
       [](RandomMill &mill, Random &) {
         std::erase_if(mill.parameters, [](const std::string &line) {
           return line.find("seed") != std::string::npos;
         });
         return wholeFile("parameters");
       },
       {}},
      {"CV707", parameter("order file=data/orders.data=old", 27), {}},
      {"CV708", parameter("log file=nowhere/a.log", 9), {}},
      {"CV709", parameter("time limit=0", 11), {}},
      {"CV710", parameter("threshold=4", 0), {}},
      {"CV711", parameter(" # note", 0), {}},
      {"CV712", parameter("width pick set size=25%", 20), {}},
      {"CV713", parameter("log file=data/orders.data", 9), {}},
      {"CV714", parameter("log file= data/a.log", 9), {"CV708"}},
      {"CV715", parameter("occur min", 0), {}},
  };
}

std::string placeOf(const RandomMill &mill, const Spot &spot) {
  if (spot.isWholeFile) {
    return spot.file;
  }
  std::size_t column = 1 + spot.shift;
  if (spot.file != "parameters") {
    RandomMill copy = mill;
    const Row &row = copy.rowsOf(spot.file)[spot.row];
    // A line that is too long is told of at its 1024th byte.
    for (int field = 0; field < spot.field; ++field) {
      column += row[static_cast<std::size_t>(field)].size() + 1;
    }
  }
  return spot.file + ":" + std::to_string(spot.row + 1) + ":" + std::to_string(column);
}

// "orders:3" of "orders:3:7".
std::string lineOf(const std::string &place) {
  return place.substr(0, place.rfind(':'));
}

TEST(SeededPlants, AreOfEveryCodeOfAMill) {
  std::set<std::string> planted;
  for (const Planter &planter : planters()) {
    planted.insert(planter.code);
  }
  for (const Check &check : allChecks()) {
    EXPECT_EQ(planted.count(codeText(check.code)), check.code < Code::kImportCut ? 1U : 0U)
        << codeText(check.code);
  }
}

TEST(SeededPlants, AreAllFoundAndNothingElse) {
  constexpr unsigned kTimes = 5;
  for (const Planter &planter : planters()) {
    for (unsigned seed = 1; seed <= kTimes; ++seed) {
      Random random(seed * 1000 + static_cast<unsigned>(std::stoi(planter.code + 2)));
      RandomMill mill = cleanRandomMill(random);
      const Spot spot = planter.plant(mill, random);
      const TextCheck check(mill.texts());
      const std::string place = placeOf(mill, spot);
      const std::string line = lineOf(place);
      EXPECT_THAT(check.texts(), testing::Contains(place + " " + planter.code)) << "seed " << seed;
      for (const Found &found : check.found) {
        EXPECT_TRUE(lineOf(found.place) != line || found.code == planter.code ||
                    planter.also.count(found.code) > 0)
            << planter.code << ", seed " << seed << ": " << found.text() << ": " << found.message;
      }
    }
  }
}

TEST(CleanRandomMills, HaveNoErrorAndNoWarning) {
  constexpr unsigned kMills = 200;
  for (unsigned seed = 1; seed <= kMills; ++seed) {
    Random random(seed);
    const TextCheck check(cleanRandomMill(random).texts());
    for (const Found &found : check.found) {
      EXPECT_EQ(findCheck(found.code)->severity, Severity::kNote)
          << "seed " << seed << ": " << found.text() << ": " << found.message;
    }
  }
}

}  // namespace
}  // namespace corvane::checks
