#include "editor/view/CMarkSign.h"

#include "editor/view/CMarkOverlay.h"
#include "editor/view/SGroundMark.h"
#include "editor/view/SViewProjection.h"
#include "editor/view/Shaders.h"
#include "editor/view/Vectors.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr int SIDE = 11;
constexpr float FRAME = SIDE + 2.0F; // points of the dark square behind
constexpr float AWAY = 6.0F;         // from the middle to the left and downwards, points
constexpr float BEFORE = 0.7F;       // ground nearer than this share of the distance hides it

using FSign = const char* const[SIDE];

constexpr FSign RAISE = {"...........",
                         ".....#.....",
                         ".....#.....",
                         "....###....",
                         "....###....",
                         "...#####...",
                         "...#####...",
                         "..#######..",
                         "..#######..",
                         ".#########.",
                         "..........."};
constexpr FSign RAISE_ONLY = {"###########",
                              "...........",
                              ".....#.....",
                              "....###....",
                              "....###....",
                              "...#####...",
                              "...#####...",
                              "..#######..",
                              "..#######..",
                              ".#########.",
                              "..........."};
constexpr FSign LOWER_ONLY = {"...........",
                              ".#########.",
                              "..#######..",
                              "..#######..",
                              "...#####...",
                              "...#####...",
                              "....###....",
                              "....###....",
                              ".....#.....",
                              "...........",
                              "###########"};
constexpr FSign LOWER = {"...........",
                         ".#########.",
                         "..#######..",
                         "..#######..",
                         "...#####...",
                         "...#####...",
                         "....###....",
                         "....###....",
                         ".....#.....",
                         ".....#.....",
                         "..........."};
constexpr FSign SMOOTH = {"...........",
                          "..##.......",
                          ".####....#.",
                          "##..##..##.",
                          "#....####..",
                          "......##...",
                          "..##.......",
                          ".####....#.",
                          "##..##..##.",
                          "#....####..",
                          "......##..."};
constexpr FSign LEVEL = {"...........",
                         "...........",
                         "...........",
                         "###########",
                         "###########",
                         "...........",
                         "...........",
                         "###########",
                         "###########",
                         "...........",
                         "..........."};
constexpr FSign TERRACE = {"...........",
                           ".......####",
                           ".......####",
                           ".......#...",
                           "....####...",
                           "....####...",
                           "....#......",
                           ".####......",
                           ".####......",
                           "##.........",
                           "##........."};
constexpr FSign POINT = {".....#.....",
                         "....###....",
                         "...#####...",
                         ".....#.....",
                         ".....#.....",
                         ".....#.....",
                         ".....#.....",
                         ".....#.....",
                         "...#####...",
                         "....###....",
                         ".....#....."};
constexpr FSign RAMP = {"...........",
                        ".........##",
                        "........###",
                        "......#####",
                        ".....##..##",
                        "....##...##",
                        "..###....##",
                        ".###.....##",
                        "###########",
                        "###########",
                        "..........."};
constexpr FSign PAINT = {".....#.....",
                         ".....#.....",
                         "....###....",
                         "...#####...",
                         "...#####...",
                         "..#######..",
                         ".#########.",
                         ".#########.",
                         ".#########.",
                         "..#######..",
                         "....###...."};

// Null for a tool that has none.
const char* const* FindSign(const SToolMark& tool)
{
    constexpr const char* const* SIGNS[] = {nullptr, RAISE, LOWER, RAISE_ONLY, LOWER_ONLY};
    constexpr const char* const* KINDS[] = {
        nullptr, nullptr, SMOOTH, LEVEL, TERRACE, POINT, RAMP, PAINT};
    return tool.eSign != EToolSign::Neutral ? SIGNS[static_cast<size_t>(tool.eSign)]
                                            : KINDS[static_cast<size_t>(tool.eKind)];
}

// The depth of a point in the picture, -1 to 1.
float GetDepth(const SViewProjection& view, const SVec3& point)
{
    float m[16];
    view.GetMatrix(m);
    const float fZ = m[2] * point.x + m[6] * point.y + m[10] * point.z + m[14];
    const float fW = m[3] * point.x + m[7] * point.y + m[11] * point.z + m[15];
    return fZ / fW;
}

} // namespace

bool CMarkSign::Make(OpenGl& gl, std::string& strFault)
{
    return m_Shader.Make(gl, SIGN_VERT, SIGN_FRAG, strFault);
}

void CMarkSign::Release(OpenGl& gl)
{
    m_Shader.Release(gl);
}

void CMarkSign::Draw(OpenGl& gl,
                     GLuint uNothing,
                     const SViewProjection& view,
                     const SGroundMark& mark,
                     const SVec3& middle)
{
    const char* const* pRows = mark.bTool ? FindSign(mark.tool) : nullptr;
    float fX = 0.0F;
    float fY = 0.0F;
    if (pRows == nullptr || mark.fSignPixels <= 0.0F || !view.Project(middle, fX, fY))
    {
        return;
    }
    int rows[SIDE] = {};
    for (int y = 0; y < SIDE; ++y)
    {
        for (int x = 0; x < SIDE; ++x)
        {
            rows[y] |= pRows[y][x] == '#' ? 1 << x : 0;
        }
    }
    const auto fWidth = static_cast<float>(view.iWidth);
    const auto fHeight = static_cast<float>(view.iHeight);
    // Whole pixels, or the points of the sign would not be as large as one another.
    const float fLeft = std::floor(fX - (AWAY + FRAME) * mark.fSignPixels);
    const float fTop = std::floor(fY + AWAY * mark.fSignPixels);
    const SVec3 near = AddScaled(view.position, Subtract(middle, view.position), BEFORE);
    m_Shader.Use(gl);
    m_Shader.Set("uPlace",
                 fLeft / fWidth * 2.0F - 1.0F,
                 1.0F - fTop / fHeight * 2.0F,
                 FRAME * mark.fSignPixels / fWidth * 2.0F,
                 -FRAME * mark.fSignPixels / fHeight * 2.0F);
    // From above nothing is before the ground. What is seen may begin behind that point.
    m_Shader.Set("uDepth", view.bOrthographic ? -1.0F : std::max(GetDepth(view, near), -1.0F));
    m_Shader.Set("uPoints", FRAME);
    m_Shader.Set("uRows", rows, SIDE);
    m_Shader.Set("uColor", GetMarkColor(mark.tool.eSign));
    gl.glEnable(GL_BLEND);
    gl.glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ZERO, GL_ONE);
    gl.glDepthMask(GL_FALSE);
    gl.glBindVertexArray(uNothing);
    gl.glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    gl.glDepthMask(GL_TRUE);
    gl.glDisable(GL_BLEND);
}
