#include "tests/tellur/painting/PaintingFixture.h"

#include <algorithm>

CPaintingFixture::CPaintingFixture()
{
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(m_Folder.Path("config")));
    RegisterResourceModule(&GetPluginResources());
    m_World.CreateTerrain(8, 8, {80.0F, 1000.0F, 80.0F});
    m_Host.pPaintLayer = &m_Layer;
    m_Fake.world.pSaveImage = &IL_SaveImage;
    WriteBitmap("types.png", 10, 20, 30);
    const std::vector<uint8_t> white(16, 255);
    const std::unique_ptr<IImage> pShape(
        IL_CreateImageFromBufferFormat(4, 4, EImageFormat::Indexed8, white.data()));
    IL_SaveImage(m_Folder.Path("white.png").c_str(), pShape.get(), nullptr);
    Initialize();
}

CPaintingFixture::~CPaintingFixture()
{
    DropModes();
    m_Plugin.reset();
    UnregisterResourceModule(&GetPluginResources());
}

void CPaintingFixture::OpenDialog(const char* pszBitmap)
{
    m_Plugin->OnCommand(4);
    ASSERT_NE(m_Plugin->Get2DDrawDlg(), nullptr);
    GetWidget(Dialog())->activateWindow();
    QApplication::processEvents();
    ASSERT_TRUE(Dialog().ChooseBrushShape("white.png"));
    Type(DRAW_BITMAP_FILE, pszBitmap);
    Type(DRAW_EXTENT_EDIT, "10"); // two texels a side
    TakeCalls();
}

void CPaintingFixture::Edit()
{
    Click(DRAW_EDIT);
    TakeCalls();
}

Lines CPaintingFixture::TakeCalls()
{
    Lines calls = m_Fake.TakeCalls();
    std::erase_if(calls, [](const std::string& strCall) { return strCall.starts_with("Modes."); });
    return calls;
}

void CPaintingFixture::Type(uint32_t uId, const char* pszText)
{
    auto* pEdit = Find<QLineEdit>(uId);
    pEdit->setFocus();
    pEdit->selectAll();
    QTest::keyClicks(pEdit, pszText);
}

void CPaintingFixture::Stroke(const std::vector<SVec3>& hits)
{
    for (size_t i = 0; i < hits.size(); ++i)
    {
        m_Host.Hit(hits[i].x, hits[i].y, hits[i].z);
        if (i == 0)
        {
            m_Plugin->OnLButtonDown(1, 1, 0, 0, 0, 0);
        }
        else
        {
            m_Plugin->OnMouseMove(1, 1, 0, 0, 0, 1, 0, 0);
        }
    }
    m_Plugin->OnLButtonUp(1, 0, 0, 0, 0, 0);
}

void CPaintingFixture::WriteBitmap(const char* pszName, uint8_t uRed, uint8_t uGreen, uint8_t uBlue)
{
    std::vector<uint8_t> colors;
    for (int i = 0; i < 64; ++i)
    {
        colors.insert(colors.end(), {uRed, uGreen, uBlue});
    }
    const std::unique_ptr<IImage> pImage(
        IL_CreateImageFromBufferFormat(8, 8, EImageFormat::Rgb24, colors.data()));
    ASSERT_TRUE(IL_SaveImage(m_Folder.Path(pszName).c_str(), pImage.get(), nullptr));
}

namespace
{

// A palette of a test.
class CColors : public IPalette
{
public:
    explicit CColors(std::vector<uint8_t> bytes)
        : m_Bytes(std::move(bytes))
    {
    }

    uint32_t GetCount() const override { return static_cast<uint32_t>(m_Bytes.size() / 3); }

    const uint8_t* GetEntry(uint32_t uIndex) const override
    {
        return uIndex < GetCount() ? &m_Bytes[size_t{uIndex} * 3] : nullptr;
    }

    uint8_t FindIndex(uint8_t, uint8_t, uint8_t) const override { return 0; }

    IPalette* Clone() const override { return new CColors(m_Bytes); }

private:
    std::vector<uint8_t> m_Bytes;
};

} // namespace

void CPaintingFixture::WritePaletted(const char* pszName,
                                     const std::vector<uint8_t>& colors,
                                     uint8_t uIndex)
{
    const std::vector<uint8_t> indices(64, uIndex);
    const std::unique_ptr<IImage> pImage(
        IL_CreateImageFromBufferFormat(8, 8, EImageFormat::Indexed8, indices.data()));
    const CColors palette(colors);
    ASSERT_TRUE(IL_SaveImage(m_Folder.Path(pszName).c_str(), pImage.get(), &palette));
}

Texel CPaintingFixture::At(uint32_t uColumn, uint32_t uRow)
{
    const IImage* pImage = m_Layer.GetImage();
    if (pImage == nullptr)
    {
        return {-1, -1, -1, -1};
    }
    const uint8_t* pTexel =
        pImage->GetRawData() + (size_t{uRow} * pImage->GetWidth() + uColumn) * 4;
    return {pTexel[0], pTexel[1], pTexel[2], pTexel[3]};
}
