// The documents behind the panels, which are never saved or loaded.
#pragma once

#include "ui/PanelWindowController.h"

#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

namespace klova {

/// Why a document could not be saved or loaded.
struct StatusError {
    QString domain;
    int code = 0;
};

class PanelDocument {
public:
    PanelDocument() = default;
    virtual ~PanelDocument() = default;
    PanelDocument(const PanelDocument&) = delete;
    PanelDocument& operator=(const PanelDocument&) = delete;

    /// Makes the panel's controller and opens the panel; to be called once, right after creation.
    virtual void makeWindowControllers() = 0;

    /// Closes the panel as its close button does.
    void close();

    /// Brings the open panel to the front.
    void showWindows();

    /// Both fail, and say so in `error`.
    std::optional<QByteArray> dataOfType(const QString& type, StatusError& error) const;
    bool readFromData(const QByteArray& data, const QString& type, StatusError& error);

    const std::vector<std::unique_ptr<PanelWindowController>>& windowControllers() const {
        return windowControllers_;
    }

protected:
    /// Takes ownership.
    void addWindowController(std::unique_ptr<PanelWindowController> controller);

private:
    std::vector<std::unique_ptr<PanelWindowController>> windowControllers_;
};

} // namespace klova
