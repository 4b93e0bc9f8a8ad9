#include "editor/view/CPatchMesh.h"

namespace
{

constexpr GLuint CORNER = 0; // attributes of the shader
constexpr GLuint PATCH = 1;
constexpr uint32_t SIDE = CPatchTree::PATCH_CELLS + 1;

} // namespace

void CPatchMesh::Make(OpenGl& gl)
{
    std::vector<float> corners;
    std::vector<uint16_t> indices;
    for (uint32_t z = 0; z < SIDE; ++z)
    {
        for (uint32_t x = 0; x < SIDE; ++x)
        {
            corners.push_back(static_cast<float>(x));
            corners.push_back(static_cast<float>(z));
        }
    }
    for (uint32_t z = 0; z + 1 < SIDE; ++z)
    {
        for (uint32_t x = 0; x + 1 < SIDE; ++x)
        {
            // Cut from the corner of the next row to that of the next column, as cells are.
            const auto u00 = static_cast<uint16_t>(z * SIDE + x);
            const auto u10 = static_cast<uint16_t>(u00 + 1);
            const auto u01 = static_cast<uint16_t>(u00 + SIDE);
            const auto u11 = static_cast<uint16_t>(u01 + 1);
            indices.insert(indices.end(), {u00, u01, u10, u10, u01, u11});
        }
    }
    gl.glGenVertexArrays(1, &m_Arrays);
    gl.glBindVertexArray(m_Arrays);
    gl.glGenBuffers(1, &m_Corners);
    gl.glBindBuffer(GL_ARRAY_BUFFER, m_Corners);
    gl.glBufferData(GL_ARRAY_BUFFER,
                    static_cast<GLsizeiptr>(corners.size() * sizeof(float)),
                    corners.data(),
                    GL_STATIC_DRAW);
    gl.glEnableVertexAttribArray(CORNER);
    gl.glVertexAttribPointer(CORNER, 2, GL_FLOAT, GL_FALSE, 0, nullptr);
    gl.glGenBuffers(1, &m_Indices);
    gl.glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, m_Indices);
    gl.glBufferData(GL_ELEMENT_ARRAY_BUFFER,
                    static_cast<GLsizeiptr>(indices.size() * sizeof(uint16_t)),
                    indices.data(),
                    GL_STATIC_DRAW);
    // The places of patches change with every frame and get their layout in Draw.
    gl.glGenBuffers(1, &m_Instances);
    gl.glEnableVertexAttribArray(PATCH);
    gl.glVertexAttribDivisor(PATCH, 1);
    gl.glBindVertexArray(0);
}

void CPatchMesh::Release(OpenGl& gl)
{
    gl.glDeleteVertexArrays(1, &m_Arrays);
    for (const GLuint uBuffer : {m_Corners, m_Indices, m_Instances})
    {
        gl.glDeleteBuffers(1, &uBuffer);
    }
}

void CPatchMesh::SetInstances(OpenGl& gl, const std::vector<SPatchInstance>& instances)
{
    gl.glBindVertexArray(m_Arrays);
    gl.glBindBuffer(GL_ARRAY_BUFFER, m_Instances);
    gl.glBufferData(GL_ARRAY_BUFFER,
                    static_cast<GLsizeiptr>(instances.size() * sizeof(SPatchInstance)),
                    instances.data(),
                    GL_STREAM_DRAW);
}

void CPatchMesh::Draw(OpenGl& gl, uint32_t uFirst, uint32_t uCount)
{
    // OpenGL 3.3 cannot begin at an instance, so the array does.
    const size_t nOffset = size_t{uFirst} * sizeof(SPatchInstance);
    gl.glVertexAttribIPointer(PATCH, 4, GL_INT, sizeof(SPatchInstance), GetBufferOffset(nOffset));
    gl.glDrawElementsInstanced(GL_TRIANGLES,
                               static_cast<GLsizei>(TRIANGLES * 3),
                               GL_UNSIGNED_SHORT,
                               nullptr,
                               static_cast<GLsizei>(uCount));
}
