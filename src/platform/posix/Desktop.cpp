#include "platform/Desktop.h"

#include "platform/Text.h"

#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <string_view>
#include <vector>
#include <xcb/xcb.h>

namespace zv {

namespace {

constexpr std::uint32_t kLongestTitle = 4096; ///< In units of four bytes.
constexpr std::uint32_t kMostWindows = 65536;

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <class T> using Reply = std::unique_ptr<T, Free>;

/// A connection to the X server, for one activation.
class Desktop {
public:
    Desktop() : m_connection(xcb_connect(nullptr, nullptr)) {}
    ~Desktop() { xcb_disconnect(m_connection); }
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    bool activate(const std::string& utf8Title)
    {
        if (xcb_connection_has_error(m_connection) != 0)
            return false;
        m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        m_netName = atom("_NET_WM_NAME");
        m_utf8 = atom("UTF8_STRING");
        const std::vector<xcb_window_t> managed = managedWindows();
        const bool hasManager = !managed.empty();
        const xcb_window_t window = find(hasManager ? managed : topLevelWindows(), utf8Title);
        if (window == XCB_NONE)
            return false;
        if (hasManager)
            askManager(window);
        raise(window, !hasManager);
        // The answer to a last question tells that the server has taken what came before.
        atom("UTF8_STRING");
        return true;
    }

private:
    xcb_atom_t atom(std::string_view name)
    {
        const auto cookie =
            xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
        const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection, cookie, nullptr));
        return reply ? reply->atom : XCB_NONE;
    }

    std::vector<xcb_window_t> managedWindows()
    {
        const auto cookie = xcb_get_property(m_connection, 0, m_root, atom("_NET_CLIENT_LIST"),
                                             XCB_ATOM_WINDOW, 0, kMostWindows);
        const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection, cookie, nullptr));
        if (!reply || reply->format != 32)
            return {};
        const auto* const first = static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
        return {first, first + xcb_get_property_value_length(reply.get()) / 4};
    }

    std::vector<xcb_window_t> topLevelWindows()
    {
        const Reply<xcb_query_tree_reply_t> reply(
            xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, m_root), nullptr));
        if (!reply)
            return {};
        const xcb_window_t* const first = xcb_query_tree_children(reply.get());
        return {first, first + xcb_query_tree_children_length(reply.get())};
    }

    /// All titles are asked for before the first answer is read.
    xcb_window_t find(const std::vector<xcb_window_t>& windows, const std::string& title)
    {
        std::vector<std::pair<xcb_get_property_cookie_t, xcb_get_property_cookie_t>> asked;
        asked.reserve(windows.size());
        for (const xcb_window_t window : windows)
            asked.emplace_back(
                xcb_get_property(m_connection, 0, window, m_netName, m_utf8, 0, kLongestTitle),
                xcb_get_property(m_connection, 0, window, XCB_ATOM_WM_NAME, XCB_ATOM_ANY, 0, kLongestTitle));
        xcb_window_t found = XCB_NONE;
        for (std::size_t index = 0; index < windows.size(); ++index) {
            const std::string modern = text(asked[index].first);
            const std::string old = text(asked[index].second);
            if (found == XCB_NONE && (modern == title || (modern.empty() && old == title)))
                found = windows[index];
        }
        return found;
    }

    std::string text(xcb_get_property_cookie_t cookie)
    {
        const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection, cookie, nullptr));
        if (!reply || reply->format != 8)
            return {};
        return {static_cast<const char*>(xcb_get_property_value(reply.get())),
                static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
    }

    void askManager(xcb_window_t window)
    {
        constexpr std::uint32_t kByUser = 2;
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = atom("_NET_ACTIVE_WINDOW");
        event.data.data32[0] = kByUser;
        event.data.data32[1] = XCB_CURRENT_TIME;
        xcb_send_event(m_connection, 0, m_root,
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char*>(&event));
    }

    void raise(xcb_window_t window, bool focus)
    {
        const std::uint32_t above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(m_connection, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
        if (focus)
            xcb_set_input_focus(m_connection, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    }

    xcb_connection_t* m_connection;
    xcb_window_t m_root = XCB_NONE;
    xcb_atom_t m_netName = XCB_NONE;
    xcb_atom_t m_utf8 = XCB_NONE;
};

} // namespace

bool activateWindowByTitle(const std::string& title)
{
    const char* const display = std::getenv("DISPLAY");
    if (display == nullptr || *display == '\0' || title.empty())
        return false;
    return Desktop().activate(toUtf8(wide(title)));
}

} // namespace zv
