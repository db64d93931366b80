// The pictures of the status icon.
#pragma once

#include <QIcon>

namespace klova {

/// A window of four panes, one of them lit; `activated`: in the accent colour. It carries its own
/// dark ground and light rim, so that it stands out from light and dark panels alike.
QIcon statusIcon(bool activated);

} // namespace klova
