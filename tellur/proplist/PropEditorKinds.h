#pragma once

#include "tellur/proplist/SPropEditorContext.h"

#include <cstdint>
#include <memory>
#include <span>

class CPropInPlaceCtrl;
struct SPropRow;

// One kind of in-place editor: the rows that have one, and how it is made.
struct SPropEditorKind
{
    // Of a row whose field is editable, by the field and the part of it, not by the value.
    bool (*pFits)(const SPropRow& row);
    std::unique_ptr<CPropInPlaceCtrl> (*pMake)(const SPropEditorContext& context,
                                               SPropRow& row,
                                               uint32_t uId);
};

// All kinds, in the order in which a row's editors are made, share its cell and are gone through by
// the keyboard. A new kind of editor is its class and its entry here.
std::span<const SPropEditorKind> GetPropEditorKinds();
