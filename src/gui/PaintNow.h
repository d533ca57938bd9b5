#pragma once
// Painting inside a long operation: the one thread is busy, so a window shows only
// what it paints before the work goes on.
class QWidget;

namespace gelvane {

// Gives a window that was just shown a moment (a quarter of a second at most) to be
// mapped by the window system: nothing it paints before that reaches the screen.
// User input stays queued.
void WaitUntilMapped(QWidget *window);
// Paints `widget` now, with any pending layout change first.
void PaintNow(QWidget *widget);

} // namespace gelvane
