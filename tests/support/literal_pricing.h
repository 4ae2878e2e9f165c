#pragma once

#include <QtGlobal>
#include <utility>
#include <vector>

namespace corvane::support {

// Pricing as its procedure is told, step by step, with lists that are built, emptied, sorted and
// scanned as a whole; for comparison with the program's.

struct LiteralPrice {
  double width;
  double dual;
  double ratio;
};

inline std::vector<LiteralPrice> literalPriceList(const std::vector<double> &widths,
                                                  const std::vector<double> &duals) {
  std::vector<LiteralPrice> list;
  for (std::size_t i = 0; i < widths.size(); ++i) {
    double ratio = 0;
    if (widths[i] != 0) {
      ratio = duals[i] / widths[i];
    }
    list.push_back({widths[i], duals[i], ratio});
  }
  for (std::size_t i = 0; i < list.size(); ++i) {
    for (std::size_t j = i + 1; j < list.size(); ++j) {
      if (list[j].ratio > list[i].ratio) {
        std::swap(list[i], list[j]);
      }
    }
  }
  return list;
}

struct LiteralRandom {
  quint32 state = 1;
  quint32 multiplier = 205;
  quint32 increment = 29573;
  quint32 modulus = 139968;
  quint32 low = 0;
  quint32 high = 100;
  int draws = 0;

  quint32 draw() {
    ++draws;
    state = (multiplier * state + increment) % modulus;
    return low + ((high - low + 1) * state) / modulus;
  }
};

struct LiteralCandidate {
  std::vector<double> widths;
  double trim = 0;
};

// The entry of the whole list that fits best, or -1.
inline int literalBestFitting(const std::vector<LiteralPrice> &prices, double freeWidth) {
  double best = 0.0;
  int choice = -1;
  for (std::size_t j = 0; j < prices.size(); ++j) {
    if (!(prices[j].width > freeWidth) && !(prices[j].dual < best)) {
      choice = static_cast<int>(j);
      best = prices[j].dual;
    }
  }
  return choice;
}

inline void literalSortDescending(std::vector<double> &widths) {
  for (std::size_t i = 0; i < widths.size(); ++i) {
    for (std::size_t j = i + 1; j < widths.size(); ++j) {
      if (widths[j] > widths[i]) {
        std::swap(widths[i], widths[j]);
      }
    }
  }
}

// True for found. picks, when given, is told the widths of the last attempt in the order of the
// picks.
inline bool literalPrice(double deckleWidth, const std::vector<LiteralPrice> &prices, int attempts,
                         int mostWidths, LiteralRandom &random, LiteralCandidate &candidate,
                         std::vector<double> *picks = nullptr) {
  if (deckleWidth < 0) {
    return true;
  }
  for (int attempt = 0; attempt < attempts; ++attempt) {
    if (!candidate.widths.empty()) {
      candidate.widths.clear();
    }
    candidate.trim = deckleWidth;
    double v = deckleWidth;
    int n = 0;
    bool stop = false;
    if (mostWidths >= 1) {
      do {
        if (!(candidate.trim > 0) || stop) {
          break;
        }
        int k = static_cast<int>(random.draw());
        if (!(candidate.trim - prices[static_cast<std::size_t>(k)].width >= 0)) {
          k = literalBestFitting(prices, candidate.trim);
        }
        if (k < 0) {
          stop = true;
          continue;
        }
        const LiteralPrice &entry = prices[static_cast<std::size_t>(k)];
        candidate.widths.push_back(entry.width);
        candidate.trim -= entry.width;
        ++n;
        v -= entry.dual;
      } while (n < mostWidths);
    }
    if (picks != nullptr) {
      *picks = candidate.widths;
    }
    literalSortDescending(candidate.widths);
    if ((-1e-8 < v && v < 1e-8) || v >= 0) {
      continue;
    }
    return true;
  }
  return false;
}

}  // namespace corvane::support
