#include "WindowPing.h"

#include "figures.h"
#include "platform/linux/LinuxWindows.h"

#include <chrono>
#include <cstring>
#include <memory>
#include <xcb/xcb.h>

namespace {

template <typename Reply>
using Freed = std::unique_ptr<Reply, decltype(&std::free)>;

xcb_atom_t atom(xcb_connection_t *connection, const char *name)
{
    const Freed<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(
            connection,
            xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
            nullptr),
        &std::free);
    require(reply != nullptr, "the display does not answer");
    return reply->atom;
}

quint64 windowOf(const QString &caption)
{
    platform::LinuxWindows windows;
    for (const platform::WindowHandle window : windows.topLevel()) {
        if (windows.caption(window, 100) == caption) {
            return window;
        }
    }
    throw std::runtime_error("the window is not there");
}

} // namespace

WindowPing::WindowPing(const QString &caption)
    : m_window(windowOf(caption)), m_watcher([this] { watch(); })
{
}

WindowPing::~WindowPing()
{
    m_ends = true;
    m_watcher.join();
}

double WindowPing::longestMilliseconds() const
{
    require(m_longest > 0, "the window did not answer");
    return m_longest;
}

void WindowPing::watch()
{
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> display(
        xcb_connect(nullptr, nullptr), &xcb_disconnect);
    xcb_connection_t *const connection = display.get();
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection, root, XCB_CW_EVENT_MASK, &events);

    xcb_client_message_event_t ping{};
    ping.response_type = XCB_CLIENT_MESSAGE;
    ping.format = 32;
    ping.window = static_cast<xcb_window_t>(m_window);
    ping.type = atom(connection, "WM_PROTOCOLS");
    ping.data.data32[0] = atom(connection, "_NET_WM_PING");
    ping.data.data32[2] = ping.window;
    while (!m_ends) {
        QElapsedTimer timer;
        timer.start();
        ++ping.data.data32[1];
        xcb_send_event(connection, 0, ping.window, 0, reinterpret_cast<const char *>(&ping));
        xcb_flush(connection);
        // The window sends the message on to the root window.
        for (bool answered = false; !answered && !m_ends;) {
            const Freed<xcb_generic_event_t> event(xcb_poll_for_event(connection), &std::free);
            const auto *const message =
                reinterpret_cast<const xcb_client_message_event_t *>(event.get());
            answered = event != nullptr && (event->response_type & 0x7F) == XCB_CLIENT_MESSAGE &&
                       message->data.data32[1] == ping.data.data32[1];
            m_longest = std::max<double>(m_longest, answered ? milliseconds(timer) : 0);
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}
