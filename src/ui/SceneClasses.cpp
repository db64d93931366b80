#include "ui/SceneClasses.h"

#include "ui/AboutWindowViewController.h"
#include "ui/PreferencesWindowViewController.h"
#include "ui/WelcomeFourVc.h"
#include "ui/WelcomeOneVc.h"
#include "ui/WelcomeThreeVc.h"
#include "ui/WelcomeTwoVc.h"
#include "ui/WelcomeWindowViewController.h"

#include <QString>
#include <algorithm>

namespace klova {
namespace {

template <class Class> std::unique_ptr<Controller> make() { return std::make_unique<Class>(); }

constexpr SceneClass kClasses[] = {
    {"AboutWindowViewController", make<AboutWindowViewController>},
    {"PreferencesWindowViewController", make<PreferencesWindowViewController>},
    {"WelcomeFourVc", make<WelcomeFourVc>},
    {"WelcomeOneVc", make<WelcomeOneVc>},
    {"WelcomeThreeVc", make<WelcomeThreeVc>},
    {"WelcomeTwoVc", make<WelcomeTwoVc>},
    {"WelcomeWindowViewController", make<WelcomeWindowViewController>},
};

} // namespace

const SceneClass* findSceneClass(QStringView name) {
    const auto* found = std::ranges::find_if(
        kClasses, [name](const SceneClass& entry) { return name == QLatin1String(entry.name); });
    return found != std::end(kClasses) ? found : nullptr;
}

} // namespace klova
