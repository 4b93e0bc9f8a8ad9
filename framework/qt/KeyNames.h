#pragma once

#include "framework/widgets/WindowEvents.h"

class QKeyEvent;

SKeyEvent MakeKeyEvent(const QKeyEvent& event);
