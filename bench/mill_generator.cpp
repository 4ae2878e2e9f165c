#include "mill_generator.h"

#include <algorithm>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace corvane::bench {

namespace {

constexpr int kStepsPerInch = 16;
constexpr int kWidestDeckle = 250;
constexpr int kDeckleStep = 27;
constexpr int kMills = 3;

// The numbers of std::mt19937 are the same everywhere; those of the standard distributions are not.
class Draws {
 public:
  explicit Draws(std::uint32_t seed) : engine_(seed) {}

  // From low to high, both included.
  int between(int low, int high) {
    const auto count = static_cast<std::uint32_t>(high - low) + 1U;
    return low + static_cast<int>(engine_() % count);
  }

  template <typename T>
  void shuffle(std::vector<T> &items) {
    for (std::size_t left = items.size(); left > 1; --left) {
      std::swap(items[left - 1], items[engine_() % left]);
    }
  }

 private:
  std::mt19937 engine_;
};

// In sixteenths of an inch, as text without needless zeros.
std::string inches(int steps) {
  std::string text = std::to_string(steps / kStepsPerInch);
  if (const int rest = steps % kStepsPerInch; rest != 0) {
    std::string decimals = std::to_string(10000 + rest * 10000 / kStepsPerInch).substr(1);
    decimals.erase(decimals.find_last_not_of('0') + 1);
    text += '.' + decimals;
  }
  return text;
}

class MillWriter {
 public:
  MillWriter(const MillShape &shape, const std::filesystem::path &folder)
      : shape_(shape), folder_(folder / "data"), draws_(shape.seed) {
    std::filesystem::create_directories(folder_);
  }

  void write() {
    writeParameters();
    writeMachines();
    drawWidths();
    writeOrders();
    writeFreightRates();
  }

 private:
  struct Demand {
    int period;
    int grade;
    int width;
  };

  std::ofstream open(const char *name) const {
    std::ofstream file(folder_ / name, std::ios::trunc);
    file.exceptions(std::ios::failbit | std::ios::badbit);
    return file;
  }

  static std::string gradeName(int grade) { return "Grade" + std::to_string(grade + 1); }
  static std::string millName(int mill) { return "Mill" + std::to_string(mill + 1); }
  static std::string customerName(int customer) {
    return "Customer " + std::to_string(customer + 1);
  }

  void writeParameters() const {
    std::ofstream file = open("Parameters.data");
    file << "maximum widths in pattern=" << shape_.widthsInPattern
         << "\nnew patterns per iteration=" << shape_.newPatterns
         << "\nwidth pick set size=" << shape_.pickSetSize
         << "\nstop generating threshold=" << shape_.attempts
         << "\ndelay=" << (shape_.delay ? "True" : "False") << "\nrand num gen seed=" << shape_.seed
         << '\n';
  }

  void writeMachines() const {
    std::ofstream file = open("machines.data");
    for (int grade = 0; grade < shape_.grades; ++grade) {
      for (int deckle = 0; deckle < shape_.deckleWidths; ++deckle) {
        file << millName(deckle % kMills) << ",W" << deckle + 1 << ',' << gradeName(grade) << ','
             << kWidestDeckle - kDeckleStep * deckle << ',' << shape_.reelsADay << ",60.5,12.25\n";
      }
    }
  }

  // Narrow enough to fill a deckle with the widths that a pattern may hold, wide enough to leave
  // trim.
  void drawWidths() {
    const int low = kWidestDeckle * kStepsPerInch * 2 / (3 * shape_.widthsInPattern);
    const int high = kWidestDeckle * kStepsPerInch * 2 / shape_.widthsInPattern;
    std::vector<int> all(static_cast<std::size_t>(high - low) + 1U);
    for (std::size_t at = 0; at < all.size(); ++at) {
      all[at] = low + static_cast<int>(at);
    }
    if (static_cast<std::size_t>(shape_.widths) > all.size()) {
      throw std::runtime_error("more widths than there are");
    }
    for (int grade = 0; grade < shape_.grades; ++grade) {
      draws_.shuffle(all);
      widths_.emplace_back(all.begin(), all.begin() + shape_.widths);
    }
  }

  std::vector<Demand> everyDemand() {
    std::vector<Demand> demands;
    for (int period = 0; period < shape_.periods; ++period) {
      for (int grade = 0; grade < shape_.grades; ++grade) {
        for (int width = 0; width < shape_.widths; ++width) {
          demands.push_back({period, grade, width});
        }
      }
    }
    draws_.shuffle(demands);
    return demands;
  }

  Demand drawDemand() {
    const int period = draws_.between(0, shape_.periods - 1);
    const int grade = draws_.between(0, shape_.grades - 1);
    return {period, grade, draws_.between(0, shape_.widths - 1)};
  }

  void writeOrders() {
    std::ofstream file = open("orders.data");
    const std::vector<Demand> wanted = everyDemand();
    for (long long order = 0; order < shape_.orders; ++order) {
      const auto at = static_cast<std::size_t>(order);
      const Demand demand = at < wanted.size() ? wanted[at] : drawDemand();
      const int steps =
          widths_[static_cast<std::size_t>(demand.grade)][static_cast<std::size_t>(demand.width)];
      const int quantity = draws_.between(1, 200);
      file << demand.period + 1 << ',' << gradeName(demand.grade) << ',' << inches(steps) << ','
           << quantity << ',' << customerName(draws_.between(0, shape_.customers - 1)) << '\n';
    }
  }

  void writeFreightRates() {
    static const char *const kModes[] = {"Rail", "Truck", "Barge"};
    std::ofstream file = open("freightRates.data");
    for (int customer = 0; customer < shape_.customers; ++customer) {
      for (int mill = 0; mill < std::min(kMills, shape_.deckleWidths); ++mill) {
        for (int mode = 0; mode < std::min(3, shape_.modes); ++mode) {
          file << customerName(customer) << ',' << millName(mill) << ',' << kModes[mode] << ','
               << draws_.between(10, 40) * (mill == customer % kMills ? 1 : shape_.farFreight)
               << ".25," << mode << '\n';
        }
      }
    }
  }

  const MillShape &shape_;
  std::filesystem::path folder_;
  Draws draws_;
  std::vector<std::vector<int>> widths_;  // of each grade, in sixteenths of an inch
};

}  // namespace

void writeMill(const MillShape &shape, const std::filesystem::path &folder) {
  try {
    MillWriter(shape, folder).write();
  } catch (const std::ios::failure &) {
    throw std::runtime_error("cannot write the mill into " + folder.string());
  }
}

}  // namespace corvane::bench
