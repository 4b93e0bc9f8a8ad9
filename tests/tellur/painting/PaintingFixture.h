#pragma once

#include "engine/paint/CPaintLayer.h"
#include "framework/qt/WidgetAccess.h"
#include "host/Image.h"
#include "tellur/painting/CModeEditTerrainType.h"
#include "tellur/painting/CTerrain2DDrawDlg.h"
#include "tellur/painting/DrawDlgIds.h"
#include "tests/tellur/plugin/PluginFixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QSlider>
#include <QTest>

#include <array>

using Texel = std::array<int, 4>;

// A plug-in object with its draw dialog in its host, over a terrain of 80 x 1000 x 80 units, with a
// bitmap of 8 x 8 texels, so that texel i has its centre at 10 i + 5.
class CPaintingFixture : public CPluginFixture
{
protected:
    CPaintingFixture();
    ~CPaintingFixture() override;

    // Local command 4, and a bitmap file in the dialog.
    void OpenDialog(const char* pszBitmap = "types.png");
    // Switches "Edit"; the calls are forgotten.
    void Edit();

    Calls TakeCalls(); // without redrawing

    CTerrain2DDrawDlg& Dialog() { return *m_Plugin->Get2DDrawDlg(); }

    CModeEditTerrainType& Mode() { return *m_Plugin->GetEditTerrainTypeMode(); }

    template <class TWidget = QWidget> TWidget* Find(uint32_t uId)
    {
        return GetWidget(Dialog())->findChild<TWidget*>(QString::number(uId));
    }

    void Click(uint32_t uId) { QTest::mouseClick(Find(uId), Qt::LeftButton); }

    bool IsOn(uint32_t uId) { return Find(uId)->isEnabled(); }

    bool IsChecked(uint32_t uId) { return Find<QAbstractButton>(uId)->isChecked(); }

    std::string Text(uint32_t uId) { return Find<QLineEdit>(uId)->text().toStdString(); }

    int Pos(uint32_t uId) { return Find<QSlider>(uId)->value(); }

    void Type(uint32_t uId, const char* pszText); // over what is there

    // A stroke with a press at the first place, moves to the others and a release.
    void Stroke(const std::vector<SVec3>& hits);

    // A file of 8 x 8 texels: RGB of one colour, or with a palette all of one index.
    void WriteBitmap(const char* pszName, uint8_t uRed, uint8_t uGreen, uint8_t uBlue);
    void WritePaletted(const char* pszName, const std::vector<uint8_t>& colors, uint8_t uIndex);

    // Of the layer's image, -1 without one.
    Texel At(uint32_t uColumn, uint32_t uRow);

    CPaintLayer& m_Layer = m_Host.GetCPaintLayer();
};
