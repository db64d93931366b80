#include "platform/x11/WindowManager.h"

#include "platform/x11/Properties.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace klova::x11 {

bool WindowManager::watch(bool closely) {
    const bool unheard = closely && !listening_;
    if (unheard || !facts_) {
        listen(true); // before the question: nothing is missed in between
        facts_ = read();
    }
    const auto manager = facts_->checkWindow;
    listen(closely || manager == XCB_NONE);
    return std::exchange(seen_, manager) != manager;
}

void WindowManager::listen(bool wanted) {
    if (wanted != std::exchange(listening_, wanted))
        connection_.selectRootEvents(XCB_EVENT_MASK_PROPERTY_CHANGE, wanted);
}

void WindowManager::handle(const xcb_generic_event_t& event) {
    const auto type = event.response_type & 0x7F;
    const auto& atoms = connection_.atoms();
    if (type == XCB_PROPERTY_NOTIFY) {
        const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        // One that begins confirms itself on its own window, which nobody watches yet, and has more
        // to say on the root before and after.
        const bool concerns = notify.atom == atoms._NET_SUPPORTED ||
                              notify.atom == atoms._NET_SUPPORTING_WM_CHECK ||
                              (facts_ && facts_->checkWindow == XCB_NONE);
        if (notify.window == connection_.root() && concerns)
            facts_.reset();
    } else if (type == XCB_DESTROY_NOTIFY && facts_) {
        const auto& notify = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
        if (notify.window == facts_->checkWindow) {
            facts_.reset();
            seen_ = XCB_NONE; // the next one's may have the same number
        }
    }
}

const WindowManager::Facts& WindowManager::facts() {
    if (!facts_ || facts_->checkWindow == XCB_NONE)
        facts_ = read();
    return *facts_;
}

/// A manager that died leaves its properties on the root, so its own window has to confirm them.
WindowManager::Facts WindowManager::read() {
    auto* connection = connection_.get();
    const auto& atoms = connection_.atoms();
    const auto checkCookie =
        askProperty(connection, connection_.root(), atoms._NET_SUPPORTING_WM_CHECK);
    const auto supportedCookie = askProperty(connection, connection_.root(), atoms._NET_SUPPORTED);
    const auto check = takeItems(connection, checkCookie);
    const auto supported = takeItems(connection, supportedCookie);
    if (check.empty() || check[0] == XCB_NONE)
        return {};

    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection, check[0], XCB_CW_EVENT_MASK, &mask);
    const auto confirmed =
        takeItems(connection, askProperty(connection, check[0], atoms._NET_SUPPORTING_WM_CHECK));
    if (confirmed != check)
        return {};
    const auto supports = [&](xcb_atom_t atom) { return std::ranges::count(supported, atom) > 0; };
    return {check[0], supports(atoms._NET_MOVERESIZE_WINDOW), supports(atoms._NET_FRAME_EXTENTS)};
}

std::vector<xcb_window_t> WindowManager::clients() {
    if (!present())
        return visibleTopLevels();
    return takeItems(connection_.get(), askProperty(connection_.get(), connection_.root(),
                                                    connection_.atoms()._NET_CLIENT_LIST));
}

std::vector<xcb_window_t> WindowManager::visibleTopLevels() {
    auto* connection = connection_.get();
    const auto tree = own(
        xcb_query_tree_reply(connection, xcb_query_tree(connection, connection_.root()), nullptr));
    if (!tree)
        return {};
    const std::span children(xcb_query_tree_children(tree.get()), tree->children_len);
    std::vector<xcb_get_window_attributes_cookie_t> cookies;
    for (const auto child : children)
        cookies.push_back(xcb_get_window_attributes(connection, child));
    std::vector<xcb_window_t> found;
    for (std::size_t i = 0; i < children.size(); ++i) {
        const auto attributes =
            own(xcb_get_window_attributes_reply(connection, cookies[i], nullptr));
        if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
            attributes->override_redirect == 0)
            found.push_back(children[i]);
    }
    return found;
}

void WindowManager::removeState(xcb_window_t window, xcb_atom_t first, xcb_atom_t second) {
    constexpr std::uint32_t remove = 0;
    constexpr std::uint32_t fromPager = 2;
    connection_.sendToWindowManager(window, connection_.atoms()._NET_WM_STATE,
                                    std::array{remove, first, second, fromPager, 0U});
}

} // namespace klova::x11
