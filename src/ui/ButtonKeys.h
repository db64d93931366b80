// What keys do on buttons beside what every button does with Space.
#pragma once

#include <QAbstractButton>
#include <QKeyEvent>

namespace klova {

/// Enter clicks, unless Qt says that it only repeats; on a radio button the arrows go to the next
/// one beside it and choose it. False for every other key.
bool answerKey(QAbstractButton& button, const QKeyEvent& event);

} // namespace klova
