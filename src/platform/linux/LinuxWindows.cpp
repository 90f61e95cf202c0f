#include "platform/linux/LinuxWindows.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <xcb/xcb_icccm.h>

namespace platform {

namespace {

struct Free
{
    void operator()(void *memory) const { std::free(memory); }
};

template <typename Reply>
std::unique_ptr<Reply, Free> owned(Reply *reply)
{
    return std::unique_ptr<Reply, Free>(reply);
}

xcb_atom_t internAtom(xcb_connection_t *x, std::string_view name)
{
    const auto reply = owned(xcb_intern_atom_reply(
        x, xcb_intern_atom(x, 0, static_cast<std::uint16_t>(name.size()), name.data()), nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

} // namespace

struct LinuxWindows::Connection
{
    Connection() : x(xcb_connect(nullptr, &screen))
    {
        if (!broken()) {
            ready = xcb_ewmh_init_atoms_replies(&ewmh, xcb_ewmh_init_atoms(x, &ewmh), nullptr) != 0;
            protocols = internAtom(x, "WM_PROTOCOLS");
            deleteWindow = internAtom(x, "WM_DELETE_WINDOW");
            wmState = internAtom(x, "WM_STATE");
        }
    }

    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    ~Connection()
    {
        if (ready) {
            xcb_ewmh_connection_wipe(&ewmh);
        }
        xcb_disconnect(x);
    }

    bool broken() const { return xcb_connection_has_error(x) != 0; }
    bool usable() const { return ready && !broken(); }

    /// Drops what the server sends to every client unasked, which would pile up for ever.
    void discardEvents() const
    {
        while (owned(xcb_poll_for_event(x))) {
        }
    }

    xcb_window_t root() const { return ewmh.screens[screen]->root; }
    bool managed();
    std::vector<WindowHandle> managedWindows();
    std::vector<xcb_window_t> children(xcb_window_t window) const;
    std::vector<WindowHandle> mappedWindows() const;
    xcb_window_t clientIn(xcb_window_t window) const;

    int screen = 0;
    xcb_connection_t *x;
    xcb_ewmh_connection_t ewmh{};
    bool ready = false;
    xcb_atom_t protocols = XCB_ATOM_NONE;
    xcb_atom_t deleteWindow = XCB_ATOM_NONE;
    xcb_atom_t wmState = XCB_ATOM_NONE;
};

/// A window manager announces itself by a window that names itself; a stale announcement does not.
bool LinuxWindows::Connection::managed()
{
    xcb_window_t announced = XCB_WINDOW_NONE;
    xcb_window_t itself = XCB_WINDOW_NONE;
    return xcb_ewmh_get_supporting_wm_check_reply(
               &ewmh, xcb_ewmh_get_supporting_wm_check(&ewmh, root()), &announced, nullptr) != 0 &&
           xcb_ewmh_get_supporting_wm_check_reply(
               &ewmh, xcb_ewmh_get_supporting_wm_check(&ewmh, announced), &itself, nullptr) != 0 &&
           announced == itself;
}

/// The lowest first; empty where the window manager keeps no list. One that keeps no list in
/// stacking order keeps one in the order of mapping at least.
std::vector<WindowHandle> LinuxWindows::Connection::managedWindows()
{
    xcb_ewmh_get_windows_reply_t clients;
    if (!managed() ||
        (xcb_ewmh_get_client_list_stacking_reply(
             &ewmh, xcb_ewmh_get_client_list_stacking(&ewmh, screen), &clients, nullptr) == 0 &&
         xcb_ewmh_get_client_list_reply(&ewmh, xcb_ewmh_get_client_list(&ewmh, screen), &clients,
                                        nullptr) == 0)) {
        return {};
    }
    std::vector<WindowHandle> result(clients.windows, clients.windows + clients.windows_len);
    xcb_ewmh_get_windows_reply_wipe(&clients);
    return result;
}

std::vector<xcb_window_t> LinuxWindows::Connection::children(xcb_window_t window) const
{
    const auto tree = owned(xcb_query_tree_reply(x, xcb_query_tree(x, window), nullptr));
    if (!tree) {
        return {};
    }
    const xcb_window_t *first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

/// The windows that are on the screen by the window tree, the lowest first: where a window manager
/// without lists frames them, those in the frames, else the root window's own children.
std::vector<WindowHandle> LinuxWindows::Connection::mappedWindows() const
{
    std::vector<WindowHandle> result;
    for (const xcb_window_t child : children(root())) {
        const auto attributes =
            owned(xcb_get_window_attributes_reply(x, xcb_get_window_attributes(x, child), nullptr));
        if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE) {
            continue;
        }
        const xcb_window_t client = clientIn(child);
        if (client != XCB_WINDOW_NONE) {
            result.push_back(client);
        } else if (attributes->override_redirect == 0) {
            result.push_back(child);
        }
    }
    return result;
}

/// The window, it or one within, that a window manager marks as a program's.
xcb_window_t LinuxWindows::Connection::clientIn(xcb_window_t window) const
{
    const auto state = owned(xcb_get_property_reply(
        x, xcb_get_property(x, 0, window, wmState, XCB_ATOM_ANY, 0, 0), nullptr));
    if (state && state->type != XCB_ATOM_NONE) {
        return window;
    }
    for (const xcb_window_t child : children(window)) {
        const xcb_window_t client = clientIn(child);
        if (client != XCB_WINDOW_NONE) {
            return client;
        }
    }
    return XCB_WINDOW_NONE;
}

LinuxWindows::LinuxWindows() = default;
LinuxWindows::~LinuxWindows() = default;

LinuxWindows::Connection *LinuxWindows::connection()
{
    if (m_connection == nullptr || m_connection->broken()) {
        m_connection = std::make_unique<Connection>();
    }
    return m_connection->usable() ? m_connection.get() : nullptr;
}

std::vector<WindowHandle> LinuxWindows::topLevel()
{
    Connection *const server = connection();
    if (server == nullptr) {
        return {};
    }
    server->discardEvents();
    std::vector<WindowHandle> windows = server->managedWindows();
    if (windows.empty()) {
        windows = server->mappedWindows();
    }
    // Both lists name the lowest window first.
    std::reverse(windows.begin(), windows.end());
    return windows;
}

QString LinuxWindows::caption(WindowHandle window, int maximumLength)
{
    Connection *const server = connection();
    if (server == nullptr) {
        return {};
    }
    xcb_ewmh_get_utf8_strings_reply_t name;
    if (xcb_ewmh_get_wm_name_reply(&server->ewmh, xcb_ewmh_get_wm_name(&server->ewmh, window),
                                   &name, nullptr) != 0) {
        const QString result = QString::fromUtf8(name.strings, name.strings_len);
        xcb_ewmh_get_utf8_strings_reply_wipe(&name);
        return result.left(maximumLength);
    }
    xcb_icccm_get_text_property_reply_t text;
    if (xcb_icccm_get_wm_name_reply(server->x, xcb_icccm_get_wm_name(server->x, window), &text,
                                    nullptr) != 0) {
        const QString result = QString::fromLatin1(text.name, text.name_len);
        xcb_icccm_get_text_property_reply_wipe(&text);
        return result.left(maximumLength);
    }
    return {};
}

ProcessId LinuxWindows::owner(WindowHandle window)
{
    Connection *const server = connection();
    std::uint32_t id = 0;
    if (server == nullptr ||
        xcb_ewmh_get_wm_pid_reply(&server->ewmh, xcb_ewmh_get_wm_pid(&server->ewmh, window), &id,
                                  nullptr) == 0) {
        return 0;
    }
    return static_cast<ProcessId>(id);
}

void LinuxWindows::postClose(WindowHandle window)
{
    Connection *const server = connection();
    if (server == nullptr) {
        return;
    }
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = server->protocols;
    event.data.data32[0] = server->deleteWindow;
    event.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(server->x, 0, window, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char *>(&event));
    xcb_flush(server->x);
}

} // namespace platform
