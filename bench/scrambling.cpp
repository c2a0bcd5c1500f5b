// Scrambling of a whole record against writing and reading it as hexadecimal text.
#include "bench/figures.h"
#include "wire/comrecord.h"
#include "wire/scramble.h"

#include <QByteArray>

#include <benchmark/benchmark.h>

namespace tollwick::bench {

// Keeps the time of each repetition instead of printing it.
struct Keeper : benchmark::BenchmarkReporter {
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration)
                times[run.run_name.function_name].push_back(run.GetAdjustedRealTime());
    }
    std::map<std::string, std::vector<double>> times;
};

static const Measurement scrambling("scramble", [] {
    const std::string_view key = "0123456789abcdefghijklmnopqrstuv";
    std::string plain(kComrecordSize, '\0');
    for (std::size_t i = 0; i < plain.size(); ++i)
        plain[i] = static_cast<char>(i * 7 + i / 256);
    const std::string text = scramble(key, plain, 1);
    const QByteArray array = QByteArray::fromStdString(plain);
    const QByteArray hex = array.toHex();
    require(unscramble(key, text) == plain, "the bytes do not come back");
    const auto add = [](const char* name, auto work) {
        const auto repeat = [work](benchmark::State& state) {
            for (auto _ : state)
                benchmark::DoNotOptimize(work());
        };
        benchmark::RegisterBenchmark(name, repeat)->Repetitions(15)->Unit(benchmark::kMicrosecond);
    };
    add("scramble", [&] { return scramble(key, plain, 77); });
    add("toHex", [&] { return array.toHex(); });
    add("unscramble", [&] { return unscramble(key, text); });
    add("fromHex", [&] { return QByteArray::fromHex(hex); });

    // Interleaved, so that all of them meet the same machine.
    std::string options[] = {"--benchmark_enable_random_interleaving=true",
                             "--benchmark_min_time=0.05"};
    char* arguments[] = {options[0].data(), options[0].data(), options[1].data(), nullptr};
    int count = 3;
    benchmark::Initialize(&count, arguments);
    Keeper kept;
    benchmark::RunSpecifiedBenchmarks(&kept);
    print("Scramble 4,106 bytes", "us", {kept.times["scramble"], kept.times["toHex"]}, 1);
    print("Unscramble 4,106 bytes", "us", {kept.times["unscramble"], kept.times["fromHex"]}, 1);
});

} // namespace tollwick::bench
