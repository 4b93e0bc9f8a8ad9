#pragma once

#include <string>

class CTerrain;

// Shaded pictures of a script's levels. The height range of a level's first picture holds for its
// later ones, so that colours before and after a stroke can be compared.
class CScriptPicture
{
public:
    // The next picture is the first one of another level.
    void ForgetLevel() { m_Low = m_High = 0.0F; }

    // Draws the terrain from above and writes the picture. False, mostly with one logged line, when
    // it cannot be drawn or written.
    bool Write(const CTerrain& terrain, const std::string& strPath);

private:
    float m_Low = 0.0F; // terrain units; equal before the first picture
    float m_High = 0.0F;
};
