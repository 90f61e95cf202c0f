#include "app/Program.h"
#include "core/basMain.h"
#include "core/clsErrors.h"
#include "figures.h"
#include "fullReply.h"
#include "platform/Machine.h"
#include "server/ServerStatusReply.h"

#include <QDir>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

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

constexpr int Measured = 100;
constexpr int Many = 500000; ///< records, some 80 MB
const QString LogName = u"ZEBEK_Error.xml"_s;

void record(clsErrors &errors)
{
    errors.RecordError(u"Process Class"_s, u"Create"_s, u"Unknown"_s, 2,
                       u"GhostRecon.exe: No such file or directory"_s);
}

/// A directory with a log of so many records, and a root object for the log's class.
class LogDirectory
{
public:
    explicit LogDirectory(qsizetype records)
    {
        gRoot = &m_root;
        // A root object that was not started takes the current directory for the game's.
        QDir::setCurrent(m_directory.path());
        clsErrors errors;
        record(errors);
        const QByteArray log = contentOf(LogName);
        const qsizetype begin = log.indexOf("<Error ");
        const qsizetype end = log.indexOf("</Errors>");
        QFile file(LogName);
        require(file.open(QIODevice::WriteOnly) &&
                    file.write(log.first(begin) + log.sliced(begin, end - begin).repeated(records) +
                               log.sliced(end)) > 0,
                "the log cannot be written");
    }
    LogDirectory(const LogDirectory &) = delete;
    LogDirectory &operator=(const LogDirectory &) = delete;
    ~LogDirectory() { QDir::setCurrent(QDir::tempPath()); }

private:
    QTemporaryDir m_directory;
    Program m_root{platform::nativeMachine(), m_directory.path()};
};

void recordError(benchmark::State &state)
{
    state.SetLabel("goal: the same for any number");
    const LogDirectory directory(state.range());
    clsErrors errors;
    for ([[maybe_unused]] auto step : state) {
        record(errors);
    }
    // Recording never fails, so look whether it did its work.
    require(contentOf(LogName).count("<Error ") == state.range() + Measured, "a record is missing");
}
BENCHMARK(recordError)
    ->Name("Record an error in a log of")
    ->Unit(benchmark::kMicrosecond)
    ->Arg(1)
    ->Arg(1000)
    ->Arg(Many)
    ->Iterations(Measured);

void continueLog(benchmark::State &state)
{
    state.SetLabel("goal: under 1 s");
    const LogDirectory directory(state.range());
    for ([[maybe_unused]] auto step : state) {
        const clsErrors errors;
    }
}
BENCHMARK(continueLog)->Name("Look through a log of")->Unit(benchmark::kMillisecond)->Arg(Many);

} // namespace

BENCHMARK_MAIN();
