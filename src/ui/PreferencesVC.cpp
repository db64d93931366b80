#include "ui/PreferencesVC.h"

namespace klova {

void PreferencesVC::viewDidLoad() {}

} // namespace klova
