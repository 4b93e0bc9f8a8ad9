#pragma once

#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "tests/editor/app/EditorFixture.h"

#include <QLabel>

#include <algorithm>
#include <cmath>

inline constexpr size_t COLUMNS = 129; // 320 units
inline constexpr size_t ROWS = 65;     // 192 units: cells are not square either

// Strokes on ground that is not square, in the view from above, and what is recorded of them.
class CStrokeImages : public CEditorFixture
{
protected:
    void StartOblong()
    {
        ASSERT_NO_FATAL_FAILURE(Start());
        SHeightField field;
        field.Allocate(COLUMNS, ROWS);
        field.size = {320.0F, 100.0F, 192.0F};
        std::fill_n(field.pHeights.get(), field.GetCount(), 20.0F);
        GetHost().TakeLevel(std::move(field));
        m_Window->GetViews().FrameAll();
        m_Flat = GetHeights();
        ASSERT_TRUE(m_Editor->GetRecorder()->Start(m_Folder.Path("recorded.tellur")));
        Settle();
    }

    // Of a place of the ground in the view from above, as a share of the view.
    QPointF At(float fX, float fZ)
    {
        CViewWidget& view = GetView(1);
        float fAtX = 0.0F;
        float fAtY = 0.0F;
        EXPECT_TRUE(
            view.GetNavigator().GetProjection(GetTerrain()).Project({fX, 20.0F, fZ}, fAtX, fAtY));
        const double fScale = view.devicePixelRatioF();
        return {static_cast<double>(fAtX) / (view.width() * fScale),
                static_cast<double>(fAtY) / (view.height() * fScale)};
    }

    void GoTo(float fX, float fZ) { MoveTo(GetView(1), At(fX, fZ)); }

    void DragTo(float fX, float fZ, float fToX, float fToZ)
    {
        Drag(GetView(1), At(fX, fZ), At(fToX, fToZ), 6);
    }

    void ClickAt(float fX, float fZ)
    {
        GoTo(fX, fZ);
        Do({"click", "1"});
    }

    float GetHeight(float fX, float fZ)
    {
        SVec3 at = {fX, 0.0F, fZ};
        EXPECT_TRUE(GetTerrain()->PickDown(at));
        return at.y;
    }

    SInputSettings& GetInput() { return m_Window->GetSettings().input; }

    // What is recorded until now gives the same heights, with as many steps.
    void ExpectReplay(size_t nSteps)
    {
        const std::string strHeights = m_Folder.Path("now.height");
        const std::string strScript = m_Folder.Path("recorded.tellur");
        EXPECT_EQ(GetHost().GetUndoStack().GetCount(), nSteps);
        ASSERT_TRUE(GetHost().GetEngine().GetWorld()->GetTerrain()->SaveHeightMap(
            strHeights.c_str(), nullptr, 0, 0));
        ASSERT_TRUE(m_Editor->GetRecorder()->Stop());
        WriteBytes(strScript,
                   ReadBytes(strScript) + "expect_undo( " + std::to_string(nSteps) + " )\n");
        const std::string strAgain = ReplayScript(strScript, m_Folder.Path("again.height"));
        EXPECT_TRUE(strAgain == ReadBytes(strHeights));
    }

    // The largest difference of a vertex and its image; sees to it that both sides have changed.
    double GetAsymmetry(bool bX, bool bZ)
    {
        const std::vector<float> heights = GetHeights();
        double fMost = 0.0;
        bool bLeft = false;
        bool bRight = false;
        for (size_t z = 0; z < ROWS; ++z)
        {
            for (size_t x = 0; x < COLUMNS; ++x)
            {
                const size_t i = z * COLUMNS + x;
                const size_t iImage =
                    (bZ ? ROWS - 1 - z : z) * COLUMNS + (bX ? COLUMNS - 1 - x : x);
                fMost =
                    std::max(fMost, std::fabs(static_cast<double>(heights[i]) - heights[iImage]));
                const bool bChanged = heights[i] != 20.0F;
                bLeft = bLeft || (bChanged && i < iImage);
                bRight = bRight || (bChanged && i > iImage);
            }
        }
        EXPECT_TRUE(bLeft && bRight);
        return fMost;
    }

    float GetHighest()
    {
        const std::vector<float> heights = GetHeights();
        return *std::max_element(heights.begin(), heights.end());
    }

    std::string GetWords()
    {
        return m_Window->findChild<QLabel*>("status-stroke")->text().toStdString();
    }

    std::vector<float> m_Flat;
};
