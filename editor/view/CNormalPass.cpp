#include "editor/view/CNormalPass.h"

#include "editor/view/Shaders.h"

namespace
{

// From this level on one rectangle round all that changed is less work than each of them.
constexpr uint32_t JOINT_LEVEL = 4;

// Frames and arrays belong to one context and the tiles to several, so they live for a call.
class CTargetFrame
{
public:
    explicit CTargetFrame(OpenGl& gl)
        : m_Gl(gl)
    {
        gl.glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &m_Before);
        gl.glGenFramebuffers(1, &m_Frame);
        gl.glBindFramebuffer(GL_DRAW_FRAMEBUFFER, m_Frame);
        gl.glGenVertexArrays(1, &m_Arrays);
        gl.glBindVertexArray(m_Arrays);
    }

    ~CTargetFrame()
    {
        m_Gl.glBindFramebuffer(GL_DRAW_FRAMEBUFFER, static_cast<GLuint>(m_Before));
        m_Gl.glDeleteFramebuffers(1, &m_Frame);
        m_Gl.glBindVertexArray(0);
        m_Gl.glDeleteVertexArrays(1, &m_Arrays);
    }

    CTargetFrame(const CTargetFrame&) = delete;
    CTargetFrame& operator=(const CTargetFrame&) = delete;

    void SetTarget(GLuint uTexture, uint32_t uLevel)
    {
        m_Gl.glFramebufferTexture2D(GL_DRAW_FRAMEBUFFER,
                                    GL_COLOR_ATTACHMENT0,
                                    GL_TEXTURE_2D,
                                    uTexture,
                                    static_cast<GLint>(uLevel));
    }

private:
    OpenGl& m_Gl;
    GLint m_Before = 0;
    GLuint m_Frame = 0;
    GLuint m_Arrays = 0; // none in it: the shader knows the corners
};

} // namespace

bool CNormalPass::Make(OpenGl& gl, std::string& strFault)
{
    return m_Shader.Make(gl, NORMAL_VERT, NORMAL_FRAG, strFault);
}

void CNormalPass::Release(OpenGl& gl)
{
    m_Shader.Release(gl);
}

bool CNormalPass::CanDraw(OpenGl& gl, GLuint uNormals)
{
    CTargetFrame frame(gl);
    frame.SetTarget(uNormals, 0);
    return gl.glCheckFramebufferStatus(GL_DRAW_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
}

void CNormalPass::Draw(OpenGl& gl,
                       const SNormalTile& tile,
                       const SNormalGround& ground,
                       const std::vector<SVertexRect>& changed)
{
    SVertexRect all;
    for (const SVertexRect& rect : changed)
    {
        all = all.Union(rect);
    }
    if (all.IsEmpty())
    {
        return;
    }
    CTargetFrame frame(gl);
    gl.glDisable(GL_BLEND);
    gl.glDisable(GL_DEPTH_TEST);
    gl.glDisable(GL_SCISSOR_TEST);
    gl.glDisable(GL_CULL_FACE);
    m_Shader.Use(gl);
    m_Shader.Set("uHeights", 0);
    m_Shader.Set(
        "uFirst", static_cast<int>(tile.vertices.uMinX), static_cast<int>(tile.vertices.uMinZ));
    m_Shader.Set("uLast", static_cast<int>(ground.uLastX), static_cast<int>(ground.uLastZ));
    m_Shader.Set("uStep", ground.fStepX, ground.fStepZ);
    gl.glActiveTexture(GL_TEXTURE0);
    gl.glBindTexture(GL_TEXTURE_2D, tile.uHeights);
    // Each level is made from the heights and none from the level before it, so no texture is read
    // while it is drawn into. The viewport limits the one triangle to the part that changed.
    for (uint32_t uLevel = 0; uLevel < tile.uLevels; ++uLevel)
    {
        frame.SetTarget(tile.uNormals, uLevel);
        m_Shader.Set("uLevel", static_cast<int>(uLevel));
        const bool bJoint = uLevel >= JOINT_LEVEL;
        for (size_t i = 0; i < (bJoint ? 1 : changed.size()); ++i)
        {
            const SVertexRect texels = tile.GetTexels(bJoint ? all : changed[i], uLevel);
            gl.glViewport(static_cast<GLint>(texels.uMinX),
                          static_cast<GLint>(texels.uMinZ),
                          static_cast<GLsizei>(texels.uEndX - texels.uMinX),
                          static_cast<GLsizei>(texels.uEndZ - texels.uMinZ));
            gl.glDrawArrays(GL_TRIANGLES, 0, 3);
        }
    }
}
