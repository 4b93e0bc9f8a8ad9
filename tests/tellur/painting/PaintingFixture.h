#pragma once

#include "engine/paint/CPaintLayer.h"
#include "engine/world/CWorld.h"
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

// The engine's paint layer, which writes down what the mode asks of it.
class CWatchedLayer : public IPaintLayer
{
public:
    CWatchedLayer(CWorld& world, FakeCalls* pCallList)
        : layer(world)
        , pCalls(pCallList)
    {
    }

    void Begin(const IImage* pWorkImage, const IImage* pBrushShape, uint32_t uChannels) override
    {
        AddCall(pCalls, "Layer.Begin(%u, 0x%03X)", pWorkImage->GetWidth(), uChannels);
        layer.Begin(pWorkImage, pBrushShape, uChannels);
    }

    void End() override
    {
        AddCall(pCalls, "Layer.End()");
        layer.End();
    }

    const IImage* GetImage() const override { return layer.GetImage(); }

    void Paint(const SExtents& box,
               ITerrain2DFunction* pFunction,
               float fPower,
               float fHardness) override
    {
        AddCall(pCalls,
                "Layer.Paint(%g %g %g %g, %s, %g, %g)",
                box.min.x,
                box.min.z,
                box.max.x,
                box.max.z,
                pFunction->GetName(),
                fPower,
                fHardness);
        layer.Paint(box, pFunction, fPower, fHardness);
    }

    void SetBrush(const SExtents* pBox, const IImage* pBrushShape) override
    {
        AddCall(pCalls,
                "Layer.SetBrush(%s, %s)",
                pBox != nullptr ? "box" : "none",
                pBrushShape != nullptr ? "shape" : "none");
        layer.SetBrush(pBox, pBrushShape);
    }

    void SetChannelMask(uint32_t uChannels) override
    {
        AddCall(pCalls, "Layer.SetChannelMask(0x%03X)", uChannels);
        layer.SetChannelMask(uChannels);
    }

    void SetBlendFactor(float fFactor) override
    {
        AddCall(pCalls, "Layer.SetBlendFactor(%g)", fFactor);
        layer.SetBlendFactor(fFactor);
    }

    const char* GetMaterial() const override { return layer.GetMaterial(); }

    void SetMaterial(const char* pszName) override { layer.SetMaterial(pszName); }

    void SetTexelToVertexMapping(bool bOn) override { layer.SetTexelToVertexMapping(bOn); }

    ETexelMapping GetTexelMapping() const override { return layer.GetTexelMapping(); }

    CPaintLayer layer;
    FakeCalls* pCalls;
};

// A plug-in object with its draw dialog in a fake host, over a terrain of 80 x 1000 x 80 units,
// with a bitmap of 8 x 8 texels, so that texel i has its centre at 10 i + 5.
class CPaintingFixture : public CPluginFixture
{
protected:
    CPaintingFixture();
    ~CPaintingFixture() override;

    // Local command 4, and a bitmap file in the dialog.
    void OpenDialog(const char* pszBitmap = "types.png");
    // Switches "Edit"; the calls are forgotten.
    void Edit();

    Lines TakeCalls(); // without those of the mode manager

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

    CWorld m_World;
    CWatchedLayer m_Layer{m_World, &m_Fake.calls};
};
