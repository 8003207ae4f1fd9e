// The call-sign analysis: loading its tables, and one lookup.
#include <benchmark/benchmark.h>
#include <random>
#include <string>
#include <vector>

#include "convert/reference_tables.h"

namespace {

using namespace tobarine;

void load_tables(benchmark::State& state) {
  for (auto _ : state) {
    CallTables tables;
    tables.load(TOBARINE_DATA);
    benchmark::DoNotOptimize(tables);
  }
}
BENCHMARK(load_tables)->Unit(benchmark::kMillisecond);

// Calls of the shapes logs hold; one in ten is portable.
std::vector<std::string> made_up_calls() {
  std::mt19937 random(1);
  const auto pick = [&random](const auto& list) { return list[random() % std::size(list)]; };
  const char* const prefixes[] = {"JA", "JH", "7K", "W",  "K",  "N",  "DL", "UA", "R",  "F",
                                  "G",  "I",  "EA", "HL", "BY", "VK", "ZL", "PY", "9A", "SP"};
  const char* const endings[] = {"/P", "/4", "/KH6", "/MM"};
  std::vector<std::string> calls;
  for (int i = 0; i < 20000; ++i) {
    std::string call = pick(prefixes);
    call += static_cast<char>('0' + random() % 10);
    for (int n = 0; n < 3; ++n) call += static_cast<char>('A' + random() % 26);
    if (i % 10 == 0) call += pick(endings);
    calls.push_back(call);
  }
  return calls;
}

void look_up_call(benchmark::State& state) {
  CallTables tables;
  tables.load(TOBARINE_DATA);
  const std::vector<std::string> calls = made_up_calls();
  std::size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(tables.calls.find(calls[i]));
    i = i + 1 == calls.size() ? 0 : i + 1;
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(look_up_call);

}  // namespace
