#include "ui/SceneClasses.h"

#include "ui/AboutWindowViewController.h"
#include "ui/PreferencesWindowViewController.h"

#include <QString>
#include <algorithm>

namespace klova {
namespace {

template <class Class> std::unique_ptr<Controller> make() { return std::make_unique<Class>(); }

constexpr SceneClass kClasses[] = {
    {"AboutWindowViewController", make<AboutWindowViewController>},
    {"PreferencesWindowViewController", make<PreferencesWindowViewController>},
};

} // namespace

const SceneClass* findSceneClass(QStringView name) {
    const auto* found = std::ranges::find_if(
        kClasses, [name](const SceneClass& entry) { return name == QLatin1String(entry.name); });
    return found != std::end(kClasses) ? found : nullptr;
}

} // namespace klova
