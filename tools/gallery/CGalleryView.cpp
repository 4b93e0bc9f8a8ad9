#include "tools/gallery/CGalleryView.h"

#include "framework/core/CMenu.h"
#include "framework/core/ChooseColor.h"
#include "framework/core/CursorPos.h"
#include "framework/core/MessageBox.h"
#include "framework/core/PopupMenu.h"
#include "framework/core/ResourceModule.h"
#include "framework/widgets/CDialog.h"
#include "tools/gallery/GalleryIds.h"

#include <algorithm>
#include <cstdio>

namespace
{

constexpr int HIGHEST = 100;
constexpr uint32_t CELL_EDITOR = 9201;
constexpr int ROWS = 12;

const char* const SCROLL_NAMES[] = {"line left",
                                    "line right",
                                    "page left",
                                    "page right",
                                    "thumb position",
                                    "thumb track",
                                    "left",
                                    "right"};

class CGalleryDialog : public CDialog
{
public:
    CGalleryDialog()
        : CDialog(GALLERY_DIALOG)
    {
        BindText(GALLERY_EDIT, strAnswer);
    }

    std::string strAnswer;

protected:
    void OnOk() override
    {
        ReadControls();
        CDialog::OnOk();
    }
};

} // namespace

CGalleryView::CGalleryView()
    : CFormView(GALLERY_FORM)
{
    Bind(GALLERY_THREE, m_Three);
    Bind(GALLERY_DRAWN, m_Drawn);
    Bind(GALLERY_SLIDER, m_Slider);
    Bind(GALLERY_SPIN, m_Spin);
    Bind(GALLERY_LIST, m_List);
    Bind(GALLERY_DROP, m_Drop);
    Bind(GALLERY_REPORT, m_Report);
    Bind(GALLERY_CANVAS, m_Canvas);
    Bind(GALLERY_NOTES, m_NoteList);
    BindValue(GALLERY_NUMBER, m_Number);
    EnableToolTips(true);
    Listen();
}

void CGalleryView::Listen()
{
    OnClick(GALLERY_PUSH, [this] { Note("push"); });
    OnClick(GALLERY_DRAWN, [this] { Note("drawn"); });
    On(ENotify::DoubleClicked, GALLERY_DRAWN, [this](SNotification&) { Note("drawn twice"); });
    for (const uint32_t uId : {GALLERY_CHECK, GALLERY_TOGGLE})
    {
        OnClick(uId,
                [this, uId]
                {
                    const char* pszName = uId == GALLERY_CHECK ? "check " : "toggle ";
                    Note(pszName + std::to_string(GetItemCheck(uId)));
                });
    }
    OnClick(GALLERY_THREE, [this] { OnThreeStates(); });
    OnTextChange(GALLERY_EDIT, [this] { Note("text " + GetItemText(GALLERY_EDIT)); });
    On(ENotify::FocusLost, GALLERY_EDIT, [this](SNotification&) { Note("text left"); });
    OnTextChange(GALLERY_NUMBER, [this] { Note("number " + GetItemText(GALLERY_NUMBER)); });
    OnScroll([this](SNotification& notification) { MoveSlider(notification); });
    On(ENotify::SpinDelta,
       GALLERY_SPIN,
       [this](SNotification& notification)
       {
           Note("spin " + std::to_string(notification.iValue));
           // What was typed counts before the step.
           ReadControls();
           m_Number =
               std::clamp(m_Number + static_cast<float>(notification.iValue), 0.0F, float{HIGHEST});
           WriteControls();
       });
    OnSelectionChange(GALLERY_LIST,
                      [this] { Note("list " + m_List.GetItemText(m_List.GetCurSel())); });
    OnSelectionChange(GALLERY_DROP, [this] { Note("drop " + m_Drop.GetWindowText()); });
    On(ENotify::SelectionChanged,
       GALLERY_REPORT,
       [this](SNotification& notification)
       {
           Note("row " + std::to_string(notification.iItem));
           EditCell(notification.iItem);
       });
    On(ENotify::ContextMenu, GALLERY_REPORT, [this](SNotification&) { AskMenu(); });
    OnClick(GALLERY_DIALOG_BUTTON, [this] { AskDialog(); });
    OnClick(GALLERY_MESSAGE, [this] { AskMessage(); });
    OnClick(GALLERY_COLOR, [this] { AskColor(); });
    OnClick(GALLERY_MENU, [this] { AskMenu(); });
}

void CGalleryView::OnInit()
{
    m_Slider.SetRange(0, HIGHEST);
    m_Spin.SetRange(0, HIGHEST);
    m_Spin.SetBuddy(GALLERY_NUMBER);
    Fill();
}

void CGalleryView::Fill()
{
    m_List.SetRedraw(false);
    for (const char* pszText : {"soft", "hard", "round", "square", "ridge"})
    {
        m_List.AddString(pszText);
    }
    m_List.SetRedraw(true);
    for (const char* pszText : {"33x33", "65x65", "129x129"})
    {
        m_Drop.AddString(pszText);
    }
    const auto toPixels = [this](int iLength)
    {
        return static_cast<int>(iLength * m_Report.GetScale());
    };
    m_Report.InsertColumn(0, "Name", toPixels(120));
    m_Report.InsertColumn(1, "Value", toPixels(80));
    for (int i = 0; i < ROWS; ++i)
    {
        m_Report.InsertItem(i, ("field " + std::to_string(i)).c_str());
        m_Report.SetCellText(i, 1, std::to_string(i * i).c_str());
        m_Report.SetItemIndent(i, i % 4 == 0 ? 0 : 1);
    }
    m_CellEditor.CreateEdit(0, m_Report, CELL_EDITOR, {});
    m_CellEditor.ShowWindow(false);
}

void CGalleryView::OnUpdate()
{
    m_Slider.SetPos(static_cast<int>(m_Number));
    WriteControls();
}

bool CGalleryView::OnToolTipText(SToolTipText& tip)
{
    std::string strText;
    if (!tip.bIsWindow || !LoadStringResource(tip.uId, strText))
    {
        return false;
    }
    std::snprintf(tip.szText, sizeof(tip.szText), "%s", strText.c_str());
    return true;
}

void CGalleryView::Note(const std::string& strNote)
{
    m_Notes.push_back(strNote);
    m_NoteList.SetCurSel(m_NoteList.AddString(strNote.c_str()));
}

std::vector<std::string> CGalleryView::TakeNotes()
{
    std::vector<std::string> notes;
    notes.swap(m_Notes);
    return notes;
}

void CGalleryView::OnThreeStates()
{
    m_Three.SetCheck((m_Three.GetCheck() + 1) % 3);
    Note("three " + std::to_string(m_Three.GetCheck()));
}

void CGalleryView::MoveSlider(const SNotification& notification)
{
    int iPos = m_Slider.GetPos();
    switch (notification.eScroll)
    {
    case EScrollCode::LineLeft:
        --iPos;
        break;
    case EScrollCode::LineRight:
        ++iPos;
        break;
    case EScrollCode::PageLeft:
        iPos -= m_Slider.GetPageSize();
        break;
    case EScrollCode::PageRight:
        iPos += m_Slider.GetPageSize();
        break;
    case EScrollCode::Left:
        iPos = m_Slider.GetRangeMin();
        break;
    case EScrollCode::Right:
        iPos = m_Slider.GetRangeMax();
        break;
    default:
        iPos = notification.iValue;
        break;
    }
    m_Slider.SetPos(iPos);
    Note(std::string(SCROLL_NAMES[static_cast<int>(notification.eScroll)]) + " " +
         std::to_string(m_Slider.GetPos()));
    m_Number = static_cast<float>(m_Slider.GetPos());
    WriteControls();
}

void CGalleryView::EditCell(int iItem)
{
    if (iItem < 0)
    {
        m_Report.RemoveFromCell(m_CellEditor);
        return;
    }
    m_CellEditor.SetWindowText(m_Report.GetCellText(iItem, 1).c_str());
    m_Report.PlaceOverCell(m_CellEditor, iItem, 1, 0, 0);
}

void CGalleryView::AskDialog()
{
    CGalleryDialog dialog;
    const bool bOk = dialog.DoModal(this) == DIALOG_OK;
    Note(bOk ? "dialog " + dialog.strAnswer : "dialog cancelled");
}

void CGalleryView::AskMessage()
{
    const EMessageBoxAnswer eAnswer =
        ShowMessageBox("Is the message readable?", MB_YESNO | MB_ICONQUESTION);
    Note(eAnswer == EMessageBoxAnswer::Yes ? "message yes" : "message no");
}

void CGalleryView::AskColor()
{
    uint32_t uColor = 0;
    char szText[32];
    std::snprintf(
        szText, sizeof(szText), ChooseColor(uColor) ? "color %06x" : "color cancelled", uColor);
    Note(szText);
}

void CGalleryView::AskMenu()
{
    CMenu menu;
    menu.InsertItem(0, 1, "First");
    menu.InsertSeparator(1);
    CMenu below;
    below.InsertItem(0, 2, "Below");
    menu.AppendSubMenu("More", std::move(below));
    Note("menu " + std::to_string(TrackPopupMenu(menu, GetCursorPos())));
}
