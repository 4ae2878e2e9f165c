#include "checks/near_names.h"

#include <QHash>
#include <QStringList>
#include <algorithm>
#include <cstdlib>

namespace corvane::checks {

namespace {

// One letter is a large part of a short name: LB42 and LB43 are two grades.
constexpr qsizetype kShortestForOneLetter = 5;

// All pairs of so many names are looked at.
constexpr std::size_t kMostPairs = 20'000'000;

// The word of a name that stands at the place, ends included.
QString wordAt(const QString &name, qsizetype at) {
  qsizetype begin = std::min(at, name.size());
  while (begin > 0 && name[begin - 1].isLetterOrNumber()) {
    --begin;
  }
  qsizetype end = std::min(at, name.size());
  while (end < name.size() && name[end].isLetterOrNumber()) {
    ++end;
  }
  return name.mid(begin, end - begin);
}

}  // namespace

QString foldedName(const QString &name) {
  QString folded;
  for (const QChar c : name.toCaseFolded()) {
    if (!c.isSpace() && c != QLatin1Char('-') && c != QLatin1Char('_')) {
      folded += c;
    }
  }
  return folded;
}

int editDistance(const QString &a, const QString &b, int limit) {
  if (std::abs(a.size() - b.size()) > limit) {
    return limit + 1;
  }
  const auto width = static_cast<std::size_t>(b.size()) + 1;
  std::vector<int> before(width);
  std::vector<int> last(width);
  std::vector<int> row(width);
  for (std::size_t j = 0; j < width; ++j) {
    last[j] = static_cast<int>(j);
  }
  for (qsizetype i = 1; i <= a.size(); ++i) {
    row[0] = static_cast<int>(i);
    for (qsizetype j = 1; j <= b.size(); ++j) {
      const auto at = static_cast<std::size_t>(j);
      const int change = a[i - 1] == b[j - 1] ? 0 : 1;
      row[at] = std::min({last[at] + 1, row[at - 1] + 1, last[at - 1] + change});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
        row[at] = std::min(row[at], before[at - 2] + 1);
      }
    }
    std::swap(before, last);
    std::swap(last, row);
  }
  return std::min(last[width - 1], limit + 1);
}

std::optional<QString> nearestName(const QString &name, const std::vector<QString> &known) {
  const QString folded = foldedName(name);
  int best = std::max(1, static_cast<int>(folded.size()) / 4) + 1;
  std::optional<QString> nearest;
  for (const QString &candidate : known) {
    if (candidate == name) {
      continue;
    }
    const int distance = editDistance(folded, foldedName(candidate), best - 1);
    if (distance < best) {
      best = distance;
      nearest = candidate;
      if (best == 0) {
        break;
      }
    }
  }
  return nearest;
}

bool differByOneLetter(const QString &a, const QString &b) {
  if (std::min(a.size(), b.size()) < kShortestForOneLetter || editDistance(a, b, 1) != 1) {
    return false;
  }
  const auto [inA, inB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
  const auto at = inA - a.begin();
  const bool isDigit = (inA != a.end() && inA->isDigit()) || (inB != b.end() && inB->isDigit());
  return !isDigit && wordAt(a, at).size() > 1 && wordAt(b, at).size() > 1;
}

void forEachNearName(const std::vector<KnownName> &names,
                     const std::function<void(std::size_t, std::size_t)> &report) {
  QHash<QString, std::size_t> byFolded;
  std::vector<bool> isReported(names.size(), false);
  const auto tell = [&](std::size_t a, std::size_t b) {
    const bool firstIsOdd = !names[a].isSure && names[b].isSure;
    const std::size_t odd = firstIsOdd ? a : b;
    if (!isReported[odd]) {
      isReported[odd] = true;
      report(odd, firstIsOdd ? b : a);
    }
  };
  for (std::size_t i = 0; i < names.size(); ++i) {
    const QString folded = foldedName(names[i].text);
    const auto known = byFolded.constFind(folded);
    if (known != byFolded.constEnd()) {
      tell(*known, i);
    } else {
      byFolded.insert(folded, i);
    }
  }
  const auto unsure = static_cast<std::size_t>(std::count_if(
      names.begin(), names.end(), [](const KnownName &name) { return !name.isSure; }));
  if (unsure * names.size() > kMostPairs) {
    return;
  }
  for (std::size_t i = 0; i < names.size(); ++i) {
    for (std::size_t j = 0; !names[i].isSure && j < names.size(); ++j) {
      if ((names[j].isSure || j < i) && differByOneLetter(names[i].text, names[j].text)) {
        tell(names[j].isSure ? i : j, names[j].isSure ? j : i);
      }
    }
  }
}

}  // namespace corvane::checks
