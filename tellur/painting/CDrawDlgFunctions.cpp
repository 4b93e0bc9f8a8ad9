#include "tellur/painting/CDrawDlgFunctions.h"

#include "framework/widgets/CButton.h"
#include "framework/widgets/CFormWindow.h"
#include "tellur/painting/DrawDlgIds.h"
#include "tellur/painting/IDrawDlg.h"
#include "tellur/painting/ITerrain2DDrawDlgUser.h"
#include "tellur/painting/PaintLayer.h"

#include <cstring>
#include <string>

namespace
{

struct SFunctionRow
{
    const char* pszName;
    uint32_t uButton;
    bool bWithPalette; // it works on a bitmap with a palette, too
};

constexpr SFunctionRow ROWS[] = {{"Set", DRAW_SET, true}, {"Mul", DRAW_MUL, false}};

// What no row has is asked of the first one's button.
uint32_t GetButton(const char* pszName)
{
    for (const SFunctionRow& row : ROWS)
    {
        if (std::strcmp(row.pszName, pszName) == 0)
        {
            return row.uButton;
        }
    }
    return ROWS[0].uButton;
}

} // namespace

CDrawDlgFunctions::CDrawDlgFunctions(CFormWindow& form, IDrawDlg& dialog)
    : m_Form(form)
    , m_Dialog(dialog)
{
    for (const SFunctionRow& row : ROWS)
    {
        form.OnClick(row.uButton, [this, &row] { Choose(row.pszName); });
    }
}

bool CDrawDlgFunctions::Choose(const char* pszName)
{
    // For scripts: while nothing is painted on all buttons are disabled, and any function may be
    // chosen.
    const bool bAllowed = m_Form.IsItemEnabled(GetButton(pszName)) || !IsPaintingModeOn();
    ITerrain2DDrawDlgUser* pUser = m_Dialog.GetUser();
    if (pUser != nullptr && bAllowed)
    {
        pUser->SetFunction(pszName);
    }
    m_Dialog.UpdateControls();
    return bAllowed;
}

void CDrawDlgFunctions::Update(const ITerrain2DDrawDlgUser& user, bool bPainting)
{
    const char* pszFunction = user.GetFunctionName();
    const std::string strFunction = pszFunction != nullptr ? pszFunction : "";
    for (const SFunctionRow& row : ROWS)
    {
        const bool bForBitmap = row.bWithPalette || user.GetPalette() == nullptr;
        m_Form.EnableItem(row.uButton, bPainting && bForBitmap);
        m_Form.CheckItem(row.uButton, strFunction == row.pszName ? CHECK_ON : CHECK_OFF);
    }
}
