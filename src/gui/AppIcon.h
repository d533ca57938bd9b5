#pragma once
// The program's own icon, built into the GUI library as a resource.
#include <QIcon>

namespace gelvane {

inline QIcon AppIcon() {
    return QIcon(QStringLiteral(":/icons/gelvane.svg"));
}

} // namespace gelvane
