#include "ui/PanelDocument.h"

namespace klova {
namespace {

const StatusError kUnimplemented{QStringLiteral("NSOSStatusErrorDomain"), -4};

} // namespace

void PanelDocument::close() {
    for (const auto& controller : windowControllers_)
        controller->close();
}

void PanelDocument::showWindows() {
    for (const auto& controller : windowControllers_)
        controller->showWindow();
}

std::optional<QByteArray> PanelDocument::dataOfType(const QString&, StatusError& error) const {
    error = kUnimplemented;
    return std::nullopt;
}

bool PanelDocument::readFromData(const QByteArray&, const QString&, StatusError& error) {
    error = kUnimplemented;
    return false;
}

void PanelDocument::addWindowController(std::unique_ptr<PanelWindowController> controller) {
    windowControllers_.push_back(std::move(controller));
}

} // namespace klova
