// The content of the welcome panel: its pages and the button that leads through them.
#pragma once

#include "ui/Controller.h"
#include "ui/Layer.h"
#include "ui/Storyboard.h"
#include "ui/TourControls.h"

#include <QCoreApplication>
#include <QLabel>
#include <QPointer>
#include <QWidget>
#include <memory>

namespace klova {

class WelcomeVC final : public ViewController {
    Q_DECLARE_TR_FUNCTIONS(WelcomeVC)

public:
    WelcomeVC() = default;
    ~WelcomeVC() override;

    // The views are null until the controller's view is asked for, and go with it.
    QPointer<QLabel> textView;
    QPointer<TourButton> nextButton;
    QPointer<QWidget> containerViewForPages;
    Storyboard storyb;
    std::unique_ptr<ViewController> currentVc; ///< of the page on show, or soon to be
    int currentPage = 0;                       ///< from 1 to 4, -1 behind the last

    /// Goes on by one page; behind the last one only the number changes, and then begins anew.
    void nextButtonClicked();

    /// Ends the tour. Without a shell that knows panels a fatal error.
    void closeWelcomeWindow();

    void viewWillAppear() override;

protected:
    void viewDidLoad() override;

private:
    void makeViews();
    void layOutViews();
    void goToPage(int page);
    void becomeStartButton();
    void runTransition();
    void showCurrentPage();

    std::unique_ptr<ViewController> leavingVc_; ///< of the page that is fading out
    QPointer<PageDots> dots_;
    QPointer<Layer> layer_; ///< the page area's
};

} // namespace klova
