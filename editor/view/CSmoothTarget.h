#pragma once

#include "editor/view/OpenGl.h"

// Smooths the edges of what is drawn: a picture with four samples a pixel, which comes into the
// buffer of the view as the mean of them. The view's own buffer has one, so this can be switched at
// any time and costs nothing while it is off. Owned by the view's renderer, whose context is
// current around every operation.
class CSmoothTarget
{
public:
    // What is drawn between them goes to the picture instead of the buffer that is bound, and is in
    // that one afterwards. False, and everything stays as it was, when the card has no room.
    bool Begin(OpenGl& gl, int iWidth, int iHeight);
    void End(OpenGl& gl) const;

    void Release(OpenGl& gl);

private:
    bool Make(OpenGl& gl, int iWidth, int iHeight);

    GLuint m_Buffer = 0;
    GLuint m_Color = 0;
    GLuint m_Depth = 0;
    GLint m_Target = 0; // where the mean goes
    int m_Width = 0;
    int m_Height = 0;
    bool m_bFailed = false; // at this size
    bool m_bSaid = false;   // that one has failed
};
