// Loading and saving a bank of 128 instruments.

#include <benchmark/benchmark.h>

#include <string>

#include "instrument/checked_load.h"
#include "instrument/settings.h"

namespace tarquil {

namespace {

void bank_save(benchmark::State& state) {
    TarqSettings bank;
    bank.load_default();
    std::string text;
    for (auto _ : state) {
        bank.text_save_to_string(text);
        benchmark::DoNotOptimize(text.data());
    }
    state.SetLabel(std::to_string(text.size()) + " bytes");
}
BENCHMARK(bank_save)->Unit(benchmark::kMillisecond);

void bank_load(benchmark::State& state) {
    TarqSettings bank;
    bank.load_default();
    std::string text;
    bank.text_save_to_string(text);
    int code = 0;
    for (auto _ : state)
        code |= load_bank_checked_from_string(bank, text);
    if (code != 0)
        state.SkipWithError("the bank does not load");
}
BENCHMARK(bank_load)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace tarquil
