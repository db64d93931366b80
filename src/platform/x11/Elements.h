// The elements of the accessibility tree on X11.
#pragma once

#include "platform/x11/Clients.h"

#include <cstdint>
#include <typeinfo>

namespace klova::x11 {

struct SystemElement final : AXUIElement {};

struct ApplicationElement final : AXUIElement {
    explicit ApplicationElement(ProcessId owner) : process(owner) {}
    ProcessId process;
};

/// A client window. `moment` names the dispatch in which it was found: while that lasts, the
/// snapshot is the present. `shift` leads from root pixels to the coordinates of "AXPosition", for
/// as long as the element lives: what is written rests on what was read, wherever it puts the
/// window.
struct WindowElement final : AXUIElement {
    WindowElement(FoundWindow window, std::uint64_t when, Point by)
        : found(std::move(window)), moment(when), shift(by) {}
    FoundWindow found;
    std::uint64_t moment;
    Point shift;
};

/// A window inside of a client or of the frame around one.
struct PartElement final : AXUIElement {
    explicit PartElement(xcb_window_t part) : window(part) {}
    xcb_window_t window;
};

/// Null where the element is none of that kind, which has to be a final one: a cast that looks for
/// more takes its time, and a key that is held back asks a dozen times.
template <class Kind> const Kind* as(const AXUIElementRef& element) {
    const AXUIElement* any = element.get();
    return any != nullptr && typeid(*any) == typeid(Kind) ? static_cast<const Kind*>(any) : nullptr;
}

} // namespace klova::x11
