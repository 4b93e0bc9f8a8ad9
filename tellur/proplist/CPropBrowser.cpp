#include "tellur/proplist/CPropBrowser.h"

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
#include "tellur/proplist/CPropRowModel.h"
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

// What a row of pointers can become with an object, as a menu says it.
struct SOffer
{
    std::string strText;
    std::string strResult; // the text of the field
};

SOffer OfferPointer(const CRTTIField& field, const CRTTIObject& object)
{
    const int32_t iId = object.GetObjectId();
    return {Format("Set attribute: %s to %s(%d)", field.GetName(), object.GetClassNameA(), iId),
            std::to_string(iId)};
}

// What a list can become at the element of the row: the object joins it, takes the element's place,
// changes places with it, or leaves the list.
std::vector<SOffer> OfferList(const SPropRow& row, const CRTTIObject& object)
{
    std::vector<SOffer> offers;
    const PropObjects list = GetPointed(*row.pField, row.objects.front());
    const std::vector<std::string> words = SplitWords(row.pField->ToString(row.objects.front()));
    const char* pszField = row.pField->GetName();
    const char* pszClass = object.GetClassNameA();
    const int iId = object.GetObjectId();
    const auto offer = [&offers](const std::string& strText, const std::vector<std::string>& result)
    {
        offers.push_back({strText, JoinWords(result)});
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
    return offers;
}

} // namespace

CPropBrowser::CPropBrowser(CPropRowModel& model)
    : m_Model(model)
{
}

void CPropBrowser::Browse(SPropRow& row, uint32_t uKind, bool bShift, CPropInPlaceCtrl& sender)
{
    if (m_Model.GetUser() == nullptr)
    {
        return;
    }
    if (bShift)
    {
        ClearValue(row);
        return;
    }
    const std::shared_ptr<SPropRow> pKept = row.shared_from_this();
    if (GetPointedClass(*row.pField) != nullptr)
    {
        PickObject(row);
        return;
    }
    const std::string strChosen = BrowsePath(row, uKind);
    // The button may belong to a row that is gone.
    if (!strChosen.empty() && m_Model.HasRow(row))
    {
        sender.SetValueText(strChosen);
        if (strChosen != m_Model.GetUser()->GetNoChangeText(row.objects.front()))
        {
            m_Model.SetValue(row, strChosen, &sender);
        }
    }
}

std::string CPropBrowser::BrowsePath(const SPropRow& row, uint32_t uKind) const
{
    if ((uKind & RTTI_EDIT_BROWSE_FOLDER) != 0)
    {
        std::string strFolder = row.strText;
        return ChooseFolder(strFolder) ? strFolder : std::string();
    }
    EditorHost* pHost = m_Model.GetUser()->GetEditorHost();
    return pHost != nullptr ? pHost->BrowseForFile(
                                  FILE_DIALOG_OPEN, nullptr, row.strText.c_str(), "data", ANY_FILE)
                            : std::string();
}

void CPropBrowser::ClearValue(SPropRow& row)
{
    if (m_Model.GetUser() == nullptr || !row.IsEditable())
    {
        return;
    }
    const ERTTIType eType = row.pField->GetType();
    if (eType == RTTI_POINTER_LIST && row.iElement >= 0)
    {
        m_Model.RemoveElement(row);
        return;
    }
    if (eType == RTTI_POINTER_LIST)
    {
        const std::shared_ptr<SPropRow> pKept = row.shared_from_this();
        const std::string strQuestion =
            Format("Delete all pointers from %s list?", row.pField->GetName());
        const bool bAgreed = ShowMessageBox(strQuestion.c_str(), MB_YESNO | MB_ICONQUESTION) ==
                             EMessageBoxAnswer::Yes;
        if (bAgreed && m_Model.HasRow(row))
        {
            m_Model.SetWholeField(row, "");
        }
        return;
    }
    if (eType == RTTI_POINTER || eType == RTTI_STRING)
    {
        m_Model.SetValue(row, eType == RTTI_POINTER ? PROP_NULL : "", nullptr);
    }
}

bool CPropBrowser::ChooseObjects(const CRTTI* pClass, PropObjects& picked)
{
    IPropListCtrlUser* pUser = m_Model.GetUser();
    EngineHost* pEngine = pUser != nullptr ? pUser->GetEngineHost() : nullptr;
    PropObjects candidates = pEngine != nullptr ? pEngine->GetObjects() : PropObjects();
    std::erase_if(candidates, [pClass](const auto* p) { return !p->FromClass(pClass); });
    CMenu menu;
    // Identifiers begin at 1, because 0 is the answer when nothing was chosen.
    for (size_t i = 0; i < candidates.size(); ++i)
    {
        menu.InsertItem(
            i, static_cast<uint32_t>(i + 1), GetObjectText(candidates[i], pUser).c_str());
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

void CPropBrowser::PickObject(const SPropRow& row)
{
    if ((row.pField->GetEditFlags() & RTTI_EDIT_DROP) == 0)
    {
        LogR("[CPropListCtrl::Browse] %s takes no objects\n", row.pField->GetName());
        return;
    }
    PropObjects picked;
    if (m_Model.GetUser()->PickObjects(GetPointedClass(*row.pField), picked) && !picked.empty() &&
        m_Model.HasRow(row))
    {
        AssignObject(row, *picked.front());
    }
}

void CPropBrowser::AssignObject(const SPropRow& row, const CRTTIObject& object)
{
    const std::vector<SOffer> offers = row.pField->GetType() == RTTI_POINTER
                                           ? std::vector<SOffer>{OfferPointer(*row.pField, object)}
                                           : OfferList(row, object);
    CMenu menu;
    for (size_t i = 0; i < offers.size(); ++i)
    {
        menu.InsertItem(i, static_cast<uint32_t>(i + 1), offers[i].strText.c_str());
    }
    const uint32_t uChosen = TrackPopupMenu(menu, GetCursorPos());
    if (uChosen > 0 && uChosen <= offers.size() && m_Model.HasRow(row))
    {
        m_Model.SetWholeField(row, offers[uChosen - 1].strResult);
    }
}
