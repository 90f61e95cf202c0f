#pragma once

#include "platform/Failure.h"
#include "platform/Machine.h"
#include "platform/linux/LinuxFiles.h"
#include "support/TurnedClock.h"

#include <QStringList>

#include <deque>
#include <map>
#include <stdexcept>

/// The real file operations, of which a test can let the n-th one fail, or all of them.
class FailingFiles final : public platform::Files
{
public:
    static constexpr int Always = -1;

    void remove(const QString &path) override
    {
        run([&] { m_files.remove(path); });
    }
    void create(const QString &path, const QByteArray &content, const QString &like) override
    {
        run([&] { m_files.create(path, content, like); },
            // A disk that fills up leaves half of the file.
            [&] { m_files.create(path, content.first(content.size() / 2), like); });
    }
    void flush(const QString &path) override
    {
        run([&] { m_files.flush(path); });
    }
    void rename(const QString &from, const QString &to) override
    {
        run([&] { m_files.rename(from, to); });
    }
    void flushFolder(const QString &path) override
    {
        run([&] { m_files.flushFolder(path); });
    }

    int failAt = 0; ///< number of the operation that fails, from 1; 0 is none
    int operations = 0;

private:
    template <typename Operation>
    void run(Operation operation)
    {
        run(operation, [] {});
    }
    template <typename Operation, typename Half>
    void run(Operation operation, Half half)
    {
        ++operations;
        if (failAt == Always || failAt == operations) {
            half();
            throw platform::Failure(28, QStringLiteral("No space left on device"));
        }
        operation();
    }

    platform::LinuxFiles m_files;
};

/// Notes every box and answers with the buttons that the test has laid ready, else with Cancel or
/// OK.
class FakeMessageBoxes final : public platform::MessageBoxes
{
public:
    struct Box
    {
        QString text;
        QString title;
        int style;
    };

    int show(const QString &text, const QString &title, int style) override
    {
        boxes.push_back({text, title, style});
        if (whileOpen) {
            whileOpen();
        }
        if (answers.empty()) {
            return (style & platform::RetryCancel) != 0 ? platform::CancelButton
                                                        : platform::OkButton;
        }
        const int answer = answers.front();
        answers.pop_front();
        return answer;
    }

    std::vector<Box> boxes;
    std::deque<int> answers;
    std::function<void()> whileOpen;
};

class FakeProcessEnd final : public platform::ProcessEnd
{
public:
    void end() override { ++ends; }
    void onRequest(std::function<void()> quit) override { request = std::move(quit); }

    int ends = 0;
    std::function<void()> request;
};

class FakeAutostart final : public platform::Autostart
{
public:
    std::uint32_t query() override { return queryFails != 0 ? queryFails : (entry ? 0 : 2); }
    std::uint32_t write(const QString &program) override
    {
        if (changeFails == 0) {
            entry = program;
        }
        return changeFails;
    }
    std::uint32_t remove() override
    {
        if (changeFails != 0 || !entry) {
            return changeFails != 0 ? changeFails : 2;
        }
        entry.reset();
        return 0;
    }

    std::optional<QString> entry;
    std::uint32_t queryFails = 0;
    std::uint32_t changeFails = 0;
};

/// Processes and their windows, as one small world in which a test arranges what happens.
class FakeSystem final : public platform::Processes, public platform::Windows
{
public:
    struct Process
    {
        QString path;
        bool ended = false;
        bool closesOnRequest = true;
        bool opens = true;
        bool terminates = true;
        std::uint32_t exitCode = 0;
    };
    struct Window
    {
        platform::WindowHandle handle;
        QString caption;
        platform::ProcessId owner;
        int closeRequests = 0;
    };

    platform::ProcessId addProcess(const Process &process)
    {
        processes[++m_lastId] = process;
        return m_lastId;
    }
    /// A server of that path with its window, topmost.
    platform::ProcessId addServer(const QString &path)
    {
        const platform::ProcessId id = addProcess({path});
        addWindow(QStringLiteral("Ghost Recon"), id);
        return id;
    }
    platform::WindowHandle addWindow(const QString &caption, platform::ProcessId owner)
    {
        windows.push_front({++m_lastWindow, caption, owner});
        return m_lastWindow;
    }
    void end(platform::ProcessId id)
    {
        processes.at(id).ended = true;
        std::erase_if(windows, [id](const Window &window) { return window.owner == id; });
    }
    int closeRequests(platform::ProcessId id) const
    {
        int sum = 0;
        for (const Window &window : windows) {
            sum += window.owner == id ? window.closeRequests : 0;
        }
        return sum;
    }

    platform::ProcessId start(const QString &commandLine) override
    {
        commandLines.append(commandLine);
        if (startFails) {
            throw platform::Failure(2, QStringLiteral("No such file or directory"));
        }
        return addServer(commandLine.section(QLatin1Char('"'), 1, 1));
    }
    platform::ProcessHandle open(platform::ProcessId id) override
    {
        const auto found = processes.find(id);
        if (found == processes.end() || !found->second.opens) {
            return platform::NoProcess;
        }
        handles[++m_lastHandle] = id;
        return m_lastHandle;
    }
    void close(platform::ProcessHandle handle) override
    {
        if (handles.erase(handle) != 1) {
            ++wrongCloses;
        }
    }
    std::optional<std::uint32_t> exitCode(platform::ProcessHandle handle) override
    {
        const Process *const process = behind(handle);
        if (process == nullptr) {
            return std::nullopt;
        }
        return process->ended ? process->exitCode : platform::StillActiveCode;
    }
    bool wait(platform::ProcessHandle handle, int milliseconds) override
    {
        waits.push_back(milliseconds);
        const auto found = handles.find(handle);
        if (found == handles.end()) {
            return false;
        }
        const platform::ProcessId id = found->second;
        if (processes.at(id).closesOnRequest && closeRequests(id) > 0) {
            end(id);
        }
        if (!processes.at(id).ended) {
            blockedMilliseconds += milliseconds;
        }
        return processes.at(id).ended;
    }
    bool terminate(platform::ProcessHandle handle) override
    {
        ++terminations;
        const auto found = handles.find(handle);
        if (found == handles.end() || !processes.at(found->second).terminates) {
            return false;
        }
        end(found->second);
        return true;
    }
    std::optional<QString> executablePath(platform::ProcessHandle handle) override
    {
        const Process *const process = behind(handle);
        return process == nullptr ? std::nullopt : std::optional(process->path);
    }
    std::optional<std::vector<platform::ProcessEntry>> snapshot() override
    {
        if (!snapshotWorks) {
            return std::nullopt;
        }
        std::vector<platform::ProcessEntry> entries;
        for (const auto &[id, process] : processes) {
            entries.push_back({id, process.path});
        }
        return entries;
    }
    std::int32_t systemVersion() override { return version; }

    std::vector<platform::WindowHandle> topLevel() override
    {
        if (listingFails) {
            throw std::runtime_error("the window list is not to be had");
        }
        std::vector<platform::WindowHandle> handlesInOrder;
        for (const Window &window : windows) {
            handlesInOrder.push_back(window.handle);
        }
        if (vanishing) {
            windows.clear();
        }
        return handlesInOrder;
    }
    QString caption(platform::WindowHandle handle, int maximumLength) override
    {
        const Window *const window = find(handle);
        return window == nullptr ? QString() : window->caption.left(maximumLength);
    }
    platform::ProcessId owner(platform::WindowHandle handle) override
    {
        const Window *const window = find(handle);
        return window == nullptr ? 0 : window->owner;
    }
    void postClose(platform::WindowHandle handle) override
    {
        if (Window *const window = find(handle)) {
            ++window->closeRequests;
        }
    }

    std::map<platform::ProcessId, Process> processes;
    std::deque<Window> windows; ///< in stacking order, the topmost first
    std::map<platform::ProcessHandle, platform::ProcessId> handles;
    QStringList commandLines;
    std::vector<int> waits;
    qint64 blockedMilliseconds = 0;
    int terminations = 0;
    int wrongCloses = 0;
    bool startFails = false;
    bool listingFails = false;
    bool vanishing = false; ///< windows vanish between the listing and the next question
    bool snapshotWorks = true;
    std::int32_t version = 0;

private:
    Process *behind(platform::ProcessHandle handle)
    {
        const auto found = handles.find(handle);
        return found == handles.end() ? nullptr : &processes.at(found->second);
    }
    Window *find(platform::WindowHandle handle)
    {
        for (Window &window : windows) {
            if (window.handle == handle) {
                return &window;
            }
        }
        return nullptr;
    }

    platform::ProcessId m_lastId = 1000;
    platform::WindowHandle m_lastWindow = 0;
    platform::ProcessHandle m_lastHandle = 0;
};

/// A machine in which only the file system is real.
struct FakeMachine
{
    FakeAutostart autostart;
    TurnedClock clock;
    FailingFiles files;
    FakeMessageBoxes boxes;
    FakeProcessEnd processEnd;
    FakeSystem system;
    platform::Machine machine{autostart, clock, files, boxes, processEnd, system, system};
};
