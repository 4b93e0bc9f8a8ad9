#include "editor/view/CShader.h"

#include <algorithm>

namespace
{

constexpr GLsizei LONGEST_FAULT = 1024;

std::string GetFirstLine(std::string strText)
{
    strText.resize(std::min(strText.find('\n'), strText.size()));
    return strText;
}

GLuint Compile(OpenGl& gl, GLenum eKind, const char* pszText, std::string& strFault)
{
    const GLuint uShader = gl.glCreateShader(eKind);
    gl.glShaderSource(uShader, 1, &pszText, nullptr);
    gl.glCompileShader(uShader);
    GLint iDone = 0;
    gl.glGetShaderiv(uShader, GL_COMPILE_STATUS, &iDone);
    if (iDone == 0)
    {
        char szText[LONGEST_FAULT] = {};
        gl.glGetShaderInfoLog(uShader, LONGEST_FAULT, nullptr, szText);
        strFault = "the graphics driver refuses a shader: " + GetFirstLine(szText);
        gl.glDeleteShader(uShader);
        return 0;
    }
    return uShader;
}

} // namespace

bool CShader::Make(OpenGl& gl,
                   const char* pszVertex,
                   const char* pszFragment,
                   std::string& strFault,
                   const std::string& strDefines)
{
    std::string strFragment = pszFragment;
    strFragment.insert(strFragment.find('\n') + 1, strDefines);
    const GLuint uVertex = Compile(gl, GL_VERTEX_SHADER, pszVertex, strFault);
    const GLuint uFragment =
        uVertex != 0 ? Compile(gl, GL_FRAGMENT_SHADER, strFragment.c_str(), strFault) : 0;
    if (uFragment == 0)
    {
        gl.glDeleteShader(uVertex);
        return false;
    }
    m_Program = gl.glCreateProgram();
    gl.glAttachShader(m_Program, uVertex);
    gl.glAttachShader(m_Program, uFragment);
    gl.glLinkProgram(m_Program);
    gl.glDeleteShader(uVertex);
    // Shaders that are attached stay until the program goes.
    gl.glDeleteShader(uFragment);
    GLint iDone = 0;
    gl.glGetProgramiv(m_Program, GL_LINK_STATUS, &iDone);
    if (iDone == 0)
    {
        char szText[LONGEST_FAULT] = {};
        gl.glGetProgramInfoLog(m_Program, LONGEST_FAULT, nullptr, szText);
        strFault = "the graphics driver refuses a shader: " + GetFirstLine(szText);
        Release(gl);
    }
    return iDone != 0;
}

void CShader::Release(OpenGl& gl)
{
    gl.glDeleteProgram(m_Program);
    m_Program = 0;
}

void CShader::Use(OpenGl& gl)
{
    m_Gl = &gl;
    gl.glUseProgram(m_Program);
}

GLint CShader::Find(const char* pszName) const
{
    // A name that the program does not use has no place, and setting it does nothing.
    return m_Gl->glGetUniformLocation(m_Program, pszName);
}

void CShader::Set(const char* pszName, int iValue)
{
    m_Gl->glUniform1i(Find(pszName), iValue);
}

void CShader::Set(const char* pszName, float fValue)
{
    m_Gl->glUniform1f(Find(pszName), fValue);
}

void CShader::Set(const char* pszName, float fX, float fY)
{
    m_Gl->glUniform2f(Find(pszName), fX, fY);
}

void CShader::Set(const char* pszName, int iX, int iY)
{
    m_Gl->glUniform2i(Find(pszName), iX, iY);
}

void CShader::Set(const char* pszName, const SVec3& vec)
{
    m_Gl->glUniform3f(Find(pszName), vec.x, vec.y, vec.z);
}

void CShader::Set(const char* pszName, float fX, float fY, float fZ, float fW)
{
    m_Gl->glUniform4f(Find(pszName), fX, fY, fZ, fW);
}

void CShader::Set(const char* pszName, const SColor& color)
{
    Set(pszName, color.r, color.g, color.b, color.a);
}

void CShader::Set(const char* pszName, const SColor* pColors, int nCount)
{
    m_Gl->glUniform4fv(Find(pszName), nCount, &pColors->r);
}

void CShader::Set(const char* pszName, const SVec4* pVectors, int nCount)
{
    m_Gl->glUniform4fv(Find(pszName), nCount, &pVectors->x);
}

void CShader::Set(const char* pszName, const int* pValues, int nCount)
{
    m_Gl->glUniform1iv(Find(pszName), nCount, pValues);
}

void CShader::SetMatrix(const char* pszName, const float (&matrix)[16])
{
    m_Gl->glUniformMatrix4fv(Find(pszName), 1, GL_FALSE, matrix);
}
