// The property grid of the panel: the fields of the current brush's function.

#include "host/EditorHost.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/PluginContext.h"
#include "tellur/panel/CTellurView.h"

void CTellurView::RefreshToolProperties()
{
    CTellurBrush* pBrush = GetPluginContext()->GetCurrentBrush();
    CRTTIObject* pObject = pBrush != nullptr ? pBrush->GetRTTIObject() : nullptr;
    m_Grid.SetObjects(pObject != nullptr ? PropObjects{pObject} : PropObjects());
}

void CTellurView::SetFieldValue(CRTTIField* pField, const char* pszText, const PropObjects& objects)
{
    constexpr int WHOLE_FIELD = -1;
    for (CRTTIObject* pObject : objects)
    {
        HandleFieldEdit({pObject}, pField, pszText, WHOLE_FIELD);
    }
}

void CTellurView::AddContextMenuItems(CMenu& /*menu*/, CRTTIField* /*pField*/, int /*iElement*/)
{
}

const char* CTellurView::GetNoChangeText(const CRTTIObject* /*pObject*/)
{
    return "<no_change>";
}

bool CTellurView::HandleFieldEdit(const PropObjects& objects,
                                  CRTTIField* pField,
                                  const char* pszValue,
                                  int iElement)
{
    return m_Grid.HandleFieldEdit(objects, pField, pszValue, iElement);
}

bool CTellurView::PickObjects(const CRTTI* pClass, PropObjects& picked)
{
    return m_Grid.ChooseObjects(pClass, picked);
}

EngineHost* CTellurView::GetEngineHost()
{
    return GetPluginContext()->GetEngineHost();
}

EditorHost* CTellurView::GetEditorHost()
{
    return GetPluginContext()->GetEditorHost();
}

std::string CTellurView::GetObjectName(const CRTTIObject* pObject, int32_t iId)
{
    EditorHost* pHost = GetEditorHost();
    const char* pszName =
        pObject != nullptr && pHost != nullptr ? pHost->LookupText(iId, pObject) : nullptr;
    return pszName != nullptr ? pszName : "";
}

void CTellurView::Notify(uint32_t /*uCommand*/)
{
}

bool CTellurView::QueryFlag()
{
    return false;
}
