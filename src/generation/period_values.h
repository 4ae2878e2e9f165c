#pragma once

#include <QtGlobal>
#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <type_traits>
#include <vector>

namespace corvane {

// One plain value a period, in the order of the periods. What is held are runs of the same value,
// bit for bit, so that a long horizon in which little changes takes little memory, and an empty
// sequence is a single pointer. Looking up a period takes logarithmic time.
template <typename T>
class PeriodValues {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  PeriodValues() = default;
  PeriodValues(std::initializer_list<T> values) {
    for (const T value : values) {
      append(value);
    }
  }

  qint32 size() const { return runs_ == nullptr ? 0 : runs_->back().end; }
  bool isEmpty() const { return runs_ == nullptr; }

  // REQUIRES a period from 0 to size() - 1, here and in set().
  T at(qint32 period) const { return find(period)->value; }

  // Throws std::bad_alloc.
  void append(T value) {
    if (runs_ == nullptr) {
      runs_ = std::make_unique<Runs>(1, Run{value, 1});
    } else if (isSame(runs_->back().value, value)) {
      ++runs_->back().end;
    } else {
      runs_->push_back({value, size() + 1});
    }
  }

  void set(qint32 period, T value) {
    auto run = find(period);
    if (isSame(run->value, value)) {
      return;
    }
    const bool isFirst = period == (run == runs_->begin() ? 0 : std::prev(run)->end);
    if (!isFirst) {
      run = std::next(runs_->insert(run, {run->value, period}));
    }
    if (period + 1 < run->end) {
      run = runs_->insert(run, {value, period + 1});
    } else {
      run->value = value;
      joinWithNext(run);
    }
    if (isFirst && run != runs_->begin()) {
      joinWithNext(std::prev(run));
    }
  }

  bool contains(T value) const {
    return runs_ != nullptr && std::any_of(runs_->begin(), runs_->end(),
                                           [value](const Run &run) { return run.value == value; });
  }

 private:
  struct Run {
    T value;
    qint32 end;  // the period after its last one
  };
  using Runs = std::vector<Run>;

  static bool isSame(T a, T b) { return std::memcmp(&a, &b, sizeof(T)) == 0; }

  typename Runs::iterator find(qint32 period) const {
    return std::upper_bound(runs_->begin(), runs_->end(), period,
                            [](qint32 wanted, const Run &run) { return wanted < run.end; });
  }

  void joinWithNext(typename Runs::iterator run) {
    const auto next = std::next(run);
    if (next != runs_->end() && isSame(run->value, next->value)) {
      run->end = next->end;
      runs_->erase(next);
    }
  }

  std::unique_ptr<Runs> runs_;
};

}  // namespace corvane
