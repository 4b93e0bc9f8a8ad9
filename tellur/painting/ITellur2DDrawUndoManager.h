#pragma once

#include <cstdint>

class IImage;

// Undo and redo of strokes on a bitmap of 32 bits a texel.
class ITellur2DDrawUndoManager
{
public:
    virtual ~ITellur2DDrawUndoManager() = default;
    // One stroke, also when it changed nothing. Images are borrowed; a null one adds nothing.
    virtual void AddEntry(const IImage* pBefore, const IImage* pAfter) = 0;
    virtual void Clear() = 0;
    // Write a stroke's old or new texels into the image. False when there is none, when it changed
    // nothing and when it does not fit the image; it counts as taken back all the same.
    virtual bool Undo(IImage* pImage) = 0;
    virtual bool Redo(IImage* pImage) = 0;
    virtual void SetStackSize(uint32_t uSize) = 0; // the oldest strokes that are too many go
    virtual uint32_t GetStackSize() const = 0;
};
