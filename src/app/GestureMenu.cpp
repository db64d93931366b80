#include "app/GestureMenu.h"

#include "app/AppDelegate.h"
#include "ui/Palette.h"

#include <QCoreApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOptionMenuItem>
#include <initializer_list>

namespace klova {
namespace {

constexpr QColor kSeparator(58, 60, 66);

QPalette darkPalette() {
    QPalette colours(palette::kBright, palette::kGround);
    colours.setColor(QPalette::Base, palette::kGround);
    colours.setColor(QPalette::Highlight, palette::kAccent);
    colours.setColor(QPalette::HighlightedText, palette::kOnAccent);
    return colours;
}

/// Flat and roomy, with separators that are seen on the dark ground.
class MenuStyle final : public QProxyStyle {
public:
    MenuStyle() : QProxyStyle("Fusion") {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override {
        return hint == SH_EtchDisabledText ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
    }

    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override {
        constexpr int margin = 6;
        return metric == PM_MenuVMargin ? margin : QProxyStyle::pixelMetric(metric, option, widget);
    }

    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override {
        constexpr QSize room(8, 5);
        const QSize usual = QProxyStyle::sizeFromContents(type, option, size, widget);
        return type == CT_MenuItem ? usual + room : usual;
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        if (element == CE_MenuItem && item != nullptr &&
            item->menuItemType == QStyleOptionMenuItem::Separator)
            painter->fillRect(
                QRect(item->rect.left(), item->rect.center().y(), item->rect.width(), 1),
                kSeparator);
        else
            QProxyStyle::drawControl(element, option, painter, widget);
    }
};

} // namespace

GestureMenu::GestureMenu(AppDelegate& delegate) {
    auto* look = new MenuStyle;
    look->setParent(this);
    setStyle(look);
    setPalette(darkPalette());
    delegate.statusMenu.menu = this;
    addShortCuts(delegate);
    addCommands(delegate);
}

GestureMenu::~GestureMenu() = default;

void GestureMenu::addShortCuts(AppDelegate& delegate) {
    StatusMenu& outlets = delegate.statusMenu;
    const auto addGroup = [this](std::initializer_list<QPointer<QAction>*> group) {
        for (QPointer<QAction>* outlet : group)
            *outlet = addAction(QString());
        addSeparator();
    };
    addGroup({&outlets.activationKeysMenuItem});
    addGroup({&outlets.draggingMenuItem, &outlets.minimizingMenuItem, &outlets.reopenMenuItem,
              &outlets.maximizingMenuItem});
    addGroup({&outlets.leftMenuItem, &outlets.rightMenuItem, &outlets.topMenuItem,
              &outlets.bottomMenuItem});
    addGroup({&outlets.topLeftMenuItem, &outlets.topRightMenuItem, &outlets.bottomLeftMenuItem,
              &outlets.bottomRightMenuItem});
}

void GestureMenu::addCommands(AppDelegate& delegate) {
    StatusMenu& outlets = delegate.statusMenu;
    outlets.preferencesMenuItem =
        addAction(QCoreApplication::translate("StatusMenu", "Preferences…"));
    outlets.aboutMenuItem = addAction(QCoreApplication::translate("StatusMenu", "About Klova"));
    addSeparator();
    outlets.quitMenuItem = addAction(QString());
    connect(outlets.preferencesMenuItem, &QAction::triggered, this,
            [&delegate] { delegate.openPreferences(); });
    connect(outlets.aboutMenuItem, &QAction::triggered, this,
            [&delegate] { delegate.openAbout(); });
    connect(outlets.quitMenuItem, &QAction::triggered, this,
            [&delegate] { delegate.quitBtnClicked(); });
}

void GestureMenu::initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const {
    QMenu::initStyleOption(option, action);
    const auto colour = action->data().value<QColor>();
    if (!colour.isValid())
        return;
    for (const auto role : {QPalette::Text, QPalette::WindowText})
        option->palette.setColor(QPalette::Disabled, role, colour);
}

} // namespace klova
