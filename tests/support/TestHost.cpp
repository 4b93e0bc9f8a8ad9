#include "tests/support/TestHost.h"

#include "framework/core/CRuntimeClass.h"
#include "host/IEditorAction.h"

namespace
{

const char* OrNull(const char* pszText)
{
    return pszText != nullptr ? pszText : "null";
}

} // namespace

bool CTestFace::PromptText(const char* pszTitle, const char* pszLabel, std::string& strAnswer)
{
    AddCall(pCalls, "Host.PromptText(%s, %s, %s)", pszTitle, pszLabel, strAnswer.c_str());
    strAnswer = promptAnswer.value_or(strAnswer);
    return promptAnswer.has_value();
}

std::string CTestFace::BrowseForFile(EFileDialog eKind,
                                     const char* pszDefaultExtension,
                                     const char* pszInitialName,
                                     const char* pszInitialFolder,
                                     const char* pszFilter)
{
    AddCall(pCalls,
            "Host.BrowseForFile(%d, %s, %s, %s, %s)",
            eKind,
            OrNull(pszDefaultExtension),
            OrNull(pszInitialName),
            pszInitialFolder,
            pszFilter);
    return strBrowseAnswer;
}

bool CTestFace::HandlesViewAction(ViewId view, uint32_t uActionHandle)
{
    AddCall(pCalls, "Host.HandlesViewAction(%u, %#x)", view, uActionHandle);
    return bHandlesViewAction;
}

bool CTestFace::PickTerrain(ViewId view, ViewPoint point, SVec3& hit)
{
    AddCall(pCalls, "Host.PickTerrain(%u, %u)", view, point);
    std::optional<SVec3> pick = lastPick;
    if (!picks.empty())
    {
        pick = picks.front();
        picks.pop_front();
    }
    hit = pick.value_or(hit);
    return pick.has_value();
}

void CTestFace::TurnCamera(ViewId view, float fDegrees)
{
    AddCall(pCalls, "Host.TurnCamera(%u, %g)", view, fDegrees);
}

void CTestFace::LookFromDirection(ICamera* /*pCamera*/, float fX, float fY)
{
    AddCall(pCalls, "Host.LookFromDirection(%g, %g)", fX, fY);
}

void CTestFace::SetViewToggle(ViewId view, bool bOn)
{
    AddCall(pCalls, "Host.SetViewToggle(%u, %d)", view, bOn ? 1 : 0);
}

bool CTestFace::OpenPluginView(const CRuntimeClass* pClass)
{
    AddCall(pCalls, "Host.OpenPluginView(%s)", pClass->GetName());
    if (onOpenView)
    {
        onOpenView(pClass);
    }
    return true;
}

void CTestFace::ClosePluginView()
{
    AddCall(pCalls, "Host.ClosePluginView()");
    if (onCloseView)
    {
        onCloseView();
    }
}

CTestHost::CTestHost(CTestFace& face)
    : CEditorHost(face)
    , m_Face(face)
{
}

float CTestHost::At(uint32_t uX, uint32_t uZ)
{
    return GetTerrain().GetHeightData()[size_t{uZ} * GetTerrain().GetVerticesX() + uX];
}

void CTestHost::SetHeight(uint32_t uX, uint32_t uZ, float fHeight)
{
    GetTerrain().SetRowHeights(uX, uZ, &fHeight, 1);
}

void CTestHost::RegisterProcess(IEditorAction* pProcess)
{
    AddCall(m_Face.pCalls, "Host.RegisterProcess(%s)", pProcess->GetName());
    CEditorHost::RegisterProcess(pProcess);
}

void CTestHost::OnTerrainChanged()
{
    AddCall(m_Face.pCalls, "Host.OnTerrainChanged()");
    CEditorHost::OnTerrainChanged();
}

void CTestHost::RegisterSetting(const char* pszName,
                                ERTTIType eType,
                                void* pValue,
                                const char* pszEditFlags)
{
    AddCall(m_Face.pCalls, "Host.RegisterSetting(%s, %u, %s)", pszName, eType, pszEditFlags);
    CEditorHost::RegisterSetting(pszName, eType, pValue, pszEditFlags);
}

bool CTestHost::CreatePluginToolBar(CToolBar* pToolBar, uint32_t uResourceId)
{
    AddCall(m_Face.pCalls, "Host.CreatePluginToolBar(%u)", uResourceId);
    return CEditorHost::CreatePluginToolBar(pToolBar, uResourceId);
}

void CTestHost::InsertPluginMenu(
    int iPosition, IPlugin* pPlugin, CMenu* pPopup, const char* pszTitle, const char* pszParent)
{
    AddCall(m_Face.pCalls, "Host.InsertPluginMenu(%d, %s, %s)", iPosition, pszTitle, pszParent);
    CEditorHost::InsertPluginMenu(iPosition, pPlugin, pPopup, pszTitle, pszParent);
}

void CTestHost::SetPluginViewState(EPluginViewState eState,
                                   uint32_t uActionHandle,
                                   uint32_t uReserved)
{
    AddCall(
        m_Face.pCalls, "Host.SetPluginViewState(%d, %#x, %u)", eState, uActionHandle, uReserved);
}

void CTestHost::RegisterPluginA(IPlugin* pPlugin)
{
    AddCall(m_Face.pCalls, "Host.RegisterPluginA()");
    CEditorHost::RegisterPluginA(pPlugin);
}

void CTestHost::RegisterPluginB(IPlugin* pPlugin)
{
    AddCall(m_Face.pCalls, "Host.RegisterPluginB()");
    CEditorHost::RegisterPluginB(pPlugin);
}

void CTestHost::AddUndo(CUndo* pUndo)
{
    pLastUndo = pUndo;
    CEditorHost::AddUndo(pUndo);
}

CTerrain MakeTerrain(uint32_t uCellsX, uint32_t uCellsZ, const SVec3& size)
{
    SHeightField field;
    field.Allocate(uCellsX + 1, uCellsZ + 1);
    field.size = size;
    return CTerrain(std::move(field));
}
