// Undo and redo of strokes.

#include "host/Image.h"
#include "tellur/painting/CTellur2DDrawUndoManager.h"
#include "tests/support/AllocationCount.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace
{

class CPaintUndo : public testing::Test
{
protected:
    CPaintUndo() { m_Image = Make(3, 2, EImageFormat::Rgba32); }

    static std::unique_ptr<IImage> Make(uint32_t uWidth, uint32_t uHeight, EImageFormat eFormat)
    {
        return std::unique_ptr<IImage>(
            IL_CreateImageFromBufferFormat(uWidth, uHeight, eFormat, nullptr));
    }

    // A stroke that writes a number into the byte of some texels.
    void Stroke(uint8_t uNumber, const std::vector<size_t>& bytes)
    {
        const std::unique_ptr<IImage> pBefore(IL_CreateImageFromImage(m_Image.get()));
        for (const size_t nByte : bytes)
        {
            m_Image->GetRawData()[nByte] = uNumber;
        }
        m_Undo.AddEntry(pBefore.get(), m_Image.get());
    }

    int Byte(size_t nByte) { return m_Image->GetRawData()[nByte]; }

    CTellur2DDrawUndoManager m_Undo;
    std::unique_ptr<IImage> m_Image;
};

} // namespace

TEST_F(CPaintUndo, StepsGoBackAndForthThroughWholeTexels)
{
    EXPECT_EQ(m_Undo.GetStackSize(), 10U);
    EXPECT_FALSE(m_Undo.Undo(m_Image.get()));
    EXPECT_FALSE(m_Undo.Redo(m_Image.get()));
    Stroke(11, {0, 23});
    Stroke(22, {0, 5, 14});
    EXPECT_TRUE(m_Undo.Undo(m_Image.get()));
    EXPECT_EQ(Byte(0), 11);
    EXPECT_EQ(Byte(5), 0);
    EXPECT_EQ(Byte(23), 11);
    EXPECT_TRUE(m_Undo.Undo(m_Image.get()));
    EXPECT_EQ(Byte(0), 0);
    EXPECT_EQ(Byte(23), 0);
    EXPECT_FALSE(m_Undo.Undo(m_Image.get()));
    EXPECT_TRUE(m_Undo.Redo(m_Image.get()));
    EXPECT_TRUE(m_Undo.Redo(m_Image.get()));
    EXPECT_EQ(Byte(0), 22);
    EXPECT_EQ(Byte(14), 22);
    EXPECT_EQ(Byte(23), 11);
    EXPECT_FALSE(m_Undo.Redo(m_Image.get()));

    m_Undo.Undo(m_Image.get());
    m_Undo.Undo(m_Image.get());
    Stroke(33, {3}); // what could be redone goes
    EXPECT_EQ(m_Undo.GetCount(), 1U);
    EXPECT_FALSE(m_Undo.Redo(m_Image.get()));
    m_Undo.Clear();
    EXPECT_FALSE(m_Undo.Undo(m_Image.get()));
    EXPECT_EQ(Byte(3), 33);
}

TEST_F(CPaintUndo, TheOldestStrokesAreDroppedAtCapacity)
{
    m_Undo.SetStackSize(5);
    for (uint8_t i = 1; i <= 6; ++i)
    {
        Stroke(i, {0});
    }
    for (int i = 5; i >= 1; --i)
    {
        EXPECT_TRUE(m_Undo.Undo(m_Image.get()));
        EXPECT_EQ(Byte(0), i);
    }
    EXPECT_FALSE(m_Undo.Undo(m_Image.get()));
}

TEST_F(CPaintUndo, ASmallerCapacityCutsOldestEntriesAndPosition)
{
    m_Undo.SetStackSize(5);
    for (uint8_t i = 1; i <= 5; ++i)
    {
        Stroke(i, {0});
    }
    m_Undo.SetStackSize(2);
    EXPECT_EQ(m_Undo.GetPosition(), 2U);
    EXPECT_EQ(m_Undo.GetCount(), 2U);
    EXPECT_TRUE(m_Undo.Undo(m_Image.get()));
    EXPECT_TRUE(m_Undo.Undo(m_Image.get()));
    EXPECT_FALSE(m_Undo.Undo(m_Image.get()));
    EXPECT_EQ(Byte(0), 3);

    // After undoing, entries that were to be redone may count as undoable.
    m_Undo.SetStackSize(8);
    m_Undo.Clear();
    for (uint8_t i = 1; i <= 5; ++i)
    {
        Stroke(i, {0});
    }
    for (int i = 0; i < 3; ++i)
    {
        m_Undo.Undo(m_Image.get());
    }
    m_Undo.SetStackSize(3);
    EXPECT_EQ(m_Undo.GetPosition(), 2U);
    EXPECT_TRUE(m_Undo.Undo(m_Image.get())); // takes back the fourth stroke
    EXPECT_EQ(Byte(0), 3);
    m_Undo.SetStackSize(20);
    EXPECT_EQ(m_Undo.GetStackSize(), 20U);
    EXPECT_EQ(m_Undo.GetCount(), 3U);
}

TEST_F(CPaintUndo, EntriesThatDoNotFitMoveThePositionAndNothingElse)
{
    Stroke(1, {});
    EXPECT_EQ(m_Undo.GetCount(), 1U);
    EXPECT_FALSE(m_Undo.Undo(m_Image.get())) << "it changed nothing";
    EXPECT_EQ(m_Undo.GetPosition(), 0U);
    EXPECT_FALSE(m_Undo.Redo(m_Image.get()));
    EXPECT_EQ(m_Undo.GetPosition(), 1U);

    Stroke(7, {0});
    const auto pSmall = Make(1, 2, EImageFormat::Rgba32);
    const auto pGrey = Make(8, 8, EImageFormat::Indexed8);
    const IImage* images[] = {pSmall.get(), pGrey.get(), nullptr};
    for (const IImage* pImage : images)
    {
        EXPECT_FALSE(m_Undo.Undo(const_cast<IImage*>(pImage)));
        EXPECT_EQ(m_Undo.GetPosition(), 1U);
        EXPECT_FALSE(m_Undo.Redo(const_cast<IImage*>(pImage)));
        EXPECT_EQ(m_Undo.GetPosition(), 2U);
    }
    const auto pLarge = Make(4, 2, EImageFormat::Rgba32);
    pLarge->GetRawData()[0] = 7;
    EXPECT_TRUE(m_Undo.Undo(pLarge.get())) << "as many texels and more";
    EXPECT_EQ(pLarge->GetRawData()[0], 0);

    m_Undo.Clear();
    const auto pOther = Make(3, 2, EImageFormat::Rgba32);
    m_Undo.AddEntry(nullptr, m_Image.get());
    m_Undo.AddEntry(m_Image.get(), nullptr);
    EXPECT_EQ(m_Undo.GetCount(), 0U);
    m_Undo.AddEntry(pSmall.get(), m_Image.get()); // another size
    m_Undo.AddEntry(pGrey.get(), pGrey.get());    // another depth
    EXPECT_EQ(m_Undo.GetCount(), 2U);
    EXPECT_FALSE(m_Undo.Undo(m_Image.get()));
    EXPECT_FALSE(m_Undo.Undo(m_Image.get()));
}

TEST_F(CPaintUndo, MemoryGrowsWithWhatChanged)
{
    m_Image = Make(1024, 1024, EImageFormat::Rgba32);
    for (const size_t nChanged : {size_t{0}, size_t{1}, size_t{1000}})
    {
        const std::unique_ptr<IImage> pBefore(IL_CreateImageFromImage(m_Image.get()));
        for (size_t i = 0; i < nChanged; ++i)
        {
            ++m_Image->GetRawData()[i * 4000];
        }
        const size_t nBytes = GetAllocatedBytes();
        m_Undo.AddEntry(pBefore.get(), m_Image.get());
        // Three numbers for each, and what growing towards that throws away.
        EXPECT_LE(GetAllocatedBytes() - nBytes, 300 + nChanged * 12 * 4) << nChanged;
    }
    EXPECT_TRUE(m_Undo.Undo(m_Image.get()));
    EXPECT_TRUE(m_Undo.Undo(m_Image.get()));
    EXPECT_FALSE(m_Undo.Undo(m_Image.get()));
    EXPECT_EQ(Byte(0), 0);
    EXPECT_EQ(Byte(999 * 4000), 0);
}
