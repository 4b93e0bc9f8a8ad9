#pragma once

#include "framework/widgets/CComboBox.h"
#include "framework/widgets/CEdit.h"
#include "framework/widgets/CFormView.h"
#include "framework/widgets/CListBox.h"
#include "framework/widgets/CListCtrl.h"
#include "framework/widgets/CSliderCtrl.h"
#include "framework/widgets/CSpinButtonCtrl.h"
#include "tools/gallery/CGalleryCanvas.h"

#include <string>
#include <vector>

// A form with every control of the framework, and a list of what they notify. Its resource module
// must be registered.
class CGalleryView : public CFormView
{
public:
    CGalleryView();

    // What was notified since the last call, as the list shows it.
    std::vector<std::string> TakeNotes();

protected:
    void OnInit() override;
    void OnUpdate() override;
    bool OnToolTipText(SToolTipText& tip) override;

private:
    void Listen();
    void Fill();
    void Note(const std::string& strNote);
    void OnThreeStates();
    void MoveSlider(const SNotification& notification);
    void EditCell(int iItem);
    void AskDialog();
    void AskMessage();
    void AskColor();
    void AskMenu();

    float m_Number = 50.0F;
    CButton m_Three;
    CGalleryButton m_Drawn;
    CSliderCtrl m_Slider;
    CSpinButtonCtrl m_Spin;
    CListBox m_List;
    CComboBox m_Drop;
    CListCtrl m_Report;
    CEdit m_CellEditor; // over the value of the selected row
    CGalleryCanvas m_Canvas;
    CListBox m_NoteList;
    std::vector<std::string> m_Notes;
};
