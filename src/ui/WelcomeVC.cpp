#include "ui/WelcomeVC.h"

#include "input/ShellState.h"
#include "ui/FitLabels.h"
#include "ui/Images.h"
#include "ui/Palette.h"
#include "ui/PanelDelegate.h"
#include "ui/WelcomeFourVc.h"
#include "ui/WelcomeOneVc.h"
#include "ui/WelcomeThreeVc.h"
#include "ui/WelcomeTwoVc.h"

#include <QHBoxLayout>
#include <QShortcut>
#include <QVBoxLayout>
#include <array>
#include <chrono>
#include <utility>

namespace klova {
namespace {

constexpr std::chrono::milliseconds kFade{200};
constexpr int kHeader = 40; // as high as the close button's corner

struct Page {
    const char* identifier;
    std::unique_ptr<ViewController> (*instantiate)(const Storyboard&, const QString&);
};

template <class Class>
std::unique_ptr<ViewController> instantiate(const Storyboard& storyboard, const QString& name) {
    return storyboard.instantiate<Class>(name);
}

constexpr std::array<Page, 4> kPages{{
    {"welcomeOneVc", instantiate<WelcomeOneVc>},
    {"welcomeTwoVc", instantiate<WelcomeTwoVc>},
    {"WelcomeThreeVc", instantiate<WelcomeThreeVc>},
    {"WelcomeFourVc", instantiate<WelcomeFourVc>},
}};
constexpr int kLastPage = kPages.size();

void paintGround(QWidget& widget) {
    QPalette colours = widget.palette();
    colours.setColor(QPalette::Window, palette::kGround);
    colours.setColor(QPalette::WindowText, palette::kGray);
    widget.setPalette(colours);
    widget.setAutoFillBackground(true);
}

} // namespace

WelcomeVC::~WelcomeVC() = default;

void WelcomeVC::viewDidLoad() {
    view().setGeometry(0, 0, 310, 459);
    paintGround(view());
    makeViews();
    layOutViews();
    paintGround(*containerViewForPages);
    goToPage(1);
    showCurrentPage();
}

void WelcomeVC::makeViews() {
    textView = new QLabel(tr("Welcome to Klova"));
    textView->setAlignment(Qt::AlignCenter);
    textView->setMinimumHeight(kHeader);
    textView->setFont(palette::font(12));
    containerViewForPages = new QWidget;
    (new QVBoxLayout(containerViewForPages))->setContentsMargins({});
    layer_ = new Layer(*containerViewForPages);
    dots_ = new PageDots(kLastPage);
    nextButton = new TourButton(tr("Next"));
    QObject::connect(nextButton, &TourButton::clicked, &view(), [this] { nextButtonClicked(); });
    auto* right = new QShortcut(Qt::Key_Right, &view());
    right->setAutoRepeat(false); // a page each time
    QObject::connect(right, &QShortcut::activated, &view(), [this] {
        if (currentPage < kLastPage)
            nextButton->click();
    });
}

void WelcomeVC::layOutViews() {
    auto* footer = new QHBoxLayout;
    footer->setContentsMargins(22, 12, 22, 20);
    footer->addWidget(dots_);
    footer->addStretch();
    footer->addWidget(nextButton);
    auto* layout = new QVBoxLayout(&view()); // takes all of them over for the view
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(textView);
    layout->addWidget(containerViewForPages, 1);
    layout->addLayout(footer);
}

void WelcomeVC::viewWillAppear() { nextButton->setFocus(); }

void WelcomeVC::nextButtonClicked() {
    if (currentPage == kLastPage) {
        currentPage = -1;
        return;
    }
    if (currentPage < 1 || currentPage > kLastPage) {
        currentPage = 1;
        return;
    }
    // A page that never came on show can go at once.
    std::unique_ptr<ViewController> before = std::move(currentVc);
    if (leavingVc_ == nullptr)
        leavingVc_ = std::move(before);
    goToPage(currentPage + 1);
    runTransition();
    if (currentPage == kLastPage)
        becomeStartButton();
}

void WelcomeVC::goToPage(int page) {
    currentPage = page;
    const Page& entry = kPages.at(static_cast<std::size_t>(page - 1));
    currentVc = entry.instantiate(storyb, entry.identifier);
    dots_->setPage(page);
    //: For screen readers, beside the name of the button that leads on.
    nextButton->setAccessibleDescription(tr("Page %1 of %2").arg(page).arg(kLastPage));
}

void WelcomeVC::becomeStartButton() {
    nextButton->setIcon(imageNamed("StartButtonOff"));
    nextButton->setText(tr("Start"));
    nextButton->disconnect(&view());
    QObject::connect(nextButton, &TourButton::clicked, &view(), [this] { closeWelcomeWindow(); });
}

void WelcomeVC::runTransition() {
    layer_->setOpacity(0);
    layer_->animateOpacity(1, 0, kFade, [this] {
        showCurrentPage();
        layer_->setOpacity(1);
        layer_->animateOpacity(0, 1, kFade);
    });
}

void WelcomeVC::showCurrentPage() {
    leavingVc_.reset(); // takes its view out of the page area
    QWidget& page = currentVc->view();
    containerViewForPages->layout()->addWidget(&page);
    page.lower();
    page.show(); // what is hidden takes no room
    fitLabels(page, view());
}

void WelcomeVC::closeWelcomeWindow() {
    panelOpen = false;
    PanelDelegate& delegate = panelDelegate();
    delegate.toggleShowMenuItems(true);
    delegate.closeWelcome();
}

} // namespace klova
