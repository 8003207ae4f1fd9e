// The code page codec.
#include <benchmark/benchmark.h>
#include <string>

#include "text/cp932.h"

namespace {

using namespace tobarine;

const std::string kText =
    "JA1ABC,24/05/01,21:05J,59,59,7.025,CW,1001,PM95,J**,山田太郎,神奈川県横浜市鶴見区,移動運用";

void decode(benchmark::State& state) {
  const std::string bytes = to_cp932(kText);
  std::string text;
  for (auto _ : state) {
    text.clear();
    benchmark::DoNotOptimize(decode_cp932(bytes, text));
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes.size()));
}
BENCHMARK(decode);

void encode(benchmark::State& state) {
  std::string bytes;
  for (auto _ : state) {
    bytes.clear();
    benchmark::DoNotOptimize(encode_cp932(kText, bytes));
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * kText.size()));
}
BENCHMARK(encode);

}  // namespace
