// A scripted desktop behind every port, which records what Klova does to it in order.
#pragma once

#include "input/ApplicationDelegate.h"
#include "platform/Desktop.h"

#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace klova::test {

using Log = std::vector<std::string>;

/// What a fatal error throws here instead of ending the process.
struct FatalStop : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The message of the fatal error that `action` stops with; "" where it does not.
std::string fatalMessage(const std::function<void()>& action);

/// Attributes that are not set fail to read.
struct SimulatedElement : AXUIElement {
    explicit SimulatedElement(std::string title, std::optional<ProcessId> owner = {})
        : name(std::move(title)), process(owner) {}
    std::string name;
    std::optional<ProcessId> process;
    mutable std::map<std::string_view, AXCopyResult> attributes;
};
using ElementPtr = std::shared_ptr<SimulatedElement>;

struct SimulatedItem : LSSharedFileListItem {
    explicit SimulatedItem(FileReference file) : program(std::move(file)) {}
    FileReference program;
};

/// As the log has it.
std::string textOf(const AXAttributeValue& value);

inline const SimulatedElement& simulated(const AXUIElementRef& element) {
    return dynamic_cast<const SimulatedElement&>(*element);
}

class SimulatedDesktop final : public AccessibilityService,
                               public Workspace,
                               public Screens,
                               public EventTapService,
                               public EventTapPort,
                               public EventMonitors,
                               public StatusItem,
                               public StatusButton,
                               public PreferencesStore,
                               public Application,
                               public LoginItems,
                               public ApplicationDelegate {
    using ElementRef = const AXUIElementRef&;
    using Item = LSSharedFileListItem;
    using Items = std::vector<LSSharedFileListItemRef>;

public:
    SimulatedDesktop();
    ~SimulatedDesktop() override;
    Desktop desktop() { return {*this, *this, *this, *this, *this, *this, *this, *this, *this}; }

    /// What happened since the last call: reads, writes, diagnostic lines ("> ") and the like.
    Log takeLog() { return std::exchange(log_, {}); }

    ElementPtr application(ProcessId process) { ///< always the same for one process
        const auto element = std::make_shared<SimulatedElement>("app" + std::to_string(process));
        return applications_.try_emplace(process, element).first->second;
    }
    static ElementPtr window(const std::string& name, ProcessId process, const Frame& frame) {
        auto element = std::make_shared<SimulatedElement>(name, process);
        element->attributes[ax::role].value = std::string(ax::windowRole);
        element->attributes[ax::position].value = AXValue(frame.origin);
        element->attributes[ax::size].value = AXValue(frame.size);
        return element;
    }
    void focus(const ElementPtr& window) { ///< of the application that is then the frontmost
        frontmost = {window->process.value_or(0), {}, {}};
        auto& answer = application(frontmost->processIdentifier)->attributes[ax::focusedWindow];
        answer.value = AXUIElementRef(window);
    }
    void unfocus() { application(frontmost->processIdentifier)->attributes.clear(); }
    void send(const Event& event); ///< to every monitor that watches the type

    std::optional<RunningApplication> frontmost;
    std::vector<RunningApplication> running;
    std::optional<std::vector<Screen>> screenList{{{{{0, 0}, {1440, 900}}, 1}}};
    std::optional<Screen> main{{{{0, 0}, {1440, 900}}, 1}};
    std::map<std::pair<float, float>, ElementPtr> elementsAt;
    Point pointer;
    std::vector<bool> trusted; ///< the answers, last one first; true when there are no more
    int alertAnswer = kAlertFirstButton;
    std::string alertText; ///< of the last alert, message and information
    bool buttonExists = true;
    bool buttonHasImage = true;
    std::size_t monitorsGranted = 100;
    using Stored = std::variant<bool, std::int64_t, std::vector<StoredValue>>;
    std::map<std::string_view, Stored> stored;
    FileReference bundle{"/usr/bin/klova", {1, 10}};
    Items items; ///< opened at login

    AXUIElementRef AXUIElementCreateSystemWide() override {
        note("create system-wide");
        return std::make_shared<SimulatedElement>("system");
    }
    AXUIElementRef AXUIElementCreateApplication(ProcessId id) override { return application(id); }
    AXCopyResult AXUIElementCopyAttributeValue(ElementRef element, std::string_view name) override {
        note("read " + simulated(element).name + " " + std::string(name));
        const auto found = simulated(element).attributes.find(name);
        return found != simulated(element).attributes.end() ? found->second : AXCopyResult{-1, {}};
    }
    void AXUIElementSetAttributeValue(ElementRef element, std::string_view name,
                                      const AXAttributeValue& value) override {
        note("set " + simulated(element).name + " " + std::string(name) + " " + textOf(value));
        simulated(element).attributes[name] = {0, value};
    }
    AXUIElementRef AXUIElementCopyElementAtPosition(ElementRef element, float x, float y) override {
        note("hit " + simulated(element).name);
        return elementsAt.contains({x, y}) ? elementsAt[{x, y}] : nullptr;
    }
    std::optional<ProcessId> AXUIElementGetPid(ElementRef element) override {
        return simulated(element).process;
    }
    bool AXIsProcessTrustedWithOptions(bool prompt) override {
        note(prompt ? "prompt" : "trusted?");
        if (trusted.empty())
            return true;
        const bool answer = trusted.back();
        trusted.pop_back();
        return answer;
    }
    std::optional<RunningApplication> frontmostApplication() override { return frontmost; }
    std::vector<RunningApplication> runningApplications() override { return running; }
    std::optional<std::vector<Screen>> screens() override {
        note("read screens");
        return screenList;
    }
    std::optional<Screen> mainScreen() override { return main; }

    std::unique_ptr<EventTapPort> CGEventTapCreate(std::uint32_t, std::uint32_t, std::uint32_t,
                                                   std::uint64_t, TapClient&) override {
        return nullptr;
    }
    void CGEventTapEnable(EventTapPort&, bool on) override { note(on ? "tap on" : "tap off"); }
    void activationKeysChanged(EventTapPort&) override {}
    std::optional<MonitorId> addGlobalMonitorForEventsMatchingMask(std::uint64_t mask,
                                                                   Handler handler) override {
        if (monitors_.size() == monitorsGranted)
            return std::nullopt;
        monitors_[MonitorId{++lastMonitor_}] = {mask, std::move(handler)};
        note("add monitor " + std::to_string(lastMonitor_) + " " + std::to_string(mask));
        return MonitorId{lastMonitor_};
    }
    void removeMonitor(MonitorId monitor) override {
        monitors_.erase(monitor);
        note("remove monitor " + std::to_string(static_cast<std::uint64_t>(monitor)));
    }
    Point mouseLocation() override { return pointer; }

    StatusButton* button() override { return buttonExists ? this : nullptr; }
    bool hasImage() const override { return buttonHasImage; }
    void setImage(std::string_view name) override { note("image " + std::string(name)); }
    void setNeedsDisplay() override { note("redisplay"); }

    void setBool(bool value, std::string_view key) override { keep(key, value); }
    void setInteger(std::int64_t value, std::string_view key) override { keep(key, value); }
    void setArray(std::span<const StoredValue> values, std::string_view key) override {
        keep(key, std::vector(values.begin(), values.end()));
    }
    bool boolForKey(std::string_view key) override { return kept<bool>(key).value_or(false); }
    std::int64_t integerForKey(std::string_view key) override {
        return kept<std::int64_t>(key).value_or(0);
    }
    std::optional<std::vector<StoredValue>> arrayForKey(std::string_view key) override {
        return kept<std::vector<StoredValue>>(key);
    }
    std::string location() const override { return "/home/somebody/preferences.json"; }

    void activateIgnoringOtherApps() override { note("activate"); }
    int runModalAlert(std::string_view message, std::string_view informative) override {
        alertText = std::string(message) + "\n" + std::string(informative);
        note("alert");
        return alertAnswer;
    }
    void terminate() override { note("terminate"); }
    void run() override {}
    void quitApplication() override { note("quit"); }

    LSSharedFileListRef LSSharedFileListCreate() override {
        note("create list");
        return std::make_shared<LSSharedFileList>();
    }
    Items LSSharedFileListCopySnapshot(LSSharedFileList&) override { return items; }
    std::optional<FileReference> LSSharedFileListItemResolve(const Item& item) override {
        return dynamic_cast<const SimulatedItem&>(item).program;
    }
    LSSharedFileListItemRef LSSharedFileListInsertItemURL(LSSharedFileList&,
                                                          const FileReference& program) override {
        return items.emplace_back(std::make_shared<SimulatedItem>(program));
    }
    void LSSharedFileListItemRemove(LSSharedFileList&, const Item& item) override {
        std::erase_if(items, [&](const auto& held) { return held.get() == &item; });
    }
    FileReference mainBundle() override { return bundle; }

private:
    void note(std::string entry) { log_.push_back(std::move(entry)); }
    void keep(std::string_view key, Stored value) {
        note("store " + std::string(key));
        stored[key] = std::move(value);
    }
    template <typename Value> std::optional<Value> kept(std::string_view key) {
        note("load " + std::string(key));
        const auto found = stored.find(key);
        const auto* value = found != stored.end() ? std::get_if<Value>(&found->second) : nullptr;
        return value != nullptr ? std::optional(*value) : std::nullopt;
    }

    Log log_;
    std::map<ProcessId, ElementPtr> applications_;
    std::map<MonitorId, std::pair<std::uint64_t, Handler>> monitors_;
    std::uint64_t lastMonitor_ = 0;
};

/// A desktop of its own for each test, with every process-wide variable as at the start.
class CoreTest : public testing::Test {
protected:
    CoreTest();
    ~CoreTest() override;

    SimulatedDesktop sim;
    Desktop desktop = sim.desktop();
    ElementPtr window = SimulatedDesktop::window("w", 7, {{50, 60}, {300, 200}}); ///< focused
};

} // namespace klova::test
