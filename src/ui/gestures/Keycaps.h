// What is written on the keys of the tour: the person's own.
#pragma once

#include "platform/KeyCodes.h"

#include <QString>
#include <QStringList>
#include <cstdint>
#include <span>
#include <vector>

namespace klova {

struct Keycap {
    QString symbol;
    QString name; ///< as keyboards of this desktop have it; empty where the symbol says it
};

struct Keycaps {
    std::vector<Keycap> activation; ///< each key once, in the person's order; those without a
                                    ///< symbol are left out
    QString reopen;
};

Keycaps keycapsOf(std::span<const KeyCode> activation, std::int64_t reopenKey);

/// The activation keys in a sentence: "Super + Ctrl"; without any it says what is meant.
QString spoken(const Keycaps& keycaps);

} // namespace klova
