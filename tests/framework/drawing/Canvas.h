#pragma once

#include "framework/drawing/CDrawContext.h"

#include <QtGui/QGuiApplication>

#include <gtest/gtest.h>

#include <map>
#include <string>

constexpr int DEPTHS[] = {16, 24, 32};
constexpr ColorRef WHITE = 0xFFFFFF;
constexpr ColorRef RED = 0x0000FF;
constexpr ColorRef BLUE = 0xFF0000;

// A Qt application without a screen while it lives.
class CGuiApplication
{
public:
    QGuiApplication& Get() { return m_Application; }

private:
    int m_Count = 1;
    char m_Name[5] = "test";
    char* m_Arguments[2] = {m_Name, nullptr};
    const bool m_Offscreen = qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication m_Application{m_Count, m_Arguments};
};

// What is left of a colour at a depth.
inline ColorRef AtDepth(ColorRef uColor, int nBits)
{
    const auto spread5 = [](int i)
    {
        return static_cast<uint8_t>(i / 8 * 8 + i / 8 / 4);
    };
    const auto spread6 = [](int i)
    {
        return static_cast<uint8_t>(i / 4 * 4 + i / 4 / 16);
    };
    return nBits != 16 ? uColor
                       : MakeColor(spread5(GetRed(uColor)),
                                   spread6(GetGreen(uColor)),
                                   spread5(GetBlue(uColor)));
}

// The pixels of a context as a picture of letters, rows joined by '/'; '?' for a colour without
// one.
inline std::string Show(const CDrawContext& context, const std::map<char, ColorRef>& letters)
{
    std::string strPicture;
    const SRect box = context.GetClipBox();
    for (int y = box.top; y < box.bottom; ++y)
    {
        strPicture += y > box.top ? "/" : "";
        for (int x = box.left; x < box.right; ++x)
        {
            char cFound = '?';
            for (const auto& [cLetter, uColor] : letters)
            {
                const bool bSame =
                    AtDepth(uColor, context.GetBitsPerPixel()) == context.GetPixel(x, y);
                cFound = bSame ? cLetter : cFound;
            }
            strPicture += cFound;
        }
    }
    return strPicture;
}

inline std::string Show(const CDrawContext& context)
{
    return Show(context, {{'.', WHITE}, {'#', 0}, {'R', RED}, {'B', BLUE}});
}

// A white buffer with a context over it.
struct SCanvas
{
    SCanvas(int iWidth, int iHeight, int nBits, double fScale = 1.0)
        : bCreated(buffer.Create(iWidth, iHeight, nBits))
        , context(buffer, fScale)
    {
        EXPECT_TRUE(bCreated);
        context.FillRect(buffer.GetBounds(), WHITE);
    }

    CPixelBuffer buffer;
    bool bCreated;
    CDrawContext context;
};
