#pragma once

#include <cstdint>

namespace fs
{
class ifile;
}
class CTCPARSE_KEYWORD;
class IImage;

// The picture that gives a brush its shape: square, one byte a pixel. Owned by its brush.
class ITellurBitmap
{
public:
    virtual ~ITellurBitmap() = default;
    virtual const char* GetPath() const = 0; // null until a load succeeded
    virtual bool Load(const char* pszFilePath) = 0;
    virtual int GetXSize() const = 0; // pixels, 0 without an image
    virtual int GetYSize() const = 0;
    virtual ITellurBitmap* Clone() const = 0;           // owned by the caller
    virtual uint8_t GetPoint(int iX, int iY) const = 0; // the position must lie in the image
    virtual IImage* GetImage() = 0;                     // borrowed, null without one
    virtual const IImage* GetImage() const = 0;
    virtual bool Save(fs::ifile& file, int iIndent) const = 0;
    // pBlock: first node of the parsed block.
    virtual bool LoadIni(const CTCPARSE_KEYWORD* pBlock) = 0;
};
