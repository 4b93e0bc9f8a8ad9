#include "tellur/proplist/CPropInPlaceCtrl.h"

#include "framework/widgets/CWindow.h"
#include "tellur/proplist/CPropRowModel.h"

CPropInPlaceCtrl::CPropInPlaceCtrl(const SPropEditorContext& context, SPropRow& row, uint32_t uId)
    : m_Context(context)
    , m_Row(row)
    , m_KeptRow(row.shared_from_this())
    , m_Id(uId)
{
}

CPropInPlaceCtrl::~CPropInPlaceCtrl() = default;

void CPropInPlaceCtrl::TakeFocus()
{
    GetWindow().SetFocus();
}

void CPropInPlaceCtrl::Apply(const std::string& strText)
{
    if (!m_bAbandoned)
    {
        m_Context.model.SetValue(m_Row, strText, this);
    }
}
