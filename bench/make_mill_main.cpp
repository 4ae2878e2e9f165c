// make_mill FOLDER [KEY=VALUE ...]: writes a generated mill into FOLDER/data. The keys are those of
// the table below; what is not named keeps the default of MillShape.

#include <cstdlib>
#include <exception>
#include <iostream>
#include <map>
#include <string>

#include "mill_generator.h"

using namespace corvane;

namespace {

bool setValue(bench::MillShape &shape, const std::string &key, const std::string &value) {
  const std::map<std::string, int *> integers = {{"grades", &shape.grades},
                                                 {"widths", &shape.widths},
                                                 {"deckles", &shape.deckleWidths},
                                                 {"periods", &shape.periods},
                                                 {"inpattern", &shape.widthsInPattern},
                                                 {"newpatterns", &shape.newPatterns},
                                                 {"customers", &shape.customers},
                                                 {"modes", &shape.modes},
                                                 {"reels", &shape.reelsADay},
                                                 {"farfreight", &shape.farFreight},
                                                 {"attempts", &shape.attempts}};
  if (const auto entry = integers.find(key); entry != integers.end()) {
    *entry->second = std::atoi(value.c_str());
  } else if (key == "orders") {
    shape.orders = std::atoll(value.c_str());
  } else if (key == "pick") {
    shape.pickSetSize = std::atof(value.c_str());
  } else if (key == "delay") {
    shape.delay = value != "0";
  } else if (key == "seed") {
    shape.seed = static_cast<std::uint32_t>(std::atol(value.c_str()));
  } else {
    return false;
  }
  return true;
}

int usage() {
  std::cerr << "usage: make_mill FOLDER [grades=|widths=|deckles=|periods=|inpattern=|newpatterns=|"
               "orders=|customers=|modes=|pick=|attempts=|delay=|reels=|farfreight=|seed=]...\n";
  return EXIT_FAILURE;
}

}  // namespace

int main(int argc, char **argv) {
  if (argc < 2) {
    return usage();
  }
  bench::MillShape shape;
  for (int at = 2; at < argc; ++at) {
    const std::string argument = argv[at];
    const std::size_t split = argument.find('=');
    if (split == std::string::npos ||
        !setValue(shape, argument.substr(0, split), argument.substr(split + 1))) {
      return usage();
    }
  }
  try {
    bench::writeMill(shape, argv[1]);
  } catch (const std::exception &error) {
    std::cerr << error.what() << '\n';
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
