#pragma once
// Small helpers shared by the windows: file texts are shown as Latin-1, and widgets
// carry their control names as object names (array elements as "cmd_14").
#include <QString>

#include <string>

namespace gelvane {

inline QString Latin1(const std::string &text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

template <class W> W *Named(W *widget, const QString &name, const QString &tip = {}) {
    widget->setObjectName(name);
    if (!tip.isEmpty())
        widget->setToolTip(tip);
    return widget;
}

inline QString Indexed(const char *name, int index) {
    return QString("%1_%2").arg(name).arg(index);
}

} // namespace gelvane
