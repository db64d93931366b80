#include "ui/Storyboard.h"

#include "ui/SceneClasses.h"

#include <QFile>
#include <QJsonDocument>

namespace klova {

Storyboard::Storyboard(const QString& name) {
    QFile file(":/" + name + ".json");
    if (file.open(QIODevice::ReadOnly))
        scenes_ = QJsonDocument::fromJson(file.readAll()).object();
    if (scenes_.isEmpty())
        fatalError("there are no scenes named " + name.toStdString());
}

std::unique_ptr<Controller> Storyboard::instantiateAny(const QString& identifier) const {
    const QString className = scenes_.value(identifier).toString();
    const SceneClass* found = findSceneClass(className);
    if (found == nullptr)
        fatalError("there is no scene " + identifier.toStdString());
    return found->make();
}

} // namespace klova
