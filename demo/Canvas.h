// Painting with Qt onto windows of a plain X connection, and taking pictures of the screen.
#pragma once

#include "desktop/Display.h"
#include "desktop/Rect.h"

#include <QImage>

namespace klova::demo {

/// Copies the picture to a window or pixmap of the root's depth, its top left at the drawable's.
void putImage(rig::Display& display, xcb_drawable_t drawable, const QImage& image);

/// What the screen shows, with an arrow where the pointer is.
QImage takePicture(rig::Display& display);

/// The same once the programs have finished drawing: when two in a row are alike, or the third of
/// a second is over that a blinking cursor would spoil.
QImage takeSettledPicture(rig::Display& display);

/// Gives the screen a background of one gentle gradient.
void paintBackground(rig::Display& display);

} // namespace klova::demo
