#pragma once

#include "functions/ITellurFunction.h"
#include "host/FileSystem.h"
#include "host/Image.h"
#include "tests/support/CTempFolder.h"
#include "tests/support/FakeWorld.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

// Saves pixels as a picture; the extension names the format.
inline void WritePicture(const std::string& strPath,
                         uint32_t uWidth,
                         uint32_t uHeight,
                         uint32_t uBitsPerPixel,
                         const std::vector<uint8_t>& bytes,
                         const IPalette* pPalette = nullptr)
{
    ASSERT_EQ(bytes.size(), size_t{uWidth} * uHeight * uBitsPerPixel / 8);
    const std::unique_ptr<IImage> pImage(
        IL_CreateImageFromBufferBPP(uWidth, uHeight, uBitsPerPixel, bytes.data()));
    ASSERT_TRUE(IL_SaveImage(strPath.c_str(), pImage.get(), pPalette));
}

// Makes a temporary folder the one that relative paths start from.
class CUserFolder : public CTempFolder
{
public:
    CUserFolder() { fs::set_user_root(GetFolder().c_str()); }

    ~CUserFolder() { fs::set_user_root(nullptr); }
};

// What a file holds after the writer has run on it.
template <class TFn> std::string GetWritten(TFn fnWrite)
{
    const CTempFolder folder;
    fs::ifile file;
    EXPECT_TRUE(file.open(folder.Path("written").c_str(), fs::mode_write));
    fnWrite(file);
    EXPECT_TRUE(file.close());
    return ReadBytes(folder.Path("written"));
}

// Records what a brush hands on to its function. Clones share the list.
class CRecordingFunction : public ITellurFunction
{
public:
    explicit CRecordingFunction(const char* pszClassName, FakeCalls* pCalls = nullptr)
        : m_ClassName(pszClassName)
        , m_Calls(pCalls)
    {
    }

    ~CRecordingFunction() override { AddCall(m_Calls, "~%s", m_ClassName); }

    const char* GetClassName() const override { return m_ClassName; }

    int Start(ITerrainModification* pModification,
              ITellurBrush* pBrush,
              ViewId view,
              uint32_t uFlags,
              ViewPoint point) override
    {
        Remember(pModification, pBrush);
        AddCall(m_Calls, "Start(%u, %u, %u)", view, uFlags, point);
        return 11;
    }

    int End(ITerrainModification* pModification,
            ITellurBrush* pBrush,
            ViewId view,
            uint32_t uFlags,
            ViewPoint point) override
    {
        Remember(pModification, pBrush);
        AddCall(m_Calls, "End(%u, %u, %u)", view, uFlags, point);
        return 12;
    }

    int OnMouseMove(ITerrainModification* pModification,
                    ITellurBrush* pBrush,
                    ViewId view,
                    uint32_t uFlags,
                    ViewPoint point,
                    uintptr_t uExtra1,
                    uintptr_t uExtra2) override
    {
        Remember(pModification, pBrush);
        AddCall(m_Calls, "Move(%u, %u, %u, %zu, %zu)", view, uFlags, point, uExtra1, uExtra2);
        return 13;
    }

    float MergeHeight(float, float, float fCandidate) const override { return fCandidate; }

    bool Render(ITerrainModification* pModification,
                ITellurBrush* pBrush,
                const SVec3* pPickedPoint) override
    {
        Remember(pModification, pBrush);
        AddCall(m_Calls, "Render(%g)", pPickedPoint->x);
        return true;
    }

    CRTTIObject* GetRTTIObject() override { return nullptr; }

    const CRTTIObject* GetRTTIObject() const override { return nullptr; }

    bool SetCursor() override
    {
        AddCall(m_Calls, "SetCursor()");
        return true;
    }

    ITellurFunction* Clone() const override
    {
        auto* pClone = new CRecordingFunction(m_ClassName, m_Calls);
        pClone->bWorks = bWorks;
        return pClone;
    }

    bool Save(fs::ifile& file, int iIndent) const override
    {
        file.printf("<function at %d>\n", iIndent);
        return bWorks;
    }

    bool Load(const CTCPARSE_KEYWORD* pBlock) override
    {
        AddCall(m_Calls, "Load(%s)", pBlock != nullptr ? "block" : "null");
        return bWorks;
    }

    bool bWorks = true; // Save and Load
    ITerrainModification* pLastModification = nullptr;
    ITellurBrush* pLastBrush = nullptr;

private:
    void Remember(ITerrainModification* pModification, ITellurBrush* pBrush)
    {
        pLastModification = pModification;
        pLastBrush = pBrush;
    }

    const char* m_ClassName;
    FakeCalls* m_Calls;
};
