#include "ui/PreferencesView.h"

#include "ui/HintLabel.h"
#include "ui/KeyButton.h"
#include "ui/KeyLegends.h"
#include "ui/Labels.h"
#include "ui/LaunchButton.h"
#include "ui/Palette.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <initializer_list>

namespace klova {
namespace {

QLabel* sectionLabel(const QString& words) {
    QLabel* section = makeLabel(words, palette::font(12, QFont::DemiBold), palette::kText,
                                Qt::AlignLeading | Qt::AlignVCenter);
    section->setContentsMargins(3, 0, 3, 0); // in line with the keys, which leave room for a ring
    return section;
}

/// A button that is on until the settings say otherwise.
template <class Button> Button* loadedOn(Button* button) {
    button->setChecked(true);
    return button;
}

QHBoxLayout* row(std::initializer_list<QWidget*> widgets) {
    auto* layout = new QHBoxLayout;
    layout->setSpacing(4);
    for (QWidget* widget : widgets) {
        widget->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
        layout->addWidget(widget, 1);
    }
    return layout;
}

} // namespace

PreferencesView::PreferencesView()
    : cmdButton(new KeyCheckButton({50, tr("Super"), 18})),
      altButton(new KeyCheckButton({50, tr("Alt"), 18})),
      ctrlButton(new KeyCheckButton({50, tr("Control"), 18})),
      textView(makeLabel(tr("Hold the activation keys, then drag, click or press an arrow key."),
                         palette::font(11), palette::kGray)),
      maximizeButton(new KeyCheckButton({38, {}, 13, false})),
      centerButton(new KeyCheckButton({38, {}, 13, false})),
      reopenButton(loadedOn(new KeyRadioButton({42, {}, 16}))),
      reopenButtonTwo(loadedOn(new KeyRadioButton({42, {}, 16}))),
      reopenButtonThree(loadedOn(new KeyRadioButton({42, {}, 16}))),
      launchButton(new LaunchButton(tr("Launch at login"))), onlyOneButtonLabel(new HintLabel) {
    arrange();
    nameForScreenReaders();
}

void PreferencesView::arrange() {
    auto* title =
        makeLabel(tr("Preferences"), palette::font(15, QFont::DemiBold), palette::kBright);
    textView->setContentsMargins(24, 0, 24, 0);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(21, 10, 21, 14);
    column->setSpacing(0);
    const auto section = [column](const QString& name, QLayout* content) {
        column->addSpacing(6); // at least
        column->addStretch();
        column->addWidget(sectionLabel(name));
        column->addSpacing(3);
        column->addLayout(content);
    };
    column->addWidget(title);
    column->addSpacing(6);
    column->addWidget(textView);
    section(tr("Activation Keys"), row({ctrlButton, cmdButton, altButton}));
    column->addWidget(onlyOneButtonLabel);
    section(tr("Double Click"), row({maximizeButton, centerButton}));
    section(tr("Reopen minimized Window"), row({reopenButton, reopenButtonTwo, reopenButtonThree}));
    column->addStretch();
    column->addWidget(launchButton);
}

void PreferencesView::nameForScreenReaders() {
    cmdButton->setAccessibleName(tr("Super is an activation key"));
    altButton->setAccessibleName(tr("Alt is an activation key"));
    ctrlButton->setAccessibleName(tr("Control is an activation key"));
    maximizeButton->setAccessibleName(tr("Double click maximizes"));
    centerButton->setAccessibleName(tr("Double click centers"));
    reopenButton->setAccessibleName(tr("%1 reopens the minimized window").arg(legendOf(key::q)));
    reopenButtonTwo->setAccessibleName(tr("%1 reopens the minimized window").arg(legendOf(key::e)));
    reopenButtonThree->setAccessibleName(
        tr("%1 reopens the minimized window").arg(legendOf(key::c)));
    launchButton->setAccessibleName(tr("Launch at login"));
}

} // namespace klova
