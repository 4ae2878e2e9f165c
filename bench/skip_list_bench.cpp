// The skip list: insertion in random order, appending, searching and walking.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <vector>

#include "core/comparison.h"
#include "core/skip_list_cursor.h"

using namespace corvane;

namespace {

constexpr int kLevelArgument = 3;

std::vector<double> shuffledNumbers(std::int64_t count) {
  std::vector<double> numbers(static_cast<std::size_t>(count));
  for (std::size_t at = 0; at < numbers.size(); ++at) {
    numbers[at] = static_cast<double>(at);
  }
  std::shuffle(numbers.begin(), numbers.end(), std::mt19937(1));
  return numbers;
}

void insertAll(skipList<double> &list, std::vector<double> &numbers) {
  for (double &number : numbers) {
    list.insert(&number);
  }
}

void insertInRandomOrder(benchmark::State &state) {
  std::vector<double> numbers = shuffledNumbers(state.range(0));
  DoubleComp order;
  for (auto unused : state) {
    skipList<double> list(&order, false, kLevelArgument);
    insertAll(list, numbers);
    benchmark::DoNotOptimize(list.count());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(insertInRandomOrder)->Range(1 << 10, 1 << 18);

void appendInOrder(benchmark::State &state) {
  std::vector<double> numbers = shuffledNumbers(state.range(0));
  std::sort(numbers.begin(), numbers.end());
  DoubleComp order;
  for (auto unused : state) {
    skipList<double> list(&order, false, kLevelArgument);
    for (double &number : numbers) {
      list.append(&number);
    }
    benchmark::DoNotOptimize(list.count());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(appendInOrder)->Range(1 << 10, 1 << 18);

void search(benchmark::State &state) {
  std::vector<double> numbers = shuffledNumbers(state.range(0));
  DoubleComp order;
  skipList<double> list(&order, false, kLevelArgument);
  insertAll(list, numbers);
  std::size_t at = 0;
  for (auto unused : state) {
    double *found = nullptr;
    benchmark::DoNotOptimize(list.search(numbers[at], found));
    at = at + 1 < numbers.size() ? at + 1 : 0;
  }
}
BENCHMARK(search)->Range(1 << 10, 1 << 18);

void walk(benchmark::State &state) {
  std::vector<double> numbers = shuffledNumbers(state.range(0));
  DoubleComp order;
  skipList<double> list(&order, false, kLevelArgument);
  insertAll(list, numbers);
  for (auto unused : state) {
    double sum = 0;
    forEachElement(list, [&sum](double number) { sum += number; });
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(walk)->Range(1 << 10, 1 << 18);

}  // namespace
