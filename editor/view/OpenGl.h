#pragma once

#include <QOpenGLFunctions_3_3_Core>

// The calls of the context that is current; borrowed from it.
using OpenGl = QOpenGLFunctions_3_3_Core;

// A place in the buffer that is bound, in the way that OpenGL wants it. In bytes.
inline const void* GetBufferOffset(size_t nOffset)
{
    return reinterpret_cast<const void*>(nOffset); // NOLINT(performance-no-int-to-ptr)
}
