#include "tellur/proplist/PropEditorKinds.h"

#include "host/Reflection.h"
#include "tellur/proplist/CPropCtrlBrowseButton.h"
#include "tellur/proplist/CPropCtrlCheckbox.h"
#include "tellur/proplist/CPropCtrlCombobox.h"
#include "tellur/proplist/CPropCtrlEdit.h"
#include "tellur/proplist/CPropCtrlSpinner.h"
#include "tellur/proplist/PropClasses.h"

namespace
{

bool IsWhole(const SPropRow& row)
{
    return row.iElement < 0;
}

bool HasType(const SPropRow& row, ERTTIType eType)
{
    return row.pField->GetType() == eType;
}

bool HasAnyFlag(const SPropRow& row, uint32_t uEditFlags)
{
    return (row.pField->GetEditFlags() & uEditFlags) != 0;
}

bool FitsClassCombobox(const SPropRow& row)
{
    const bool bSingle =
        IsWhole(row) ? HasType(row, RTTI_POINTER) : HasType(row, RTTI_POINTER_LIST);
    const CRTTI* pClass = bSingle ? GetPointedClass(*row.pField) : nullptr;
    return pClass != nullptr && pClass->IsAbstract() && !pClass->IsInterface();
}

bool FitsCheckbox(const SPropRow& row)
{
    return HasAnyFlag(row, RTTI_EDIT_CHECKBOX) || (HasType(row, RTTI_FLAGS) && !IsWhole(row));
}

bool FitsColorButton(const SPropRow& row)
{
    return HasAnyFlag(row, RTTI_EDIT_COLOR) && IsWhole(row);
}

bool FitsBrowseButton(const SPropRow& row)
{
    const bool bWholeList = HasType(row, RTTI_POINTER_LIST) && IsWhole(row);
    const bool bObjects = HasAnyFlag(row, RTTI_EDIT_BROWSE) && !bWholeList;
    const bool bPaths = HasAnyFlag(row, RTTI_EDIT_BROWSE_FILE | RTTI_EDIT_BROWSE_FOLDER);
    return (bObjects || bPaths) && !FitsColorButton(row);
}

bool FitsSpinner(const SPropRow& row)
{
    const bool bRefused = HasAnyFlag(row, RTTI_EDIT_NO_MAIN_SPINNER) && IsWhole(row);
    return HasAnyFlag(row, RTTI_EDIT_SPINNER) && !bRefused;
}

template <class TEditor>
std::unique_ptr<CPropInPlaceCtrl>
MakeEditor(const SPropEditorContext& context, SPropRow& row, uint32_t uId)
{
    return std::make_unique<TEditor>(context, row, uId);
}

constexpr SPropEditorKind KINDS[] = {
    {[](const SPropRow& row) { return HasAnyFlag(row, RTTI_EDIT_EDIT); },
     &MakeEditor<CPropCtrlEdit>},
    {[](const SPropRow& row) { return HasAnyFlag(row, RTTI_EDIT_COMBO); },
     &MakeEditor<CPropCtrlCombobox>},
    {&FitsClassCombobox, &MakeEditor<CPropCtrlClassCombobox>},
    {&FitsCheckbox, &MakeEditor<CPropCtrlCheckbox>},
    {&FitsColorButton, &MakeEditor<CPropCtrlBrowseColorButton>},
    {&FitsBrowseButton, &MakeEditor<CPropCtrlBrowseButton>},
    {&FitsSpinner, &MakeEditor<CPropCtrlSpinner>},
};

} // namespace

std::span<const SPropEditorKind> GetPropEditorKinds()
{
    return KINDS;
}
