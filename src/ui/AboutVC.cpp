#include "ui/AboutVC.h"

namespace klova {

void AboutVC::viewDidLoad() {}

} // namespace klova
