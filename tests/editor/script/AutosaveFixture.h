#pragma once

#include "editor/autosave/AutosaveFiles.h"
#include "editor/autosave/CAutosave.h"
#include "editor/core/CLevelDocument.h"
#include "editor/script/CScriptPlayer.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/Image.h"
#include "tests/editor/script/WalkFixture.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <csignal>
#include <functional>

// A level with a file and its autosave, while the real plug-in sculpts in a process that is killed.
class CAutosaveTest : public CWalkFixture
{
protected:
    CAutosaveTest()
        : m_Level(m_Folder.Path("l.level"))
    {
    }

    ~CAutosaveTest() override { End(); }

    void End() // as the editor ends
    {
        if (m_Autosave != nullptr)
        {
            m_Autosave->SetPlugin(nullptr);
            m_Autosave.reset();
        }
    }

    // A level with a file, opened, and nothing to undo.
    void Start()
    {
        ASSERT_NO_FATAL_FAILURE(CWalkFixture::Start());
        m_Host.GetInput().EndDrag();
        ASSERT_TRUE(m_Document.SaveAs(m_Level.c_str()));
        Open();
    }

    void Open()
    {
        End();
        m_Autosave = std::make_unique<CAutosave>(m_Host, m_Document);
        m_Autosave->SetPlugin(m_Loader.GetPlugin());
        m_Now = CAutosave::TimePoint::clock::now();
        ASSERT_TRUE(m_Document.Open(m_Level.c_str()));
        m_Autosave->Tick(m_Now);
    }

    uint32_t GetSum()
    {
        const CTerrain* pTerrain = m_Host.GetEngine().GetCWorld().GetCTerrain();
        const size_t nCount = size_t{pTerrain->GetVerticesX()} * pTerrain->GetVerticesZ();
        return static_cast<uint32_t>(
            crc32_z(0,
                    reinterpret_cast<const unsigned char*>(pTerrain->GetHeightData()),
                    nCount * sizeof(float)));
    }

    void Stroke()
    {
        Drag();
        m_Host.GetInput().EndDrag();
    }

    void BeginWalk(uint32_t uSeed)
    {
        Open();
        TakeBrush(0, 0.1F);
        m_Numbers = CNumbers(uSeed);
    }

    bool Recover(const SRecoverable& entry, size_t& nSteps)
    {
        CScriptPlayer player(m_Host, m_Face.cursor, 1, m_Loader.GetPlugin(), entry.strStem);
        const auto play = [&player](CTCPARSE_KEYWORD* pFirst, std::string& strFault)
        {
            return player.Play(pFirst, strFault);
        };
        std::string strFault;
        return m_Autosave->Recover(entry, play, nSteps, strFault) && strFault.empty();
    }

    // Does that work in a child process, which is killed then.
    void Crash(const std::function<void()>& work)
    {
        End();
        const pid_t child = ::fork();
        if (child == 0)
        {
            BeginWalk(5);
            work();
            SaveHeights("crashed.height");
            ::raise(HasFailure() ? SIGABRT : SIGKILL);
        }
        int iStatus = 0;
        ASSERT_EQ(::waitpid(child, &iStatus, 0), child);
        ASSERT_TRUE(WIFSIGNALED(iStatus) && WTERMSIG(iStatus) == SIGKILL);
    }

    void ExpectBack()
    {
        Open();
        const std::vector<SRecoverable> entries = FindRecoverable({m_Level});
        ASSERT_EQ(entries.size(), 1U);
        size_t nSteps = 0;
        ASSERT_TRUE(Recover(entries[0], nSteps));
        EXPECT_GT(entries[0].steps.size(), 0U);
        EXPECT_TRUE(SaveHeights("back.height") == ReadBytes(m_Folder.Path("crashed.height")));
        End();
    }

    // No file grows beyond that.
    static void LimitFiles(rlim_t nBytes)
    {
        rlimit limit = {};
        ::getrlimit(RLIMIT_FSIZE, &limit);
        limit.rlim_cur = nBytes;
        ::signal(SIGXFSZ, SIG_IGN);
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }

    void PaintStroke(const char* pszColor, const char* pszAt)
    {
        PlayScript("mode( \"edit_terrain_type\" )\npaint_color( [" + std::string(pszColor) +
                   "] )\npress( " + pszAt + " )\nmove( 150, 200, 0 )\nrelease( 150, 200 )\n");
        m_Autosave->Tick(m_Now);
        EXPECT_TRUE(m_Autosave->Wait());
    }

    // A stroke that changes heights for certain.
    void Raise(const char* pszAt)
    {
        TakeBrush(1, 0.3F);
        PlayScript("keys( \"\" )\npress( " + std::string(pszAt) + " )\nmove( 150, 150, 0 )\n" +
                   "release( 150, 150 )\n");
        m_Autosave->Tick(m_Now);
    }

    std::string GetTexels()
    {
        const IImage* pImage = m_Painting->GetBitmap();
        return pImage == nullptr
                   ? ""
                   : std::string(reinterpret_cast<const char*>(pImage->GetRawData()),
                                 size_t{4} * pImage->GetWidth() * pImage->GetHeight());
    }

    // Names in the folder of the level's autosaves that end so.
    std::vector<std::string> FindFiles(const char* pszEnd)
    {
        std::vector<std::string> files;
        std::error_code error;
        for (const auto& file :
             std::filesystem::directory_iterator(m_Folder.Path(".tellur-autosave"), error))
        {
            if (file.path().string().ends_with(pszEnd))
            {
                files.push_back(file.path().string());
            }
        }
        std::sort(files.begin(), files.end());
        return files;
    }

    std::string m_Level;
    CLevelDocument m_Document{m_Host};
    std::unique_ptr<CAutosave> m_Autosave;
    CAutosave::TimePoint m_Now;
};
