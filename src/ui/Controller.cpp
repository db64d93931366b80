#include "ui/Controller.h"

namespace klova {

ViewController::~ViewController() { delete view_; }

QWidget& ViewController::view() {
    if (view_ == nullptr) {
        view_ = loadView(); // deleted above unless its parent did
        viewDidLoad();
    }
    return *view_;
}

} // namespace klova
