// What the storyboard makes: controllers of windows and of views.
#pragma once

#include <QPointer>
#include <QWidget>

namespace klova {

class Controller {
public:
    Controller() = default;
    virtual ~Controller() = default;
    Controller(const Controller&) = delete;
    Controller& operator=(const Controller&) = delete;
};

/// The controller of one view, which it makes when it is first asked for.
class ViewController : public Controller {
public:
    ~ViewController() override;

    /// Made, with its `viewDidLoad`, on the first call. Put into another widget it belongs to that
    /// one and may go before the controller does.
    QWidget& view();

    virtual void viewDidLoad() = 0;
    virtual void viewWillAppear() {}

protected:
    /// The view as its scene describes it; an empty one unless a controller says otherwise. Passes
    /// ownership.
    virtual QWidget* loadView() { return new QWidget; }

private:
    QPointer<QWidget> view_;
};

} // namespace klova
