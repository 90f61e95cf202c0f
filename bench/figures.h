#pragma once

#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

/// One row of the table of figures. The goal is the first value that is too much; 0 is no goal.
inline void printFigure(const std::string &what, double value, const char *unit, double goal = 0)
{
    std::printf("%-52s %9.2f %-3s", what.c_str(), value, unit);
    if (goal > 0) {
        std::printf("  goal: under %g%s", goal, value < goal ? "" : "  MISSED");
    }
    std::printf("\n");
    std::cout.flush(); // the next row may be a minute away
}

inline double elapsedMilliseconds(const QElapsedTimer &timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

inline double medianOf(std::vector<double> figures)
{
    std::sort(figures.begin(), figures.end());
    const std::size_t half = figures.size() / 2;
    return (figures[(figures.size() - 1) / 2] + figures[half]) / 2;
}

inline void require(bool condition, const char *complaint)
{
    if (!condition) {
        throw std::runtime_error(complaint);
    }
}

/// Runs a program's work and returns its exit code.
template <typename Work>
int reportingFailure(Work work)
{
    try {
        return work() ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception &exception) {
        std::cerr << exception.what() << '\n';
        return EXIT_FAILURE;
    }
}

inline QByteArray contentOf(const QString &path)
{
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "a file cannot be read");
    return file.readAll();
}

/// The number behind a name in a file of lines "name: number".
inline double numberIn(const QString &path, const QByteArray &name)
{
    const QByteArray content = '\n' + contentOf(path);
    const qsizetype start = content.indexOf('\n' + name + ':');
    require(start >= 0, "the system does not tell a figure");
    return content.sliced(start + name.size() + 2).simplified().split(' ').front().toDouble();
}

inline double memoryKiB(const QString &process, const char *kind)
{
    return numberIn(QStringLiteral("/proc/%1/smaps_rollup").arg(process), kind);
}

/// The memory that a process ("self" or an id) itself has written and shares with none.
inline double writtenKiB(const QString &process)
{
    return memoryKiB(process, "Private_Dirty");
}

/// That and what it merely has read and shares with none at present, such as code of libraries:
/// less when other programs use the same libraries (the simulated server uses Qt too), and more
/// when they end.
inline double privateKiB(const QString &process)
{
    return writtenKiB(process) + memoryKiB(process, "Private_Clean");
}

/// All that it has in memory, shared or not: as much as it takes at most, whatever else runs.
inline double residentKiB(const QString &process)
{
    return memoryKiB(process, "Rss");
}
