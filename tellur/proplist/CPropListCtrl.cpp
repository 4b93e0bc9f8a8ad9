// Columns, pictures and what the list view shows of the rows.

#include "tellur/proplist/CPropListCtrl.h"

#include "framework/core/CRegValue.h"
#include "framework/drawing/CBitmap.h"
#include "host/Image.h"
#include "host/Log.h"
#include "host/Reflection.h"
#include "tellur/proplist/CPropInPlaceCtrl.h"

#include <cmath>

namespace
{

constexpr uint32_t NAME_WIDTH = 120; // pixels at 100 %
constexpr uint32_t VALUE_WIDTH = 80;
constexpr uint32_t WIDEST = 4000;
constexpr const char* NAME_ENTRY = "name";
constexpr const char* VALUE_ENTRY = "value";
constexpr const char* PICTURES = "Data/Interface/_state.png";
constexpr int PICTURE_WIDTH = 16;
constexpr int PICTURES_AT_FIRST = 3;
constexpr ColorRef NO_PICTURE = MakeColor(0, 0, 255);

enum EPicture : int
{
    PICTURE_CLOSED = 0,
    PICTURE_OPEN = 1,
    PICTURE_LOCKED = 2, // may be read only
};

} // namespace

CPropListCtrl::CPropListCtrl() = default;

CPropListCtrl::~CPropListCtrl()
{
    for (const auto& pRow : m_Rows)
    {
        for (const auto& pEditor : pRow->editors)
        {
            if (pEditor != nullptr)
            {
                pEditor->Abandon();
            }
        }
    }
}

void CPropListCtrl::SetRegistryKeyPath(const char* pszPath)
{
    m_KeyPath = pszPath != nullptr ? pszPath : "";
    CreateColumns();
}

void CPropListCtrl::CreateColumns()
{
    if (!IsWindow() || GetColumnCount() > 0)
    {
        return;
    }
    uint32_t uName = NAME_WIDTH;
    uint32_t uValue = VALUE_WIDTH;
    CRegValue key;
    if (!m_KeyPath.empty() && key.Open(ERegHive::CurrentUser, m_KeyPath.c_str()) == 0)
    {
        key.QueryDWord(NAME_ENTRY, uName);
        key.QueryDWord(VALUE_ENTRY, uValue);
    }
    const auto toPixels = [this](uint32_t uWidth)
    {
        return static_cast<int>(std::lround(std::clamp(uWidth, 1U, WIDEST) * GetScale()));
    };
    InsertColumn(NAME_COLUMN, "Name", toPixels(uName));
    InsertColumn(VALUE_COLUMN, "Value", toPixels(uValue));
    CreateImages();
}

void CPropListCtrl::SaveToRegistry()
{
    if (m_KeyPath.empty() || GetColumnCount() == 0)
    {
        return;
    }
    CRegValue key;
    if (key.Open(ERegHive::CurrentUser, m_KeyPath.c_str()) != 0)
    {
        key.Create(ERegHive::CurrentUser, m_KeyPath.c_str());
    }
    const auto save = [this, &key](const char* pszName, int iColumn)
    {
        key.SetDWord(pszName,
                     static_cast<uint32_t>(std::lround(GetColumnWidth(iColumn) / GetScale())));
    };
    save(NAME_ENTRY, NAME_COLUMN);
    save(VALUE_ENTRY, VALUE_COLUMN);
}

void CPropListCtrl::CreateImages()
{
    const std::unique_ptr<IImage> pFile(IL_LoadImage(PICTURES));
    const std::unique_ptr<IImage> pImage(IL_CreateImageFromImage(pFile.get(), EImageFormat::Rgb24));
    if (pImage == nullptr || pImage->GetRawData() == nullptr)
    {
        CrashLog("[CPropListCtrl::CreateImages] unable to load bitmap file _state.png\n");
        return;
    }
    const auto iWidth = static_cast<int>(pImage->GetWidth());
    const auto iHeight = static_cast<int>(pImage->GetHeight());
    const size_t nPixels = size_t{pImage->GetWidth()} * pImage->GetHeight();
    std::vector<uint8_t> pixels(nPixels * 4, 0xFF);
    for (size_t i = 0; i < nPixels; ++i)
    {
        const uint8_t* pSource = pImage->GetRawData() + i * 3;
        pixels[i * 4] = pSource[2];
        pixels[i * 4 + 1] = pSource[1];
        pixels[i * 4 + 2] = pSource[0];
    }
    CBitmap bitmap;
    if (!bitmap.CreateBitmap(iWidth, iHeight, 1, 32, pixels.data()) ||
        !m_Images.Create(PICTURE_WIDTH, iHeight, PICTURES_AT_FIRST, PICTURES_AT_FIRST) ||
        m_Images.Add(bitmap, NO_PICTURE) < 0)
    {
        CrashLog("[CPropListCtrl::CreateImages] cannot create bitmap\n");
        return;
    }
    SetImageList(&m_Images);
}

void CPropListCtrl::SetObjects(const PropObjects& objects)
{
    CreateColumns();
    std::vector<const CRTTI*> classes;
    for (const CRTTIObject* pObject : objects)
    {
        classes.push_back(pObject->GetRTTI());
    }
    // An object may have gone and another one stand at its address.
    if (objects == m_Objects && classes == m_Classes)
    {
        RefreshValues();
        return;
    }
    m_Objects = objects;
    m_Classes = std::move(classes);
    if (m_nApplying > 0)
    {
        m_bRebuildLater = true;
        return;
    }
    Rebuild();
}

void CPropListCtrl::SetShowHidden(bool bShow)
{
    if (m_bShowHidden != bShow)
    {
        m_bShowHidden = bShow;
        Rebuild();
    }
}

void CPropListCtrl::ShowRows()
{
    const bool bFocus = HasFocus();
    SetRedraw(false);
    DeleteAllItems();
    m_Shown.clear();
    // Names of one depth are in line, with and without a picture before them; a flat list has none.
    const bool bTree =
        std::any_of(m_Rows.begin(), m_Rows.end(), [](const auto& pRow) { return pRow->bParent; });
    int iClosedDepth = -1; // rows deeper than this are hidden; -1: none is
    for (const auto& pRow : m_Rows)
    {
        pRow->iItem = -1;
        if (iClosedDepth >= 0 && pRow->iDepth > iClosedDepth)
        {
            continue;
        }
        iClosedDepth = pRow->bParent && !pRow->bOpen ? pRow->iDepth : -1;
        pRow->iItem = static_cast<int>(m_Shown.size());
        m_Shown.push_back(pRow.get());
        ShowRow(*pRow, bTree);
    }
    SetRedraw(true);
    if (bFocus && m_pEdited == nullptr)
    {
        SetFocus();
    }
}

void CPropListCtrl::ShowRow(const SPropRow& row, bool bTree)
{
    const int iItem = row.iItem;
    InsertItem(iItem, row.strName.c_str());
    SetCellText(iItem, VALUE_COLUMN, GetShownText(row).c_str());
    if (row.pField != nullptr)
    {
        const std::string strDescription = row.pField->GetDescription();
        SetItemToolTip(
            iItem, (row.strName + (strDescription.empty() ? "" : ": " + strDescription)).c_str());
    }
    const bool bLocked = row.pField != nullptr && (row.pField->GetFlags() & RTTI_FIELD_EDIT) == 0;
    const int iPicture = row.bParent ? (row.bOpen ? PICTURE_OPEN : PICTURE_CLOSED)
                                     : (bLocked ? int{PICTURE_LOCKED} : -1);
    SetItemImage(iItem, iPicture);
    SetItemIndent(iItem, row.iDepth + (bTree && iPicture < 0 ? 1 : 0));
}

SPropRow* CPropListCtrl::GetRowOf(int iItem) const
{
    const bool bThere = iItem >= 0 && iItem < static_cast<int>(m_Shown.size());
    return bThere ? m_Shown[static_cast<size_t>(iItem)] : nullptr;
}

void CPropListCtrl::Toggle(SPropRow& row, bool bOpen)
{
    if (!row.bParent || row.bOpen == bOpen)
    {
        return;
    }
    EndEdit();
    row.bOpen = bOpen;
    if (m_Toggled.erase(row.strKey) == 0)
    {
        m_Toggled.insert(row.strKey);
    }
    ShowRows();
    SelectItem(row.iItem);
    BeginEdit(&row);
}
