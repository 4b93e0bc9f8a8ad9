#pragma once

class QByteArray;
class QDockWidget;
class QWidget;

// Makes a window no larger than the room that its screen has for windows, and moves it there: it
// may come from a larger screen, or one where all was drawn smaller. A window that fills its screen
// stays. pBeside: on whose screen one goes that lies on none; null for its own.
void KeepOnScreen(QWidget& window, const QWidget* pBeside = nullptr);

// Gives a window the place and size that QWidget::saveGeometry has kept, also where the screen has
// another size or scale since. False where the bytes are none of its.
bool RestorePlace(QWidget& window, const QByteArray& geometry);

// Makes a dock at the left or right at least so wide, as far as the views and the other side leave
// room. Nothing for one that floats.
void WidenDock(QDockWidget& dock, int iWidth);
