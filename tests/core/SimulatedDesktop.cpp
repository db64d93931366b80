#include "core/SimulatedDesktop.h"

#include "geometry/Description.h"
#include "input/ProcessState.h"
#include "input/ShellState.h"
#include "platform/Diagnostics.h"
#include "platform/FatalError.h"

namespace klova::test {
namespace {

Log* linesGoTo = nullptr;

} // namespace

std::string textOf(const AXAttributeValue& value) {
    if (const auto* flag = std::get_if<bool>(&value))
        return *flag ? "true" : "false";
    const auto& wrapped = std::get<AXValue>(value);
    if (const auto* point = std::get_if<Point>(&wrapped))
        return description(*point);
    const auto& size = std::get<Size>(wrapped);
    return description(size.width) + " x " + description(size.height);
}

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

void SimulatedDesktop::send(const Event& event) {
    const auto installed = monitors_;
    for (const auto& [id, monitor] : installed)
        if ((monitor.first & maskOf(event.type)) != 0 && monitors_.contains(id))
            monitor.second(event);
}

CoreTest::CoreTest() {
    resetProcessState();
    statusItem = &sim;
    applicationDelegate = &sim;
    sim.focus(window);
}

CoreTest::~CoreTest() { resetProcessState(); }

} // namespace klova::test
