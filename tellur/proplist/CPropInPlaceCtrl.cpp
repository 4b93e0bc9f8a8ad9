#include "tellur/proplist/CPropInPlaceCtrl.h"

#include "framework/widgets/CWindow.h"
#include "tellur/proplist/CPropListCtrl.h"

CPropInPlaceCtrl::CPropInPlaceCtrl(CPropListCtrl& list, SPropRow& row, uint32_t uId)
    : m_List(list)
    , m_Row(row)
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
        m_List.ApplyValue(m_Row, strText.c_str(), this);
    }
}

SPropRow::SPropRow() = default;
SPropRow::~SPropRow() = default;
