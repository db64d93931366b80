#include "ui/AboutVC.h"

#include "ui/FitLabels.h"
#include "ui/Images.h"
#include "ui/Labels.h"
#include "ui/Palette.h"

#include <QPainter>
#include <QVBoxLayout>

namespace klova {
namespace {

/// Draws the program's icon at any pixel ratio.
class IconView final : public QWidget {
public:
    explicit IconView(int side) : icon_(imageNamed("klova")) { setFixedHeight(side); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        icon_.paint(&painter, {(width() - height()) / 2, 0, height(), height()});
    }

private:
    QIcon icon_;
};

} // namespace

void AboutVC::viewDidLoad() {
    view().setGeometry(0, 0, 280, 245);
    backgroundImageView = new BackgroundImageView(view().rect(), "About");
    backgroundImageView->setParent(&view());
    backgroundImageView->lower();
    auto* column = new QVBoxLayout(&view());
    column->setContentsMargins(20, 22, 20, 14);
    column->setSpacing(0);
    const auto add = [column](QWidget* widget, int space) {
        column->addWidget(widget);
        column->addSpacing(space);
    };
    add(new IconView(72), 6);
    add(makeLabel("KLOVA", palette::font(20, QFont::Bold), palette::kBright), 0);
    QLabel* version =
        makeLabel(tr("Version %1").arg(KLOVA_VERSION), palette::font(12), palette::kText);
    version->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    add(version, 8);
    add(makeLabel(tr("Free software under the MIT licence"), palette::font(11), palette::kText), 8);
    column->addStretch();
    add(makeLabel(tr("Stands on %1").arg("Qt, XCB, Xlib, xkbcommon, GLib and JSON for Modern C++"),
                  palette::font(10), palette::kGray),
        0);
    fitLabels(view(), view());
}

} // namespace klova
