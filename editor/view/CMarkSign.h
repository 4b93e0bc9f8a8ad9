#pragma once

#include "editor/view/CShader.h"
#include "editor/view/OpenGl.h"

#include <string>

struct SGroundMark;
struct SVec3;
struct SViewProjection;

// The small sign beside the middle of a mark that says without colours what the tool does: a
// triangle for up or down, with a bar where it does only that, else a picture of its kind. Owned by
// the view's renderer, whose context is current around every operation.
class CMarkSign
{
public:
    bool Make(OpenGl& gl, std::string& strFault); // as CShader::Make
    void Release(OpenGl& gl);

    // Over the ground of this frame. uNothing: a vertex array without arrays. Hidden where ground
    // far before the middle is.
    void Draw(OpenGl& gl,
              GLuint uNothing,
              const SViewProjection& view,
              const SGroundMark& mark,
              const SVec3& middle);

private:
    CShader m_Shader;
};
