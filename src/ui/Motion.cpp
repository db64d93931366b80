#include "ui/Motion.h"

#include "platform/Panels.h"

#include <QApplication>
#include <QStyle>

namespace klova {

bool wantsLessMotion() {
    return (panels != nullptr && !panels->animationsEnabled()) ||
           QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration) == 0;
}

} // namespace klova
