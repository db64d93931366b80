#include "ui/WelcomePage.h"

#include "input/ActivationKeys.h"
#include "settings/DataStorageManager.h"
#include "ui/GestureView.h"
#include "ui/Labels.h"
#include "ui/Palette.h"

#include <QVBoxLayout>
#include <memory>

namespace klova {
namespace {

constexpr int kSmallestPicture = 170; // points; below that the texts have to give way

} // namespace

void WelcomePage::viewDidLoad() {
    const Keycaps keycaps = keycapsOf(activationKeys, deminimizeButton);
    const Content content = contentFor(keycaps);

    auto picture = std::make_unique<GestureView>(content.gesture, keycaps);
    picture->setMinimumHeight(kSmallestPicture);
    picture->setAccessibleName(content.title);
    picture->setAccessibleDescription(content.description);

    auto* layout = new QVBoxLayout(&view()); // the view's, as are the widgets in it
    layout->setContentsMargins(22, 0, 22, 0);
    layout->setSpacing(12);
    layout->addWidget(
        makeLabel(content.title, palette::font(18, QFont::DemiBold), palette::kBright));
    layout->addWidget(picture.release(), 1);
    layout->addWidget(makeLabel(content.text, palette::font(12), palette::kText));
}

} // namespace klova
