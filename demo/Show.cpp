#include "Show.h"

#include "Canvas.h"
#include "desktop/Wait.h"
#include "desktop/Windows.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <thread>

namespace klova::demo {
namespace {

using rig::Place;

std::string meaningOf(Place place) {
    static const std::map<Place, std::string> meanings = {
        {Place::left, "left half"},
        {Place::right, "right half"},
        {Place::top, "top half"},
        {Place::bottom, "bottom half"},
        {Place::topLeft, "top left quarter"},
        {Place::topRight, "top right quarter"},
        {Place::bottomLeft, "bottom left quarter"},
        {Place::bottomRight, "bottom right quarter"}};
    return meanings.at(place);
}

std::string capOf(xcb_keysym_t key) {
    static const std::map<xcb_keysym_t, std::string> arrows = {
        {XKB_KEY_Left, "←"}, {XKB_KEY_Right, "→"}, {XKB_KEY_Up, "↑"}, {XKB_KEY_Down, "↓"}};
    const auto found = arrows.find(key);
    return found != arrows.end() ? found->second
                                 : std::string(1, static_cast<char>(key - XKB_KEY_a + 'A'));
}

std::vector<std::string> withActivationKeys(const std::vector<std::string>& keys) {
    std::vector<std::string> all{"Super", "Ctrl"};
    all.insert(all.end(), keys.begin(), keys.end());
    return all;
}

std::string joined(const std::vector<std::string>& keys) {
    std::string text;
    for (const auto& key : keys)
        text += (text.empty() ? "" : "+") + key;
    return text;
}

/// Counts letters, not bytes, of UTF-8.
std::string padded(std::string text, std::size_t width) {
    const auto letters = static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
    return text.append(letters < width ? width - letters : 0, ' ');
}

void print(const std::string& gesture, const std::string& program, const rig::Rect& before,
           const std::string& after, const std::string& fault) {
    std::printf("%s %s %s -> %s %s\n", padded(gesture, 36).c_str(), padded(program, 9).c_str(),
                padded(toText(before), 17).c_str(), padded(after, 17).c_str(),
                fault.empty() ? "ok" : ("WRONG: " + fault).c_str());
    std::fflush(stdout);
}

} // namespace

Show::Show(Stage& stage, Album& album, const std::filesystem::path& binary,
           std::chrono::milliseconds pause)
    : stage_(stage), album_(album), caption_(stage.desktop().server().display()),
      klova_(stage.desktop(), binary), pause_(pause) {
    klova_.hands().setSpacing(std::chrono::milliseconds(2));
}

int Show::play() {
    caption_.show({{}, "Klova runs; its keys are not held"});
    album_.add(takeSettledPicture(stage_.display()), "start");
    playSnaps();
    playMaximized();
    playDoubleClicks();
    playDrag();
    playMinimize();
    playQuit();
    return faults_;
}

void Show::playSnaps() {
    const Program* const turns[] = {&stage_.terminal(), &stage_.editor(), &stage_.clock(),
                                    &stage_.terminal()};
    const auto& gestures = rig::snapGestures();
    for (std::size_t i = 0; i < gestures.size(); ++i) {
        if (i % 4 == 0)
            focus(*turns[i / 4]);
        snap(*turns[i / 4], gestures[i]);
    }
}

void Show::playMaximized() {
    if (stage_.desktop().manager().name() == "i3")
        return; // which maximizes nothing
    const auto& editor = stage_.editor();
    focus(editor);
    if (!rig::maximize(stage_.display(), editor.window))
        ++faults_;
    snap(editor, rig::snapGestures()[1]);
}

void Show::playDoubleClicks() {
    focus(stage_.clock());
    doubleClick(stage_.clock(), Place::wholeScreen, "maximize");
    doubleClick(stage_.clock(), Place::centre, "then centre");
}

void Show::playDrag() {
    constexpr int steps = 120;
    auto& display = stage_.display();
    const auto& clock = stage_.clock();
    const auto before = rig::visibleFrame(display, clock.window);
    const int x = before.x + before.width / 2, y = before.y + before.height / 2;
    // The first motion of the very first drag only says where the pointer is.
    auto wanted = before;
    wanted.x += steps - 1;
    wanted.y -= (steps - 1);
    const auto fault = [&]() -> std::string {
        const auto frame = rig::visibleFrame(display, clock.window);
        return frame == wanted ? "" : "expected " + toText(wanted) + ", is " + toText(frame);
    };
    klova_.hands().movePointer(x, y);
    perform({{withActivationKeys({"left button"}), "drag"},
             clock,
             [&] {
                 klova_.beginDrag(x + 1, y - 1);
                 for (int i = 2; i <= steps; ++i)
                     klova_.hands().movePointer(x + i, y - i);
                 klova_.hands().releaseButton(1);
             },
             fault});
}

void Show::playMinimize() {
    if (!stage_.desktop().manager().minimizes()) {
        std::printf("%s minimizes no windows\n", stage_.desktop().manager().name().c_str());
        return;
    }
    auto& display = stage_.display();
    const auto& editor = stage_.editor();
    focus(editor);
    const auto before = rig::visibleFrame(display, editor.window);
    perform({{withActivationKeys({"right button"}), "minimize"},
             editor,
             [&] { klova_.hands().click(3); },
             [&] { return rig::isMinimized(display, editor.window) ? "" : "is not minimized"; }});
    perform({{withActivationKeys({"C"}), "reopen"},
             editor,
             [&] { klova_.hands().tap(XKB_KEY_c); },
             [&]() -> std::string {
                 if (rig::isMinimized(display, editor.window))
                     return "is still minimized";
                 const auto frame = rig::visibleFrame(display, editor.window);
                 return frame == before ? "" : "reopened at " + toText(frame);
             }});
}

void Show::playQuit() {
    perform({{withActivationKeys({"T"}), "quit"},
             stage_.editor(),
             [&] { klova_.hands().tap(XKB_KEY_t); },
             [&]() -> std::string {
                 const auto status = klova_.process().waitExit(std::chrono::milliseconds(0));
                 return !status        ? "still runs"
                        : *status == 0 ? ""
                                       : "exit status " + std::to_string(*status);
             }});
}

void Show::snap(const Program& program, const rig::SnapGesture& gesture) {
    std::vector<std::string> caps;
    for (const auto key : gesture.keys)
        caps.push_back(capOf(key));
    perform({{withActivationKeys(caps), meaningOf(gesture.place)},
             program,
             [&] { klova_.snap(gesture); },
             [&] {
                 return rig::misplacement(gesture.place, stage_.screen(),
                                          rig::sizeLimits(stage_.display(), program.window),
                                          rig::visibleFrame(stage_.display(), program.window));
             }});
}

void Show::doubleClick(const Program& program, Place place, const std::string& meaning) {
    const auto frame = rig::visibleFrame(stage_.display(), program.window);
    perform({{withActivationKeys({"double click"}), meaning},
             program,
             [&] { klova_.doubleClick(frame.x + frame.width / 3, frame.y + frame.height / 2); },
             [&] {
                 return rig::misplacement(place, stage_.screen(),
                                          rig::sizeLimits(stage_.display(), program.window),
                                          rig::visibleFrame(stage_.display(), program.window));
             }});
}

void Show::focus(const Program& program) {
    if (!rig::activate(stage_.display(), program.window))
        ++faults_;
}

void Show::perform(const Step& step) {
    quit_.obey();
    auto& display = stage_.display();
    const auto before = frames();
    const auto frame = rig::visibleFrame(display, step.program.window);
    klova_.holdActivationKeys();
    caption_.show(step.caption);
    step.act();
    auto fault = awaitFault(step);
    if (fault.empty())
        fault = movedOthers(step.program, before);
    const auto gesture = joined(step.caption.keys) + ": " + step.caption.meaning;
    album_.add(takeSettledPicture(display), step.caption.meaning);
    linger();
    klova_.releaseActivationKeys();
    print(gesture, step.program.name, frame,
          rig::isMinimized(display, step.program.window)
              ? "minimized"
              : toText(rig::visibleFrame(display, step.program.window)),
          fault);
    faults_ += fault.empty() ? 0 : 1;
}

std::string Show::awaitFault(const Step& step) {
    rig::waitUntil(
        stage_.display(), step.caption.meaning, [&] { return step.fault().empty(); }, step.fault,
        std::chrono::seconds(5));
    return step.fault();
}

std::string Show::movedOthers(const Program& program, const std::vector<rig::Rect>& before) {
    const auto after = frames();
    for (std::size_t i = 0; i < before.size(); ++i)
        if (&stage_.programs()[i] != &program && after[i] != before[i])
            return stage_.programs()[i].name + " moved too, to " + toText(after[i]);
    return {};
}

std::vector<rig::Rect> Show::frames() {
    std::vector<rig::Rect> result;
    for (const auto& program : stage_.programs())
        result.push_back(rig::visibleFrame(stage_.display(), program.window));
    return result;
}

void Show::linger() { std::this_thread::sleep_for(pause_); }

} // namespace klova::demo
