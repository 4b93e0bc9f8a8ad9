#pragma once

#include <QOpenGLFunctions_3_3_Core>

#include <cstring>

// The calls of the context that is current; borrowed from it.
using OpenGl = QOpenGLFunctions_3_3_Core;

// Whether the processor draws instead of a graphics card.
inline bool IsSoftwareRenderer(OpenGl& gl)
{
    const auto* pszName = reinterpret_cast<const char*>(gl.glGetString(GL_RENDERER));
    return pszName != nullptr && (std::strstr(pszName, "llvmpipe") != nullptr ||
                                  std::strstr(pszName, "softpipe") != nullptr ||
                                  std::strstr(pszName, "swrast") != nullptr);
}

// A place in the buffer that is bound, in the way that OpenGL wants it. In bytes.
inline const void* GetBufferOffset(size_t nOffset)
{
    return reinterpret_cast<const void*>(nOffset); // NOLINT(performance-no-int-to-ptr)
}
