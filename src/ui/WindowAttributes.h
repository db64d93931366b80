// What all of Klova's panels have in common as windows.
#pragma once

#include <QColor>
#include <QRect>
#include <QSize>
#include <cstdint>

namespace klova {

/// Style bits of a window.
enum WindowStyle : std::uint32_t {
    kTitledWindow = 0x1,
    kTexturedBackground = 0x100,
    kFullSizeContentView = 0x8000,
};

enum class BackingStore { retained = 0, nonretained = 1, buffered = 2 };

struct WindowAttributes {
    QRect contentRect;         ///< points; only its size counts, since panels are centred
    double cornerRadius = 5.0; ///< points
    std::uint32_t styleMask = kTitledWindow | kTexturedBackground | kFullSizeContentView;
    BackingStore backing = BackingStore::buffered;
    bool deferred = false;
    bool titlebarAppearsTransparent = true;
    bool showsToolbarButton = false;
    bool opaque = false;
    QColor backgroundColor = Qt::transparent;
    bool movableByWindowBackground = true;
    bool hasShadow = true;
    bool ignoresMouseEvents = false;
};

} // namespace klova
