// The program's scenes by identifier, as the resource of that name lists them.
#pragma once

#include "platform/FatalError.h"
#include "ui/Controller.h"

#include <QJsonObject>
#include <QString>
#include <memory>

namespace klova {

class Storyboard {
public:
    /// Reads the resource ":/<name>.json"; a fatal error where it is missing or no list of scenes.
    explicit Storyboard(const QString& name = QStringLiteral("Storyboard"));

    /// A new controller of the scene. An unknown identifier, and one whose scene has another class
    /// than `Class`, are fatal errors.
    template <class Class> std::unique_ptr<Class> instantiate(const QString& identifier) const {
        std::unique_ptr<Controller> controller = instantiateAny(identifier);
        if (dynamic_cast<Class*>(controller.get()) == nullptr)
            fatalError("the scene " + identifier.toStdString() +
                       " has a controller of another class");
        return std::unique_ptr<Class>(static_cast<Class*>(controller.release()));
    }

private:
    std::unique_ptr<Controller> instantiateAny(const QString& identifier) const;

    QJsonObject scenes_; ///< class names by identifier
};

} // namespace klova
