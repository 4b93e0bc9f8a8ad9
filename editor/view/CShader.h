#pragma once

#include "editor/view/OpenGl.h"
#include "host/HostTypes.h"

#include <string>

// A linked program and its uniforms by name. Made, used and released with its context current.
class CShader
{
public:
    // Compiles and links the two texts. False, with one line in strFault, when the driver refuses
    // one of them. strDefines: lines that the second one begins with, behind its version.
    bool Make(OpenGl& gl,
              const char* pszVertex,
              const char* pszFragment,
              std::string& strFault,
              const std::string& strDefines = "");
    void Release(OpenGl& gl);

    bool IsMade() const { return m_Program != 0; }

    void Use(OpenGl& gl);
    void Set(const char* pszName, int iValue);
    void Set(const char* pszName, float fValue);
    void Set(const char* pszName, float fX, float fY);
    void Set(const char* pszName, int iX, int iY);
    void Set(const char* pszName, const SVec3& vec);
    void Set(const char* pszName, float fX, float fY, float fZ, float fW);
    void Set(const char* pszName, const SColor& color);
    void Set(const char* pszName, const SColor* pColors, int nCount);
    void Set(const char* pszName, const SVec4* pVectors, int nCount);
    void Set(const char* pszName, const int* pValues, int nCount);
    void SetMatrix(const char* pszName, const float (&matrix)[16]);

private:
    GLint Find(const char* pszName) const;

    OpenGl* m_Gl = nullptr; // of the last Use
    GLuint m_Program = 0;
};
