#include "core/SimulatedDesktop.h"

#include "geometry/Description.h"
#include "input/ProcessState.h"
#include "input/ShellState.h"
#include "platform/Diagnostics.h"
#include "platform/FatalError.h"

namespace klova::test {
namespace {

Log* linesGoTo = nullptr;

std::string textOf(const AXAttributeValue& value) {
    if (const auto* flag = std::get_if<bool>(&value))
        return *flag ? "true" : "false";
    const auto& wrapped = std::get<AXValue>(value);
    if (const auto* point = std::get_if<Point>(&wrapped))
        return description(*point);
    const auto& size = std::get<Size>(wrapped);
    return description(size.width) + " x " + description(size.height);
}

} // namespace

std::string fatalMessage(const std::function<void()>& action) {
    try {
        action();
    } catch (const FatalStop& stop) {
        return stop.what();
    }
    return "";
}

SimulatedDesktop::SimulatedDesktop() {
    linesGoTo = &log_;
    setDiagnosticSink(
        [](std::string_view line) { linesGoTo->push_back("> " + std::string(line)); });
    setFatalErrorHandler([](std::string_view missing) { throw FatalStop(std::string(missing)); });
}

SimulatedDesktop::~SimulatedDesktop() {
    setDiagnosticSink(nullptr);
    setFatalErrorHandler(nullptr);
}

ElementPtr SimulatedDesktop::application(ProcessId process) {
    const auto element = std::make_shared<SimulatedElement>("app" + std::to_string(process));
    return applications_.try_emplace(process, element).first->second;
}

ElementPtr SimulatedDesktop::window(const std::string& name, ProcessId process,
                                    const Frame& frame) {
    auto element = std::make_shared<SimulatedElement>(name, process);
    element->attributes[ax::role].value = std::string(ax::windowRole);
    element->attributes[ax::position].value = AXValue(frame.origin);
    element->attributes[ax::size].value = AXValue(frame.size);
    return element;
}

void SimulatedDesktop::focus(const ElementPtr& window) {
    frontmost = RunningApplication{window->process.value_or(0), {}, {}};
    application(frontmost->processIdentifier)->attributes[ax::focusedWindow].value =
        AXUIElementRef(window);
}

void SimulatedDesktop::send(const Event& event) {
    const auto installed = monitors_;
    for (const auto& [id, monitor] : installed)
        if ((monitor.first & maskOf(event.type)) != 0 && monitors_.contains(id))
            monitor.second(event);
}

AXCopyResult SimulatedDesktop::AXUIElementCopyAttributeValue(const AXUIElementRef& element,
                                                             std::string_view attribute) {
    note("read " + simulated(element).name + " " + std::string(attribute));
    const auto& attributes = simulated(element).attributes;
    const auto found = attributes.find(attribute);
    return found != attributes.end() ? found->second : AXCopyResult{-1, {}};
}

void SimulatedDesktop::AXUIElementSetAttributeValue(const AXUIElementRef& element,
                                                    std::string_view attribute,
                                                    const AXAttributeValue& value) {
    note("set " + simulated(element).name + " " + std::string(attribute) + " " + textOf(value));
    simulated(element).attributes[attribute] = {0, value};
}

AXUIElementRef SimulatedDesktop::AXUIElementCopyElementAtPosition(const AXUIElementRef& element,
                                                                  float x, float y) {
    note("hit " + simulated(element).name);
    const auto found = elementsAt.find({x, y});
    return found != elementsAt.end() ? found->second : nullptr;
}

bool SimulatedDesktop::AXIsProcessTrustedWithOptions(bool prompt) {
    note(prompt ? "prompt" : "trusted?");
    if (trusted.empty())
        return true;
    const bool answer = trusted.back();
    trusted.pop_back();
    return answer;
}

std::optional<MonitorId> SimulatedDesktop::addGlobalMonitorForEventsMatchingMask(std::uint64_t mask,
                                                                                 Handler handler) {
    if (monitors_.size() == monitorsGranted)
        return std::nullopt;
    monitors_[MonitorId{++lastMonitor_}] = {mask, std::move(handler)};
    note("add monitor " + std::to_string(lastMonitor_) + " " + std::to_string(mask));
    return MonitorId{lastMonitor_};
}

CoreTest::CoreTest() {
    resetProcessState();
    statusItem = &sim;
    applicationDelegate = &sim;
    sim.focus(window);
}

CoreTest::~CoreTest() { resetProcessState(); }

} // namespace klova::test
