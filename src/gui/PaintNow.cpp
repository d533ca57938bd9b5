#include "gui/PaintNow.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <QWidget>
#include <QWindow>

namespace gelvane {

void WaitUntilMapped(QWidget *window) {
    if (!window || !window->isVisible())
        return;
    QElapsedTimer waited;
    waited.start();
    const QWindow *handle = window->window()->windowHandle();
    while (handle && !handle->isExposed() && waited.elapsed() < 250) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        if (!handle->isExposed())
            QThread::msleep(5);
    }
}

void PaintNow(QWidget *widget) {
    if (!widget || !widget->isVisible())
        return;
    // A hidden bar or a longer text changes the layout through a posted event.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    widget->repaint();
}

} // namespace gelvane
