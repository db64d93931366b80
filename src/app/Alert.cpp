#include "app/Alert.h"

#include "ui/Images.h"
#include "ui/Palette.h"

#include <QLayout>
#include <QPushButton>

namespace klova {
namespace {

constexpr int kIconSize = 64;

/// For what a palette alone cannot say. %1 ground, %2 message, %3 text, %4 accent, %5 on it.
constexpr const char* kRules = R"(
    QMessageBox { background: %1; }
    QLabel { color: %3; background: transparent; }
    QLabel#qt_msgbox_informativelabel { min-width: 400px; }
    QLabel#qt_msgbox_label { color: %2; font-weight: bold; }
    QPushButton { color: %5; background: %4; border: 2px solid %4; border-radius: 6px;
                  padding: 6px 22px; min-width: 44px; font-weight: bold; }
    QPushButton:focus { border-color: %2; }
    QPushButton:pressed { border-color: %1; }
)";

QString styleSheetText() {
    QString text = kRules;
    for (const QColor& colour :
         {palette::kGround, palette::kBright, palette::kText, palette::kAccent, palette::kOnAccent})
        text = text.arg(colour.name());
    return text;
}

} // namespace

Alert::Alert(const QString& message, const QString& informative)
    : QMessageBox(QMessageBox::NoIcon, "Klova", message, QMessageBox::Ok) {
    setTextFormat(Qt::PlainText);
    setInformativeText(informative);
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint);
    const QIcon icon = imageNamed("klova");
    setWindowIcon(icon);
    setIconPixmap(icon.pixmap(QSize(kIconSize, kIconSize), devicePixelRatio()));
    setStyleSheet(styleSheetText());
    setFont(palette::font(11));
    layout()->setContentsMargins(20, 20, 20, 16);
    QAbstractButton* ok = button(QMessageBox::Ok);
    ok->setIcon({});
    ok->setFocus();
}

} // namespace klova
