#pragma once

#include "framework/qt/WidgetAccess.h"
#include "framework/widgets/CFormView.h"
#include "tellur/panel/PanelIds.h"
#include "tests/tellur/plugin/PluginFixture.h"

#include <QApplication>
#include <QLineEdit>
#include <QSlider>
#include <QTest>
#include <QTreeView>

// The panel of a plug-in object in its host, worked through its controls. The terrain is 80 x
// 1000 x 80 units in 8 x 8 cells, so the extent's limits begin as 5 and 8.
class CPanelFixture : public CPluginFixture
{
protected:
    CPanelFixture();
    ~CPanelFixture() override;

    void OpenView();
    void CloseView();

    template <class TWidget = QWidget> TWidget* Find(uint32_t uId)
    {
        return GetWidget(*m_View)->findChild<TWidget*>(QString::number(uId));
    }

    QLineEdit* Edit(uint32_t uId) { return Find<QLineEdit>(uId); }

    QSlider* Slider(uint32_t uId) { return Find<QSlider>(uId); }

    void Slide(uint32_t uId, int iPos) { Slider(uId)->setSliderPosition(iPos); } // as the thumb

    std::string Text(uint32_t uId) { return Edit(uId)->text().toStdString(); }

    void Type(uint32_t uId, const char* pszText); // over what is there

    void Click(uint32_t uId) { QTest::mouseClick(Find(uId), Qt::LeftButton); }

    void ClickSpin(uint32_t uId, bool bUp);
    void Take(uint32_t uButton); // clicks a function button and forgets the calls

    CTellurBrush* Brush() { return m_Plugin->GetCurrentBrush(); }

    bool IsTerraforming() { return m_Plugin->IsTerraforming(); }

    std::unique_ptr<CFormView> m_View;
};
