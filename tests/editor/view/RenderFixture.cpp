#include "tests/editor/view/RenderFixture.h"

#include "host/Image.h"

#include <QOpenGLFramebufferObjectFormat>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace
{

constexpr float CELL = 10.0F;

bool IsDifferent(QRgb a, QRgb b, int iTolerance)
{
    return std::abs(qRed(a) - qRed(b)) > iTolerance ||
           std::abs(qGreen(a) - qGreen(b)) > iTolerance ||
           std::abs(qBlue(a) - qBlue(b)) > iTolerance;
}

} // namespace

void CRenderFixture::SetUp()
{
    m_Surface = std::make_unique<QOffscreenSurface>();
    m_Surface->create();
    m_Context = std::make_unique<QOpenGLContext>();
    ASSERT_TRUE(m_Context->create());
    ASSERT_TRUE(m_Context->makeCurrent(m_Surface.get()));
    QOpenGLFramebufferObjectFormat format;
    format.setAttachment(QOpenGLFramebufferObject::Depth);
    m_Buffer = std::make_unique<QOpenGLFramebufferObject>(WIDTH, HEIGHT, format);
    m_Engine = std::make_unique<CEngineHost>();
    m_Settings.fHaze = 0.0F;
}

void CRenderFixture::TearDown()
{
    m_Engine.reset();
    m_Buffer.reset();
    m_Context->doneCurrent();
}

void CRenderFixture::MakeTerrain(uint32_t uCells,
                                 const std::function<float(float fX, float fZ)>& getHeight)
{
    SHeightField field;
    ASSERT_TRUE(field.Allocate(uCells + 1, uCells + 1));
    const float fSize = static_cast<float>(uCells) * CELL;
    field.size = {fSize, 1000.0F, fSize};
    for (uint32_t z = 0; z <= uCells; ++z)
    {
        for (uint32_t x = 0; x <= uCells; ++x)
        {
            field.pHeights[size_t{z} * (uCells + 1) + x] =
                getHeight(static_cast<float>(x) * CELL, static_cast<float>(z) * CELL);
        }
    }
    m_Engine->GetCWorld().TakeTerrain(std::move(field));
}

SViewProjection CRenderFixture::LookDown()
{
    const SVec3 size = GetTerrain().GetSize();
    SViewProjection view;
    view.position = {size.x * 0.5F, 5000.0F, size.z * 0.5F};
    view.right = {1.0F, 0.0F, 0.0F};
    view.up = {0.0F, 0.0F, -1.0F};
    view.forward = {0.0F, -1.0F, 0.0F};
    view.bOrthographic = true;
    view.fHalfHeight = size.z * 0.5F;
    view.fFar = 10000.0F;
    view.iWidth = WIDTH;
    view.iHeight = HEIGHT;
    return view;
}

SViewProjection CRenderFixture::Look(const SVec3& from, float fYaw, float fPitch)
{
    const float fCosYaw = std::cos(fYaw);
    const float fSinYaw = std::sin(fYaw);
    const float fCosPitch = std::cos(fPitch);
    const float fSinPitch = std::sin(fPitch);
    SViewProjection view;
    view.position = from;
    view.forward = {fCosPitch * fCosYaw, fSinPitch, fCosPitch * fSinYaw};
    view.right = {-fSinYaw, 0.0F, fCosYaw};
    view.up = {-fSinPitch * fCosYaw, fCosPitch, -fSinPitch * fSinYaw};
    view.iWidth = WIDTH;
    view.iHeight = HEIGHT;
    return view;
}

std::unique_ptr<CTerrainRenderer> CRenderFixture::MakeRenderer(uint32_t uTileCells)
{
    auto pRenderer =
        std::make_unique<CTerrainRenderer>(std::make_shared<CTerrainCopies>(uTileCells));
    std::string strFault;
    EXPECT_TRUE(pRenderer->Initialize(strFault)) << strFault;
    return pRenderer;
}

QImage CRenderFixture::Draw(const SViewProjection& view, CTerrainRenderer* pRenderer)
{
    std::unique_ptr<CTerrainRenderer> pOwn;
    if (pRenderer == nullptr)
    {
        pOwn = MakeRenderer();
        pRenderer = pOwn.get();
    }
    m_Buffer->bind();
    EXPECT_TRUE(pRenderer->Render(view, *m_Engine, m_Settings));
    m_Buffer->release();
    return m_Buffer->toImage().convertToFormat(QImage::Format_RGB32);
}

ITexture* CRenderFixture::MakeTexture(uint32_t uSide,
                                      const std::function<uint8_t(uint32_t, uint32_t)>& get)
{
    std::vector<uint8_t> bytes(size_t{uSide} * uSide);
    for (uint32_t i = 0; i < bytes.size(); ++i)
    {
        bytes[i] = get(i % uSide, i / uSide);
    }
    const std::unique_ptr<IImage> pImage(
        IL_CreateImageFromBufferFormat(uSide, uSide, EImageFormat::Indexed8, bytes.data()));
    return m_Engine->GetCWorld().CreateTextureFromImage(pImage.get(), "painted");
}

QColor
CRenderFixture::GetPixel(const QImage& picture, const SViewProjection& view, float fX, float fZ)
{
    float fColumn = 0.0F;
    float fRow = 0.0F;
    const SVec3 point = {fX, GetTerrain().GetHeightAt(fX, fZ), fZ};
    EXPECT_TRUE(view.Project(point, fColumn, fRow));
    return picture.pixelColor(std::clamp(static_cast<int>(fColumn), 0, WIDTH - 1),
                              std::clamp(static_cast<int>(fRow), 0, HEIGHT - 1));
}

int CountDifferent(const QImage& a, const QImage& b, int iTolerance)
{
    EXPECT_EQ(a.size(), b.size());
    int nDifferent = 0;
    for (int y = 0; y < a.height(); ++y)
    {
        for (int x = 0; x < a.width(); ++x)
        {
            nDifferent += IsDifferent(a.pixel(x, y), b.pixel(x, y), iTolerance) ? 1 : 0;
        }
    }
    return nDifferent;
}
