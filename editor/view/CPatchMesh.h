#pragma once

#include "editor/view/CPatchSelection.h"
#include "editor/view/OpenGl.h"

// The triangles of one patch and the places where it is drawn. Owned by the renderer.
class CPatchMesh
{
public:
    static constexpr uint32_t TRIANGLES = CPatchTree::PATCH_CELLS * CPatchTree::PATCH_CELLS * 2;

    void Make(OpenGl& gl);
    void Release(OpenGl& gl);

    void SetInstances(OpenGl& gl, const std::vector<SPatchInstance>& instances);
    // With the program in use.
    void Draw(OpenGl& gl, uint32_t uFirst, uint32_t uCount);

private:
    GLuint m_Arrays = 0;
    GLuint m_Corners = 0;
    GLuint m_Indices = 0;
    GLuint m_Instances = 0;
};
