#pragma once

#include <QOpenGLFunctions_3_3_Core>

// The calls of the context that is current; borrowed from it.
using OpenGl = QOpenGLFunctions_3_3_Core;
