// The colours and the type of the panels.
#pragma once

#include <QColor>
#include <QFont>
#include <QString>

namespace klova::palette {

// Each text colour keeps a contrast of at least 4.5 to 1 on the ground, the dark ones of the accent
// on the accent.
inline constexpr QColor kGround(21, 21, 21);
inline constexpr QColor kRaised(38, 40, 44);  ///< what stands out from the ground
inline constexpr QColor kWell(15, 16, 17);    ///< keys that are off
inline constexpr QColor kEdge(110, 114, 122); ///< outlines of controls
inline constexpr QColor kGray(128, 128, 128); ///< texts that only explain; on the ground alone
inline constexpr QColor kText(205, 208, 214);
inline constexpr QColor kBright(255, 255, 255);
inline constexpr QColor kAccent(90, 176, 255);     ///< what is on, and the focus ring
inline constexpr QColor kAccentShade(38, 98, 158); ///< the side of a key that is on
inline constexpr QColor kOnAccent(10, 24, 40);     ///< texts on the accent
inline constexpr QColor kBrown(153, 102, 51);      ///< under the pictures of the panels
inline constexpr QColor kHint(255, 118, 118);      ///< the words of a hint that count

/// The person's own font. `size` is in points at their usual font size and grows with theirs, up to
/// half as large again.
QFont font(double size, QFont::Weight weight = QFont::Normal);

/// How much larger than usual the person wants texts, from 1 to 1.5.
double fontScale();

/// `font`, or as much smaller a one as the text needs to be no wider than `width` points.
QFont fitted(const QFont& font, const QString& text, double width);

} // namespace klova::palette
