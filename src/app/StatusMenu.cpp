#include "app/StatusMenu.h"

#include "app/MenuTitles.h"
#include "platform/FatalError.h"
#include "ui/Palette.h"

#include <array>

namespace klova {
namespace {

constexpr QColor kShortCut(200, 200, 200);

QAction& present(const QPointer<QAction>& outlet) {
    if (outlet == nullptr)
        fatalError("an entry of the status menu is missing");
    return *outlet;
}

struct ShortCut {
    QPointer<QAction> StatusMenu::*item;
    QString MenuTitles::*title;
};

constexpr std::array<ShortCut, 12> kShortCuts{{
    {&StatusMenu::draggingMenuItem, &MenuTitles::dragging},
    {&StatusMenu::minimizingMenuItem, &MenuTitles::minimizing},
    {&StatusMenu::reopenMenuItem, &MenuTitles::reopen},
    {&StatusMenu::maximizingMenuItem, &MenuTitles::maximizing},
    {&StatusMenu::leftMenuItem, &MenuTitles::left},
    {&StatusMenu::rightMenuItem, &MenuTitles::right},
    {&StatusMenu::topMenuItem, &MenuTitles::top},
    {&StatusMenu::bottomMenuItem, &MenuTitles::bottom},
    {&StatusMenu::topLeftMenuItem, &MenuTitles::topLeft},
    {&StatusMenu::topRightMenuItem, &MenuTitles::topRight},
    {&StatusMenu::bottomLeftMenuItem, &MenuTitles::bottomLeft},
    {&StatusMenu::bottomRightMenuItem, &MenuTitles::bottomRight},
}};

void showDisabled(QAction& item, const QString& title, const QColor& colour) {
    item.setData(colour);
    item.setText(title);
    item.setEnabled(false);
}

} // namespace

void StatusMenu::updateActivationKeyLabel() const {
    showDisabled(present(activationKeysMenuItem), menuTitles().activationKeys, palette::kGray);
}

void StatusMenu::updateShortCutLabels() const {
    const MenuTitles titles = menuTitles();
    for (const auto& [item, title] : kShortCuts)
        showDisabled(present(this->*item), titles.*title, kShortCut);
    present(quitMenuItem).setText(titles.quit);
}

void StatusMenu::toggleShowMenuItems(bool enabled) const {
    present(preferencesMenuItem).setEnabled(enabled);
    present(aboutMenuItem).setEnabled(enabled);
}

} // namespace klova
