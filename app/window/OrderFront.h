#pragma once

class QWidget;

/// Brings a window that has been on the screen to the front and gives it the keys, also out of its minimized
/// state.
void bringBack(QWidget& window);

/// Brings `window` to the front and gives it the keys. A window asks for the keys once it is on the screen,
/// so while `newest`, the one shown last, is still on its way there, `window` waits and asks after it.
void orderFront(QWidget& window, QWidget& newest);
