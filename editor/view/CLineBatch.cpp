#include "editor/view/CLineBatch.h"

#include "editor/view/CShader.h"
#include "engine/world/CEngineHost.h"

namespace
{

constexpr GLsizei FLOATS = 7; // of a vertex
constexpr float HIDDEN_STRENGTH = 0.3F;

} // namespace

void CLineBatch::Make(OpenGl& gl)
{
    constexpr GLsizei STRIDE = FLOATS * sizeof(float);
    gl.glGenVertexArrays(1, &m_Arrays);
    gl.glBindVertexArray(m_Arrays);
    gl.glGenBuffers(1, &m_Buffer);
    gl.glBindBuffer(GL_ARRAY_BUFFER, m_Buffer);
    gl.glEnableVertexAttribArray(0);
    gl.glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, STRIDE, nullptr);
    gl.glEnableVertexAttribArray(1);
    gl.glVertexAttribPointer(1, 4, GL_FLOAT, GL_FALSE, STRIDE, GetBufferOffset(3 * sizeof(float)));
    gl.glBindVertexArray(0);
}

void CLineBatch::Release(OpenGl& gl)
{
    gl.glDeleteVertexArrays(1, &m_Arrays);
    gl.glDeleteBuffers(1, &m_Buffer);
}

uint32_t CLineBatch::Draw(OpenGl& gl,
                          CShader& shader,
                          const float (&matrix)[16],
                          const std::vector<SDebugLine>& lines)
{
    if (lines.empty())
    {
        return 0;
    }
    m_Vertices.clear();
    for (const SDebugLine& line : lines)
    {
        for (const SVec3& at : {line.from, line.to})
        {
            m_Vertices.insert(
                m_Vertices.end(),
                {at.x, at.y, at.z, line.color.r, line.color.g, line.color.b, line.color.a});
        }
    }
    gl.glBindVertexArray(m_Arrays);
    gl.glBindBuffer(GL_ARRAY_BUFFER, m_Buffer);
    gl.glBufferData(GL_ARRAY_BUFFER,
                    static_cast<GLsizeiptr>(m_Vertices.size() * sizeof(float)),
                    m_Vertices.data(),
                    GL_STREAM_DRAW);
    shader.Use(gl);
    shader.SetMatrix("uMatrix", matrix);
    gl.glEnable(GL_BLEND);
    gl.glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ZERO, GL_ONE);
    gl.glDepthMask(GL_FALSE);
    const auto nVertices = static_cast<GLsizei>(lines.size() * 2);
    // The same lines twice: what is in sight in full, then, with the depth test turned round, what
    // the ground hides.
    shader.Set("uStrength", 1.0F);
    gl.glDrawArrays(GL_LINES, 0, nVertices);
    gl.glDepthFunc(GL_GREATER);
    shader.Set("uStrength", HIDDEN_STRENGTH);
    gl.glDrawArrays(GL_LINES, 0, nVertices);
    gl.glDepthFunc(GL_LEQUAL);
    gl.glDepthMask(GL_TRUE);
    gl.glDisable(GL_BLEND);
    return 2;
}
