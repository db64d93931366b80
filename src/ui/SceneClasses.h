// The controller classes that a storyboard may name.
#pragma once

#include "ui/Controller.h"

#include <QStringView>
#include <memory>

namespace klova {

struct SceneClass {
    const char* name;
    std::unique_ptr<Controller> (*make)();
};

/// Null where no class has that name.
const SceneClass* findSceneClass(QStringView name);

} // namespace klova
