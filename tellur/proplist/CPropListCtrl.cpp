#include "tellur/proplist/CPropListCtrl.h"

#include "framework/core/CRegValue.h"
#include "framework/drawing/CBitmap.h"
#include "host/Image.h"
#include "host/Log.h"
#include "host/Reflection.h"

#include <algorithm>
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
        // The file has red first, a bitmap has blue first.
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
    m_Model.SetObjects(objects);
}

bool CPropListCtrl::HandleFieldEdit(const PropObjects& objects,
                                    CRTTIField* pField,
                                    const char* pszValue,
                                    int iElement)
{
    return m_Model.HandleFieldEdit(objects, pField, pszValue, iElement);
}

bool CPropListCtrl::ChooseObjects(const CRTTI* pClass, PropObjects& picked)
{
    return m_Browser.ChooseObjects(pClass, picked);
}

void CPropListCtrl::OnRowsMade()
{
    const std::string strEdited =
        m_Editing.GetRow() != nullptr ? m_Editing.GetRow()->strKey : std::string();
    m_Editing.LetGo();
    ShowRows();
    // The row that was under edit stays so when there is one in its place.
    SPropRow* pEdited = m_Model.FindRow(strEdited);
    if (pEdited != nullptr && pEdited->iItem >= 0)
    {
        SelectItem(pEdited->iItem);
        m_Editing.Begin(pEdited);
    }
}

void CPropListCtrl::OnValueRead(SPropRow& row, const CPropInPlaceCtrl* pSender)
{
    const int iItem = row.iItem;
    const std::string strShown = m_Model.GetShownText(row);
    if (iItem >= 0 && GetCellText(iItem, VALUE_COLUMN) != strShown)
    {
        SetCellText(iItem, VALUE_COLUMN, strShown.c_str());
    }
    m_Editing.ShowValue(row, pSender);
}

void CPropListCtrl::ShowRows()
{
    const bool bFocus = HasFocus();
    SetRedraw(false);
    DeleteAllItems();
    // Names of one depth are in line, with and without a picture before them; a flat list has none.
    const PropRows& rows = m_Model.GetRows();
    const bool bTree =
        std::any_of(rows.begin(), rows.end(), [](const auto& pRow) { return pRow->bParent; });
    for (int i = 0; i < m_Model.GetShownCount(); ++i)
    {
        ShowRow(*m_Model.GetShown(i), bTree);
    }
    SetRedraw(true);
    if (bFocus && m_Editing.GetRow() == nullptr)
    {
        SetFocus();
    }
}

void CPropListCtrl::ShowRow(const SPropRow& row, bool bTree)
{
    const int iItem = row.iItem;
    InsertItem(iItem, row.strName.c_str());
    SetCellText(iItem, VALUE_COLUMN, m_Model.GetShownText(row).c_str());
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

void CPropListCtrl::Toggle(SPropRow& row, bool bOpen)
{
    if (!row.bParent || row.bOpen == bOpen)
    {
        return;
    }
    const std::shared_ptr<SPropRow> pKept = row.shared_from_this();
    m_Editing.End();
    SPropRow* pRow = m_Model.FindAgain(row); // what was typed may have brought other rows
    if (pRow != nullptr)
    {
        m_Model.SetOpen(*pRow, bOpen);
        ShowRows();
        SelectItem(pRow->iItem);
        m_Editing.Begin(pRow);
    }
}

void CPropListCtrl::OpenMenu(SPropRow& row, SScreenPoint at)
{
    if (m_Model.GetUser() == nullptr)
    {
        return;
    }
    const std::shared_ptr<SPropRow> pKept = row.shared_from_this();
    SelectItem(row.iItem);
    m_Editing.Begin(&row);
    // What was typed in another row may have brought other rows.
    if (const SPropRow* pRow = m_Model.FindAgain(row))
    {
        m_Menu.Open(*pRow, at);
    }
}

bool CPropListCtrl::TranslateKey(const SKeyEvent& key)
{
    // Where the way through the editors ends, the key is left to the window system.
    return key.uKey == KEY_TAB && !key.bControl && !key.bAlt && m_Editing.MoveFocus(key.bShift);
}

bool CPropListCtrl::OnKeyDown(const SKeyEvent& key)
{
    SPropRow* pRow = m_Model.GetShown(GetSelectedItem());
    if (pRow == nullptr || m_Editing.HasFocus(*pRow))
    {
        return false; // what an editor does not want is nothing to the list
    }
    switch (key.uKey)
    {
    case KEY_ENTER:
    case KEY_F2:
        m_Editing.Focus(*pRow, false);
        return true;
    case KEY_DELETE:
        m_Browser.ClearValue(*pRow);
        return true;
    case KEY_LEFT:
    case KEY_RIGHT:
        Toggle(*pRow, key.uKey == KEY_RIGHT);
        return true;
    default:
        return false;
    }
}

void CPropListCtrl::OnSize()
{
    m_Editing.Place();
}

bool CPropListCtrl::OnLButtonDown(const SMouseEvent& event)
{
    m_Editing.Forget(); // the hand is in the list, so no editor is at work
    int iItem = -1;
    int iColumn = -1;
    SPropRow* pRow = HitTest(event.point, iItem, iColumn) ? m_Model.GetShown(iItem) : nullptr;
    if (pRow == nullptr || !pRow->bParent || iColumn != 0)
    {
        return false;
    }
    // On the picture before the name, which is as wide as the row is indented.
    const int iPicture = static_cast<int>(m_Images.GetImageSize().cx * GetScale());
    const int iLeft = event.point.x - GetCellRect(iItem, 0).left - pRow->iDepth * iPicture;
    if (iLeft < 0 || iLeft >= iPicture)
    {
        return false;
    }
    const std::shared_ptr<SPropRow> pKept = pRow->shared_from_this();
    SetFocus(); // which hands over what was typed, and that may bring other rows
    Toggle(*pRow, !pRow->bOpen);
    return true;
}

bool CPropListCtrl::OnNotify(SNotification& notification)
{
    switch (notification.eKind)
    {
    case ENotify::SelectionChanged:
        m_Editing.Begin(m_Model.GetShown(notification.iItem));
        return false;
    case ENotify::CellClicked:
        if (SPropRow* pRow = m_Model.GetShown(notification.iItem))
        {
            m_Editing.Focus(*pRow, false);
        }
        return false;
    case ENotify::CellDoubleClicked:
        if (SPropRow* pRow = m_Model.GetShown(notification.iItem))
        {
            Toggle(*pRow, !pRow->bOpen);
        }
        return false;
    case ENotify::ColumnResized:
        OnSize();
        return false;
    case ENotify::ContextMenu:
        if (SPropRow* pRow = m_Model.GetShown(notification.iItem))
        {
            OpenMenu(*pRow, notification.screen);
        }
        return true;
    default:
        return false;
    }
}
