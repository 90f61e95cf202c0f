#pragma once

#include "platform/Failure.h"
#include "platform/Machine.h"
#include "support/TurnedClock.h"

#include <QStringList>

#include <algorithm>
#include <deque>
#include <limits>
#include <map>
#include <set>
#include <stdexcept>
#include <utility>

/// The real file operations, of which a test can let the n-th one fail, or all from the n-th on.
/// Creating a file counts as two: before it is there, and with half of its content.
class FailingFiles final : public platform::Files
{
public:
    static constexpr int Always = -1;

    void remove(const QString &path) override
    {
        run([&] { m_files.remove(path); });
    }
    void create(const QString &path, const QByteArray &content,
                const platform::Permissions &permissions) override
    {
        run([] {}); // nothing of the file is there yet
        if (full > 0) {
            --full;
            throw diskFull();
        }
        run([&] { m_files.create(path, content, permissions); },
            // A disk that fills up leaves half of the file.
            [&] { m_files.create(path, content.first(content.size() / 2), permissions); });
    }
    void replaceEnd(const QString &path, qint64 position, const QByteArray &old,
                    const QByteArray &content) override
    {
        run([&] { m_files.replaceEnd(path, position, old, content); });
    }
    void flush(const QString &path) override
    {
        run([&] { m_files.flush(path); });
    }
    void rename(const QString &old, const QString &name) override
    {
        run([&] { m_files.rename(old, name); });
    }
    void flushFolder(const QString &path) override
    {
        run([&] { m_files.flushFolder(path); });
    }

    qint64 freeSpace(const QString & /*folder*/) override { return space; }

    /// Number of the operation that fails, from 1; 0 is none. All from the n-th on fail at -n.
    int failAt = 0;
    qint64 space = std::numeric_limits<qint32>::max();
    int full = 0; ///< so many more files find the disk full when they are created
    int operations = 0;

    static platform::Failure diskFull()
    {
        // The number is the system's own.
        return {platform::isDiskFull({112, {}}) ? 112 : 28,
                QStringLiteral("No space left on device")};
    }

private:
    void run(
        const std::function<void()> &operation, const std::function<void()> &half = [] {})
    {
        ++operations;
        if (failAt == operations || (failAt < 0 && operations >= -failAt)) {
            half();
            throw diskFull();
        }
        operation();
    }

    platform::Files &m_files = platform::nativeMachine().files;
};

/// Notes every box as "title|style|text" and answers with the buttons that the test has laid ready,
/// else with Cancel or OK.
class FakeMessageBoxes final : public platform::MessageBoxes
{
public:
    int show(const QString &text, const QString &title, int style) override
    {
        boxes.append(QStringList{title, QString::number(style & 0xffff), text}.join(u'|'));
        alone = style & ~0xffff;
        whileOpen();
        const bool asks = (style & platform::RetryCancel) != 0;
        return !answers.isEmpty() ? answers.takeFirst()
                                  : (asks ? platform::CancelButton : platform::OkButton);
    }

    QStringList boxes;
    int alone = 0; ///< what the last one does by itself
    QList<int> answers;
    std::function<void()> whileOpen = [] {};
};

struct FakeProcessEnd final : platform::ProcessEnd
{
    void end() override { ++ends; }
    void onRequest(std::function<void()> /*quit*/) override {}

    int ends = 0;
};

/// Notes every call as "event|key=value|..." without the time.
struct FakeHooks final : platform::Hooks
{
    void run(const QString & /*directory*/, const QStringList &arguments, Done done) override
    {
        events.append((QStringList(arguments.first()) + arguments.mid(2)).join(u'|'));
        lastDone = std::move(done);
    }

    QStringList events;
    Done lastDone;
};

struct FakeAutostart final : platform::Autostart
{
    std::uint32_t query() override { return queryFails != 0 ? queryFails : (entry ? 0 : NotFound); }
    std::uint32_t write(const QString &program) override { return change(program); }
    std::uint32_t remove() override { return entry ? change({}) : std::max(changeFails, NotFound); }
    QString place() override { return entry.value_or(QStringLiteral("Nowhere yet.")); }
    std::uint32_t change(const std::optional<QString> &to)
    {
        entry = changeFails == 0 ? to : entry;
        return changeFails;
    }

    std::optional<QString> entry;
    std::uint32_t queryFails = 0;
    std::uint32_t changeFails = 0;
};

/// Processes and their windows, as one small world in which a test arranges what happens.
class FakeSystem final : public platform::Processes, public platform::Windows
{
public:
    using Id = platform::ProcessId;
    using Handle = platform::ProcessHandle;
    using Window = platform::WindowHandle;

    struct Process
    {
        QString path = {};
        bool ended = false;
        bool askedToClose = false;
        bool closesOnRequest = true;
        bool opens = true;
        bool terminates = true;
        bool gone = false;
        std::uint32_t exitCode = 0;
    };

    struct OpenWindow
    {
        Window handle = 0;
        QString caption;
        Id owner = 0;
    };

    /// A server of that path with its window, topmost.
    Id addServer(const QString &path, const QString &caption = QStringLiteral("Ghost Recon"))
    {
        processes[++m_lastId].path = path;
        addWindow(caption, m_lastId);
        return m_lastId;
    }
    Window addWindow(const QString &caption, Id owner)
    {
        windows.push_front({++m_lastWindow, caption, owner});
        return m_lastWindow;
    }
    void end(Id id)
    {
        processes.at(id).ended = true;
        std::erase_if(windows, [id](const OpenWindow &window) { return window.owner == id; });
    }

    Id start(const QString &commandLine) override
    {
        commandLines.append(commandLine);
        if (startFails) {
            throw platform::Failure(2, QStringLiteral("No such file or directory"));
        }
        return addServer(commandLine.section(u'"', 1, 1));
    }
    Handle open(Id id) override
    {
        const auto found = processes.find(id);
        return found != processes.end() && found->second.opens ? *handles.insert(-id) : 0;
    }
    void close(Handle handle) override { wrongCloses += handles.extract(handle).empty() ? 1 : 0; }
    std::optional<std::uint32_t> exitCode(Handle handle) override
    {
        const Process process = behind(handle);
        return process.gone
                   ? std::nullopt
                   : std::optional(process.ended ? process.exitCode : platform::StillActiveCode);
    }
    bool wait(Handle handle, int milliseconds) override
    {
        waits.push_back(milliseconds);
        const Process process = behind(handle);
        return process.ended || endIf(process.askedToClose && process.closesOnRequest, handle);
    }
    bool terminate(Handle handle) override { return endIf(behind(handle).terminates, handle); }
    std::optional<QString> executablePath(Handle handle) override
    {
        const Process process = behind(handle);
        return process.gone ? std::nullopt : std::optional(process.path);
    }
    std::vector<Id> running() override
    {
        std::vector<Id> result;
        for (const auto &[id, process] : processes) {
            if (!process.ended) {
                result.push_back(id);
            }
        }
        return result;
    }
    std::optional<QString> program(Id id) override
    {
        const auto found = processes.find(id);
        const bool runs = found != processes.end() && !found->second.ended;
        return runs ? std::optional(found->second.path) : std::nullopt;
    }
    std::optional<std::vector<platform::ProcessEntry>> snapshot() override { return std::nullopt; }
    std::int32_t systemVersion() override { return 0; }

    std::vector<Window> topLevel() override
    {
        if (listingFails) {
            throw std::runtime_error("the window list is not to be had");
        }
        std::vector<Window> result;
        for (const OpenWindow &window : vanishing ? std::exchange(windows, {}) : windows) {
            result.push_back(window.handle);
        }
        return result;
    }
    QString caption(Window window, int length) override { return at(window).caption.left(length); }
    Id owner(Window window) override { return at(window).owner; }
    void postClose(Window window) override
    {
        closeRequests.push_back(window);
        processes[owner(window)].askedToClose = true;
    }

    std::map<Id, Process> processes;
    std::deque<OpenWindow> windows; ///< in stacking order, the topmost first
    std::multiset<Handle> handles;  ///< the open ones, each the negative of its process's id
    QStringList commandLines;
    std::vector<int> waits;
    std::vector<Window> closeRequests;
    int wrongCloses = 0;
    bool startFails = false;
    bool listingFails = false;
    bool vanishing = false; ///< windows vanish between the listing and the next question

private:
    Process behind(Handle handle) const
    {
        return handles.contains(handle) ? processes.at(static_cast<Id>(-handle))
                                        : Process{.terminates = false, .gone = true};
    }
    bool endIf(bool condition, Handle handle)
    {
        if (condition) {
            end(static_cast<Id>(-handle));
        }
        return condition;
    }
    OpenWindow at(Window handle) const
    {
        const auto found = std::ranges::find(windows, handle, &OpenWindow::handle);
        return found == windows.end() ? OpenWindow() : *found;
    }

    Id m_lastId = 1000;
    Window m_lastWindow = 0;
};

/// A machine in which only the file system is real.
struct FakeMachine
{
    FakeAutostart autostart;
    TurnedClock clock;
    FailingFiles files;
    FakeHooks hooks;
    FakeMessageBoxes boxes;
    FakeProcessEnd processEnd;
    FakeSystem system;
    platform::Machine machine{autostart, clock, files, hooks, boxes, processEnd, system, system};
};
