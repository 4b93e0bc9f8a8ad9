#pragma once

#include "editor/view/OpenGl.h"

#include <cstdint>
#include <vector>

class CShader;
struct SDebugLine;

// Draws debug lines: full where they are in sight, faint behind the ground. Owned by the renderer.
class CLineBatch
{
public:
    void Make(OpenGl& gl);
    void Release(OpenGl& gl);

    // Returns the number of draw calls.
    uint32_t Draw(OpenGl& gl,
                  CShader& shader,
                  const float (&matrix)[16],
                  const std::vector<SDebugLine>& lines);

private:
    GLuint m_Arrays = 0;
    GLuint m_Buffer = 0;
    std::vector<float> m_Vertices; // position, colour; reused
};
