// What keys do on buttons beside what every button does with Space.
#pragma once

#include <QAbstractButton>
#include <QKeyEvent>

namespace klova {

/// Enter clicks, once however long it is held; on a radio button the arrows go to the next one
/// beside it and choose it. False for every other key.
bool answerKey(QAbstractButton& button, const QKeyEvent& event);

} // namespace klova
