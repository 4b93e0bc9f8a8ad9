#pragma once

#include "tellur/stroke/ITellurBitmap.h"

#include <memory>
#include <optional>
#include <string>

// The brush image and the file it came from. The prepared image is always square with one byte a
// pixel.
class CTellurBitmap : public ITellurBitmap
{
public:
    CTellurBitmap();
    ~CTellurBitmap() override;
    CTellurBitmap(const CTellurBitmap&) = delete;
    CTellurBitmap& operator=(const CTellurBitmap&) = delete;

    const char* GetPath() const override;
    bool Load(const char* pszFilePath) override; // a failed load leaves the bitmap empty
    int GetXSize() const override;
    int GetYSize() const override;
    CTellurBitmap* Clone() const override;
    uint8_t GetPoint(int iX, int iY) const override;
    IImage* GetImage() override;
    const IImage* GetImage() const override;
    bool Save(fs::ifile& file, int iIndent) const override;
    bool LoadIni(const CTCPARSE_KEYWORD* pBlock) override;

private:
    bool PrepareImage(std::unique_ptr<IImage> pSource);

    std::optional<std::string> m_Path;
    std::unique_ptr<IImage> m_Image;
};
