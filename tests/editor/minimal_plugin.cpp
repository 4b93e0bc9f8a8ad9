// A whole plug-in in one file: a mode that raises the vertex under the cursor, its undo record, one
// keyboard action and one setting. It says what the host calls, in the log.

#include "host/CUndo.h"
#include "host/EditorHost.h"
#include "host/EngineHost.h"
#include "host/Export.h"
#include "host/FileSystem.h"
#include "host/IEditorAction.h"
#include "host/IEditorMode.h"
#include "host/IPlugin.h"
#include "host/IPluginScript.h"
#include "host/Log.h"
#include "host/ModeManager.h"
#include "host/Reflection.h"
#include "host/Terrain.h"
#include "host/World.h"
#include "parser/CTCParseNodes.h"

#include <cmath>
#include <cstring>

namespace
{

constexpr int32_t MODE_GROUP = 21;
constexpr int32_t ACTION_TOGGLE = 0;
constexpr float RAISE = 10.0F; // terrain units
constexpr int BLOCK_CELLS = 32;

// The host objects, null before InitializeMe and after notification 10.
EditorHost* g_pHost = nullptr;
EngineHost* g_pEngine = nullptr;

// One raised vertex. The host owns it and decides when it runs.
class CRaiseUndo : public CUndo
{
public:
    CRaiseUndo(int iColumn, int iRow, float fBefore)
        : m_Column(iColumn)
        , m_Row(iRow)
        , m_Before(fBefore)
    {
    }

    ~CRaiseUndo() override { LogR("undo record destroyed\n"); }

    bool IsTransient() const override { return false; }

    void Undo() override { Write(m_Before); }

    void Redo() override { Write(m_Before + RAISE); }

    void OnNotify(uintptr_t) override {}

private:
    void Write(float fHeight) const
    {
        // The terrain is asked for anew each time: it changes with the level.
        Terrain* pTerrain = g_pEngine != nullptr ? g_pEngine->GetWorld()->GetTerrain() : nullptr;
        if (pTerrain != nullptr)
        {
            const SBlockEntry entry = {static_cast<float>(m_Column % BLOCK_CELLS),
                                       fHeight,
                                       static_cast<float>(m_Row % BLOCK_CELLS)};
            pTerrain->SetBlockHeights(m_Column / BLOCK_CELLS, m_Row / BLOCK_CELLS, &entry, 1);
        }
    }

    int m_Column;
    int m_Row;
    float m_Before;
};

class CRaiseMode : public IEditorMode
{
public:
    ~CRaiseMode() override { LogR("mode destroyed\n"); }

    void SetId(uint32_t uId) override { m_Id = uId; }

    uint32_t GetId() const override { return m_Id; }

    const char* GetName() const override { return "RaiseMode"; }

    uint32_t GetUserData() const override { return m_UserData; }

    void SetUserData(uint32_t uData) override { m_UserData = uData; }

    bool IsAvailable() override { return g_pEngine->GetWorld()->GetTerrain() != nullptr; }

    bool CanDeactivate() override { return true; }

    bool SetCursor() override { return false; }

    void Activate() override { g_pHost->SetModeCaption("Raise"); }

    void Deactivate() override { LogR("mode left\n"); }

    void Suspend(bool) override {}

    void OnLButtonDown(ViewId view, ViewPoint point, uint32_t) override
    {
        SVec3 hit;
        if (g_pHost->PickTerrain(view, point, hit, 0) == PICK_HIT)
        {
            Raise(hit);
            m_bRaised = true;
        }
    }

    void OnMouseMove(ViewId view, uint32_t uFlags, ViewPoint point, uintptr_t, uintptr_t) override
    {
        if ((uFlags & MOUSE_LEFT) != 0)
        {
            OnLButtonDown(view, point, uFlags);
        }
        g_pHost->RefreshView(view);
    }

    void OnLButtonUp(ViewId, ViewPoint, uint32_t) override
    {
        if (m_bRaised)
        {
            g_pHost->OnTerrainChanged();
            m_bRaised = false;
        }
    }

    void OnAction(ViewId, int, uint32_t) override {}

    void Notify(uintptr_t, uintptr_t, uintptr_t) override {}

    void Render() override {}

private:
    static void Raise(const SVec3& hit)
    {
        const World& world = *g_pEngine->GetWorld();
        const Terrain& terrain = *g_pEngine->GetWorld()->GetTerrain();
        const float fCellX = terrain.GetSize().x / static_cast<float>(terrain.GetCellsPerSide());
        const float fCellZ = terrain.GetSize().z / static_cast<float>(terrain.GetCellsPerSideZ());
        const int iColumn = static_cast<int>(std::lround(hit.x / fCellX));
        const int iRow = static_cast<int>(std::lround(hit.z / fCellZ));
        const float fBefore = world.GetTerrainHeight(static_cast<float>(iColumn) * fCellX,
                                                     static_cast<float>(iRow) * fCellZ);
        auto* pUndo = new CRaiseUndo(iColumn, iRow, fBefore);
        pUndo->Redo();
        g_pHost->AddUndo(pUndo); // the host's from here on
    }

    uint32_t m_Id = 0;
    uint32_t m_UserData = 0;
    bool m_bRaised = false;
};

class CMinimalPlugin : public IPlugin, public IPluginScript
{
public:
    ~CMinimalPlugin() override { LogR("library closed\n"); }

    void SetActionHandle(uint32_t uPlugin) { m_ActionHandle = MakeActionHandle(uPlugin); }

    void RegisterActions() override
    {
        LogR("RegisterActions\n");
        SActionDescriptor toggle;
        toggle.iGroup = MODE_GROUP;
        toggle.iIndex = ACTION_TOGGLE;
        toggle.strName = "Raise vertices";
        g_pHost->RegisterActions({toggle});
    }

    void Initialize() override
    {
        LogR("Initialize\n");
        g_pHost->RegisterPluginA(this);
        g_pHost->RegisterPluginB(this);
        m_ModeId = g_pHost->GetModeManager()->RegisterMode(new CRaiseMode, MODE_GROUP);
        g_pHost->RegisterSetting(
            "Strength", RTTI_INT, &m_Strength, "f:EDIT;e:EDIT;c:Minimal;d:Strength;");
        g_pHost->RedrawViews(); // there need be none yet
    }

    void ResetSettings() override { m_Strength = 1; }

    void SaveSettings(fs::ifile& file) override
    {
        LogR("SaveSettings\n");
        file.printf("!minimal_strength( i )\nminimal_strength( %d )\n", m_Strength);
    }

    void LoadSettings(const CTCPARSE_KEYWORD* pFirst) override
    {
        for (; pFirst != nullptr; pFirst = pFirst->next)
        {
            if (std::strcmp(pFirst->name, "minimal_strength") == 0 && pFirst->params != nullptr &&
                pFirst->params->type == tcparse_int)
            {
                m_Strength = static_cast<const CTCPARSE_INT*>(pFirst->params)->value;
            }
        }
        LogR("LoadSettings, strength %d\n", m_Strength);
    }

    // A keyword that writes a file with a number and the file that its block names.
    std::vector<SScriptKeyword> GetKeywords() override
    {
        return {{"minimal_note", "si", EKeywordFile::Written}, {"undo", ""}};
    }

    std::vector<SScriptKeyword> GetBlockKeywords() override
    {
        return {{"minimal_source", "s", EKeywordFile::Read}};
    }

    EScriptResult Play(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy) override
    {
        const auto* pPath = static_cast<const CTCPARSE_STRING*>(pKeyword->params);
        const auto* pNumber = static_cast<const CTCPARSE_INT*>(pPath->next);
        if (pNumber->value < 0 || pKeyword->block == nullptr)
        {
            strWhy = "less than nothing";
            return EScriptResult::Failed;
        }
        fs::ifile file;
        const auto* pSource = static_cast<const CTCPARSE_STRING*>(pKeyword->block->params);
        file.open(pPath->value, fs::mode_write);
        file.printf("%d of %s\n", pNumber->value, pSource->value);
        return file.close() ? EScriptResult::Done : EScriptResult::Failed;
    }

    bool WriteState(fs::ifile&) override { return true; }

    void Activate(bool bShow) override
    {
        LogR("Activate %d\n", bShow ? 1 : 0);
        g_pHost->OpenPluginView(nullptr);
    }

    void Shutdown() override
    {
        LogR("Shutdown\n");
        g_pHost->UnregisterPluginA(this);
        g_pHost->UnregisterPluginB(this);
    }

    void OnHostNotify(int32_t iCode, uintptr_t) override
    {
        LogR("OnHostNotify %d\n", iCode);
        if (iCode == NOTIFY_HOST_GOES)
        {
            g_pHost = nullptr;
            g_pEngine = nullptr;
        }
    }

    void ReleaseWorldResources() override { LogR("ReleaseWorldResources\n"); }

    void OnCommand(int32_t iCommand) override { LogR("OnCommand %d\n", iCommand); }

    void OnAction(ViewId, int32_t iAction, uint32_t) override
    {
        ModeManager* pModes = g_pHost->GetModeManager();
        if (iAction != ACTION_TOGGLE)
        {
            return;
        }
        if (pModes->GetCurrentModeId() == m_ModeId)
        {
            pModes->DeactivateMode(0);
        }
        else
        {
            pModes->ActivateMode(m_ModeId, 0);
        }
    }

    void OnLButtonDown(
        ViewId view, uint32_t uFlags, int32_t iX, int32_t iY, int32_t iDx, int32_t iDy) override
    {
        const SButtonBlock block = {iX, iY, iDx, iDy};
        g_pHost->GetModeManager()->OnLButtonDown(view, uFlags, &block);
    }

    void OnLButtonUp(
        ViewId view, uint32_t uFlags, int32_t iX, int32_t iY, int32_t iDx, int32_t iDy) override
    {
        const SButtonBlock block = {iX, iY, iDx, iDy};
        g_pHost->GetModeManager()->OnLButtonUp(view, uFlags, &block);
    }

    void OnMouseMove(ViewId view,
                     uint32_t uFlags,
                     int32_t iX,
                     int32_t iY,
                     int32_t iWheel,
                     int32_t iButtons,
                     int32_t iDx,
                     int32_t iDy) override
    {
        const SPointBlock point = {iX, iY};
        const SWheelBlock wheel = {iWheel, iButtons};
        const SStepBlock step = {iDx, iDy};
        g_pHost->GetModeManager()->OnMouseMove(view, uFlags, &point, &wheel, &step);
    }

    int32_t GetModeGroup() override { return MODE_GROUP; }

    uint32_t* GetActionHandle(uint32_t* pHandle) override
    {
        *pHandle = m_ActionHandle;
        return pHandle;
    }

    void GetCommandText(int32_t, int32_t, char*) override {}

    void DestroyObject(uint32_t, IPluginObject* pObject) override { delete pObject; }

    bool AddContextMenuItems(CMenu*, ViewId, ViewPoint, uint32_t) override { return false; }

    bool HasContextMenuItems(ViewId, ViewPoint, uint32_t) override { return false; }

    void ReservedA(uintptr_t) override {}

    bool ReservedB(uintptr_t, uintptr_t) override { return true; }

    void ReservedC(uintptr_t) override {}

    void ReservedD() override {}

    void ReservedE() override {}

    void ReservedF() override {}

    bool ReservedO(uintptr_t) override { return false; }

    void ReservedP(uintptr_t, uintptr_t, uintptr_t, uintptr_t) override {}

    bool ReservedT(uintptr_t) override { return false; }

    void ReservedU(uintptr_t, uintptr_t) override {}

    int32_t ReservedV(uintptr_t, uintptr_t, uintptr_t, uintptr_t) override { return 0; }

private:
    uint32_t m_ActionHandle = 0;
    int m_ModeId = -1;
    int32_t m_Strength = 1;
};

CMinimalPlugin g_Plugin;

} // namespace

extern "C" TELLUR_API IPlugin*
InitializeMe(EditorHost* pHost, uint32_t uPlugin, EngineHost* pEngine)
{
    g_pHost = pHost;
    g_pEngine = pEngine;
    g_Plugin.SetActionHandle(uPlugin);
    return &g_Plugin;
}
