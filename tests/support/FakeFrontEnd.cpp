#include "tests/support/FakeFrontEnd.h"

CFakeFrontEnd::CFakeFrontEnd()
    : m_Previous(SetFrontEnd(this))
{
}

CFakeFrontEnd::~CFakeFrontEnd()
{
    SetFrontEnd(m_Previous);
}

void CFakeFrontEnd::SetCapture(uintptr_t uWindow)
{
    AddCall(&calls, "FrontEnd.SetCapture(%zu)", uWindow);
}

void CFakeFrontEnd::ReleaseCapture()
{
    AddCall(&calls, "FrontEnd.ReleaseCapture()");
}

EMessageBoxAnswer CFakeFrontEnd::MessageBox(const char* pszText, uint32_t uFlags)
{
    AddCall(&calls, "FrontEnd.MessageBox(%s, %#x)", pszText, uFlags);
    return eAnswer;
}
