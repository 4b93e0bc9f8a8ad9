#pragma once

#include "editor/core/Words.h"

#include <QIcon>

#include <cstdint>

class QWidget;

constexpr const char* NO_IMAGE = TextKey("no image"); // what is said of a brush without one

// The shape of a brush as a picture for lists, at the scale of the widget that shows it.
//
// pPixels: iSide rows of iSide bytes, borrowed for the call; null gives a frame that says so. size:
// Qt's pixels. Costs no more for a large shape than its rows that are looked at.
QIcon MakeBrushPicture(const uint8_t* pPixels, int iSide, const QSize& size, const QWidget& widget);
