#pragma once

#include "editor/core/CEditorHost.h"
#include "editor/core/CHeadlessFace.h"
#include "editor/core/CLevelDocument.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/FileSystem.h"
#include "tests/editor/CStep.h"
#include "tests/support/CTempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

inline constexpr SVec3 SIZE = {160.0F, 50.0F, 160.0F};

// A level document on a host without a window, in an empty folder.
class CLevelDocumentTest : public testing::Test
{
protected:
    CLevelDocumentTest()
    {
        ::setenv("XDG_STATE_HOME", m_Folder.Path("state").c_str(), 1);
        fs::set_user_root(m_Folder.GetFolder().c_str());
    }

    ~CLevelDocumentTest() override { fs::set_user_root(nullptr); }

    CTerrain* GetTerrain() { return m_Host.GetEngine().GetCWorld().GetCTerrain(); }

    void SetAll(float fHeight)
    {
        CTerrain* pTerrain = GetTerrain();
        const std::vector<float> heights(
            size_t{pTerrain->GetVerticesX()} * pTerrain->GetVerticesZ(), fHeight);
        pTerrain->SetHeights(heights.data(), heights.size(), {{}, pTerrain->GetSize()});
    }

    void MakeLevel(const std::string& strName, float fHeight, uint32_t uCells = 16)
    {
        ASSERT_TRUE(m_Document.New(uCells, SIZE, fHeight));
        ASSERT_TRUE(m_Document.SaveAs(m_Folder.Path(strName.c_str()).c_str()));
    }

    // A step of the history, as a stroke makes it.
    void Change(float fHeight)
    {
        SetAll(fHeight);
        m_Host.AddUndo(new CStep);
    }

    std::vector<std::string> GetNames()
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_Folder.GetFolder()))
        {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    float GetHeight() { return GetTerrain()->GetHeightAt(80.0F, 80.0F); }

    CTempFolder m_Folder;
    CHeadlessFace m_Face;
    CEditorHost m_Host{m_Face};
    CLevelDocument m_Document{m_Host};
};
