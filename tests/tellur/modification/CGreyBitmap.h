#pragma once

#include "host/Image.h"
#include "tellur/stroke/ITellurBitmap.h"

#include <memory>
#include <vector>

// A brush shape straight from bytes, row by row.
class CGreyBitmap : public ITellurBitmap
{
public:
    CGreyBitmap(int iWidth, int iHeight, const std::vector<uint8_t>& bytes)
        : m_Image(IL_CreateImageFromBufferBPP(
              static_cast<uint32_t>(iWidth), static_cast<uint32_t>(iHeight), 8, bytes.data()))
    {
    }

    CGreyBitmap() = default; // no image

    const char* GetPath() const override { return nullptr; }

    bool Load(const char*) override { return false; }

    int GetXSize() const override { return m_Image ? static_cast<int>(m_Image->GetWidth()) : 0; }

    int GetYSize() const override { return m_Image ? static_cast<int>(m_Image->GetHeight()) : 0; }

    ITellurBitmap* Clone() const override { return nullptr; }

    uint8_t GetPoint(int iX, int iY) const override
    {
        ++m_Points;
        return m_Image ? m_Image->GetRawData()[iY * GetXSize() + iX] : uint8_t(0);
    }

    IImage* GetImage() override { return m_Image.get(); }

    const IImage* GetImage() const override { return m_Image.get(); }

    bool Save(fs::ifile&, int) const override { return false; }

    bool LoadIni(const CTCPARSE_KEYWORD*) override { return false; }

    int GetPointCalls() const { return m_Points; }

private:
    std::unique_ptr<IImage> m_Image;
    mutable int m_Points = 0;
};
