// The program's pictures by name.
#pragma once

#include <QIcon>
#include <QString>

namespace klova {

/// The picture ":/<name>.svg", drawn from its vectors at each size and pixel ratio asked for. A
/// name without a picture is a fatal error.
QIcon imageNamed(const QString& name);

} // namespace klova
