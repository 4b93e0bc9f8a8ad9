#include "tellur/panel/CToolProperties.h"

#include "framework/widgets/CFormWindow.h"
#include "host/EditorHost.h"
#include "host/PanelColumns.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/PluginContext.h"
#include "tellur/panel/CurrentBrush.h"
#include "tellur/panel/PanelIds.h"

CToolProperties::CToolProperties(CFormWindow& form)
{
    form.Bind(PANEL_GRID, m_Grid);
}

CToolProperties::~CToolProperties()
{
    m_Grid.SaveToRegistry();
}

void CToolProperties::Setup()
{
    m_Grid.SetUser(this);
    // The key comes before the first objects, because columns take their widths when they are made.
    EditorHost* pHost = GetEditorHost();
    if (pHost != nullptr)
    {
        m_Grid.SetRegistryKeyPath(
            (std::string(pHost->GetRegistryRoot()) + PANEL_COLUMNS_KEY).c_str());
    }
    m_Grid.SetObjects({});
}

void CToolProperties::Refresh()
{
    CTellurBrush* pBrush = GetCurrentBrush();
    CRTTIObject* pObject = pBrush != nullptr ? pBrush->GetRTTIObject() : nullptr;
    m_Grid.SetObjects(pObject != nullptr ? PropObjects{pObject} : PropObjects());
}

void CToolProperties::Enable(bool bOn)
{
    m_Grid.EnableWindow(bOn);
}

void CToolProperties::SetFieldValue(CRTTIField* pField,
                                    const char* pszText,
                                    const PropObjects& objects)
{
    constexpr int WHOLE_FIELD = -1;
    for (CRTTIObject* pObject : objects)
    {
        HandleFieldEdit({pObject}, pField, pszText, WHOLE_FIELD);
    }
}

void CToolProperties::AddContextMenuItems(CMenu& /*menu*/, CRTTIField* /*pField*/, int /*iElement*/)
{
}

const char* CToolProperties::GetNoChangeText(const CRTTIObject* /*pObject*/)
{
    return "<no_change>";
}

bool CToolProperties::HandleFieldEdit(const PropObjects& objects,
                                      CRTTIField* pField,
                                      const char* pszValue,
                                      int iElement)
{
    return m_Grid.HandleFieldEdit(objects, pField, pszValue, iElement);
}

bool CToolProperties::PickObjects(const CRTTI* pClass, PropObjects& picked)
{
    return m_Grid.ChooseObjects(pClass, picked);
}

EngineHost* CToolProperties::GetEngineHost()
{
    return GetPluginContext()->GetEngineHost();
}

EditorHost* CToolProperties::GetEditorHost()
{
    return GetPluginContext()->GetEditorHost();
}

std::string CToolProperties::GetObjectName(const CRTTIObject* pObject, int32_t iId)
{
    EditorHost* pHost = GetEditorHost();
    const char* pszName =
        pObject != nullptr && pHost != nullptr ? pHost->LookupText(iId, pObject) : nullptr;
    return pszName != nullptr ? pszName : "";
}

void CToolProperties::Notify(uint32_t /*uCommand*/)
{
}

bool CToolProperties::QueryFlag()
{
    return false;
}
