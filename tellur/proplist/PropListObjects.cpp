// What browse buttons open: files, folders and the objects that pointers are set to.

#include "framework/core/CMenu.h"
#include "framework/core/ChooseFolder.h"
#include "framework/core/CursorPos.h"
#include "framework/core/MessageBox.h"
#include "framework/core/PopupMenu.h"
#include "host/EditorHost.h"
#include "host/EngineHost.h"
#include "host/Log.h"
#include "host/Reflection.h"
#include "tellur/proplist/CPropInPlaceCtrl.h"
#include "tellur/proplist/CPropListCtrl.h"
#include "tellur/proplist/PropClasses.h"
#include "tellur/proplist/PropText.h"

#include <algorithm>
#include <cstdio>

namespace
{

constexpr const char* ANY_FILE = "All files (*)|*";
constexpr const char* STATIC_REFUSED = "You cannot choose objects which have STATIC flag set.";

template <class... TArguments> std::string Format(const char* pszFormat, TArguments... arguments)
{
    char szText[512];
    std::snprintf(szText, sizeof(szText), pszFormat, arguments...);
    return szText;
}

} // namespace

void CPropListCtrl::Browse(SPropRow& row, uint32_t uKind, bool bShift, CPropInPlaceCtrl& sender)
{
    if (m_pUser == nullptr)
    {
        return;
    }
    if (bShift)
    {
        ClearValue(row);
        return;
    }
    if (GetPointedClass(*row.pField) != nullptr)
    {
        PickObject(row);
        return;
    }
    const std::string strKey = row.strKey;
    const std::string strChosen = BrowsePath(row, uKind);
    // The rows may be others after a dialog; the button then belongs to one that is gone.
    if (!strChosen.empty() && FindRow(strKey) == &row)
    {
        sender.SetValueText(strChosen);
        if (strChosen != m_pUser->GetNoChangeText(row.objects.front()))
        {
            ApplyValue(row, strChosen.c_str(), &sender);
        }
    }
}

std::string CPropListCtrl::BrowsePath(const SPropRow& row, uint32_t uKind) const
{
    if ((uKind & RTTI_EDIT_BROWSE_FOLDER) != 0)
    {
        std::string strFolder = row.strText;
        return ChooseFolder(strFolder) ? strFolder : std::string();
    }
    EditorHost* pHost = m_pUser->GetEditorHost();
    return pHost != nullptr ? pHost->BrowseForFile(
                                  FILE_DIALOG_OPEN, nullptr, row.strText.c_str(), "data", ANY_FILE)
                            : std::string();
}

void CPropListCtrl::ClearValue(SPropRow& row)
{
    if (m_pUser == nullptr || row.pField == nullptr ||
        (row.pField->GetFlags() & RTTI_FIELD_EDIT) == 0)
    {
        return;
    }
    const ERTTIType eType = row.pField->GetType();
    if (eType == RTTI_POINTER_LIST && row.iElement >= 0)
    {
        RunCommand(row, PROP_COMMAND_REMOVE);
        return;
    }
    if (eType == RTTI_POINTER_LIST)
    {
        const std::string strQuestion =
            Format("Delete all pointers from %s list?", row.pField->GetName());
        if (ShowMessageBox(strQuestion.c_str(), MB_YESNO | MB_ICONQUESTION) ==
            EMessageBoxAnswer::Yes)
        {
            m_pUser->SetFieldValue(row.pField, "", PropObjects(row.objects));
            RefreshValues();
        }
        return;
    }
    if (eType == RTTI_POINTER || eType == RTTI_STRING)
    {
        ApplyValue(row, eType == RTTI_POINTER ? PROP_NULL : "", nullptr);
    }
}

bool CPropListCtrl::ChooseObjects(const CRTTI* pClass, PropObjects& picked)
{
    EngineHost* pEngine = m_pUser != nullptr ? m_pUser->GetEngineHost() : nullptr;
    PropObjects candidates = pEngine != nullptr ? pEngine->GetObjects() : PropObjects();
    std::erase_if(candidates, [pClass](const auto* p) { return !p->FromClass(pClass); });
    CMenu menu;
    for (size_t i = 0; i < candidates.size(); ++i)
    {
        menu.InsertItem(
            i, static_cast<uint32_t>(i + 1), GetObjectText(candidates[i], m_pUser).c_str());
    }
    const uint32_t uChosen = candidates.empty() ? 0 : TrackPopupMenu(menu, GetCursorPos());
    if (uChosen == 0 || uChosen > candidates.size())
    {
        return false;
    }
    CRTTIObject* pChosen = candidates[uChosen - 1];
    if (pChosen->IsStaticObject())
    {
        ShowMessageBox(STATIC_REFUSED, MB_OK | MB_ICONEXCLAMATION);
        return false;
    }
    picked = {pChosen};
    return true;
}

void CPropListCtrl::PickObject(SPropRow& row)
{
    if ((row.pField->GetEditFlags() & RTTI_EDIT_DROP) == 0)
    {
        LogR("[CPropListCtrl::Browse] %s takes no objects\n", row.pField->GetName());
        return;
    }
    const std::string strKey = row.strKey;
    PropObjects picked;
    if (m_pUser->PickObjects(GetPointedClass(*row.pField), picked) && !picked.empty() &&
        FindRow(strKey) == &row)
    {
        AssignObject(row, *picked.front());
    }
}

void CPropListCtrl::AssignObject(SPropRow& row, const CRTTIObject& object)
{
    CMenu menu;
    std::vector<std::string> results; // the field's text after each item
    if (row.pField->GetType() == RTTI_POINTER)
    {
        menu.InsertItem(0,
                        1,
                        Format("Set attribute: %s to %s(%d)",
                               row.pField->GetName(),
                               object.GetClassNameA(),
                               object.GetObjectId())
                            .c_str());
        results.push_back(std::to_string(object.GetObjectId()));
    }
    else
    {
        OfferList(menu, row, object, results);
    }
    const std::string strKey = row.strKey;
    const uint32_t uChosen = TrackPopupMenu(menu, GetCursorPos());
    if (uChosen == 0 || uChosen > results.size() || FindRow(strKey) != &row)
    {
        return;
    }
    m_pUser->SetFieldValue(row.pField, results[uChosen - 1].c_str(), PropObjects(row.objects));
    RefreshValues();
}

// What can be done to a list with the object, at the element of the row.
void CPropListCtrl::OfferList(CMenu& menu,
                              const SPropRow& row,
                              const CRTTIObject& object,
                              std::vector<std::string>& results) const
{
    const PropObjects list = GetPointed(*row.pField, row.objects.front());
    const std::vector<std::string> words = SplitWords(row.pField->ToString(row.objects.front()));
    const char* pszField = row.pField->GetName();
    const char* pszClass = object.GetClassNameA();
    const int iId = object.GetObjectId();
    const auto offer = [&](const std::string& strText, const std::vector<std::string>& result)
    {
        results.push_back(JoinWords(result));
        menu.InsertItem(results.size() - 1, static_cast<uint32_t>(results.size()), strText.c_str());
    };
    const auto found = std::find(list.begin(), list.end(), &object);
    const auto iFound = static_cast<size_t>(found - list.begin());
    const auto iElement = static_cast<size_t>(std::max(row.iElement, 0));
    const CRTTIObject* pOld =
        row.iElement >= 0 && iElement < list.size() ? list[iElement] : nullptr;
    std::vector<std::string> result = words;
    if (found == list.end())
    {
        result.push_back(std::to_string(iId));
        offer(Format("Add %s(%d) to %s", pszClass, iId, pszField), result);
    }
    if (pOld != nullptr && pOld != &object)
    {
        const char* pszOld = pOld->GetClassNameA();
        const int iOld = pOld->GetObjectId();
        result = words;
        if (found == list.end())
        {
            result[iElement] = std::to_string(iId);
            offer(Format("Replace %s(%d) with %s(%d) in %s", pszOld, iOld, pszClass, iId, pszField),
                  result);
        }
        else
        {
            std::swap(result[iElement], result[iFound]);
            offer(Format("Swap positions %s(%d) <---> %s(%d) in %s",
                         pszOld,
                         iOld,
                         pszClass,
                         iId,
                         pszField),
                  result);
        }
    }
    if (found != list.end())
    {
        result = words;
        result.erase(result.begin() + static_cast<ptrdiff_t>(iFound));
        offer(Format("Remove %s(%d) from %s", pszClass, iId, pszField), result);
    }
}
