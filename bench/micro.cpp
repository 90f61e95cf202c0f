#include "core/basMain.h"
#include "core/clsErrors.h"
#include "core/clsZebek.h"
#include "figures.h"
#include "fullReply.h"
#include "platform/Machine.h"
#include "server/ServerStatusReply.h"

#include <QDir>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

void parseReply(benchmark::State &state)
{
    state.SetLabel("goal: under 5 us");
    const QByteArray datagram = fullReply();
    require(ServerStatusReply::parse(datagram).matchLength == 600, "the reply was not read");
    for ([[maybe_unused]] auto step : state) {
        benchmark::DoNotOptimize(ServerStatusReply::parse(datagram));
    }
}
BENCHMARK(parseReply)->Name("Parse a status reply of 16 players")->Unit(benchmark::kMicrosecond);

/// Half of the measured records come before the thousandth, half after it.
constexpr int Measured = 100;
constexpr int Before = 1000 - Measured / 2;

void recordError(benchmark::State &state)
{
    const QTemporaryDir directory;
    clsZebek root(platform::nativeMachine(), directory.path());
    gRoot = &root;
    // A root object that was not started takes the current directory for the game's.
    QDir::setCurrent(directory.path());
    clsErrors errors;
    const auto record = [&errors] {
        errors.RecordError(QStringLiteral("Process Class"), QStringLiteral("Create"),
                           QStringLiteral("Unknown"), 2,
                           QStringLiteral("GhostRecon.exe: No such file or directory"));
    };
    for (int count = 0; count < Before; ++count) {
        record();
    }
    for ([[maybe_unused]] auto step : state) {
        record();
    }
    // Recording never fails, so look whether it did its work.
    require(contentOf(QStringLiteral("ZEBEK_Error.xml")).count("<Error ") == Before + Measured,
            "a record is missing");
    QDir::setCurrent(QDir::tempPath());
}
BENCHMARK(recordError)
    ->Name("Record an error in a log of 1,000")
    ->Unit(benchmark::kMicrosecond)
    ->Iterations(Measured);

} // namespace

BENCHMARK_MAIN();
