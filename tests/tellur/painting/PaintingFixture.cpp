#include "tests/tellur/painting/PaintingFixture.h"

#include "tests/engine/imaging/ImageSamples.h"

#include <algorithm>

CPaintingFixture::CPaintingFixture()
{
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(m_Folder.Path("config")));
    RegisterResourceModule(&GetPluginResources());
    WriteBitmap("types.png", 10, 20, 30);
    WriteGrey("white.png", 4, 4, std::vector<uint8_t>(16, 255));
    Initialize();
}

CPaintingFixture::~CPaintingFixture()
{
    m_Host.DestroyPluginObjects();
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

Calls CPaintingFixture::TakeCalls()
{
    Calls calls = CPluginFixture::TakeCalls();
    std::erase(calls, "Host.RedrawViews()");
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
        m_Face.Hit(hits[i].x, hits[i].y, hits[i].z);
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

void CPaintingFixture::WritePaletted(const char* pszName,
                                     const std::vector<uint8_t>& colors,
                                     uint8_t uIndex)
{
    const std::vector<uint8_t> indices(64, uIndex);
    const std::unique_ptr<IImage> pImage(
        IL_CreateImageFromBufferFormat(8, 8, EImageFormat::Indexed8, indices.data()));
    Colors entries;
    for (size_t i = 0; i < colors.size(); i += 3)
    {
        entries.push_back({colors[i], colors[i + 1], colors[i + 2]});
    }
    const CTestPalette palette(entries);
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
