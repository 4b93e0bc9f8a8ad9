#include "editor/app/CLevelPictures.h"

#include "editor/app/CEditor.h"
#include "engine/terrain/CTerrain.h"
#include "engine/terrain/Relief.h"
#include "engine/world/CEngineHost.h"
#include "host/Image.h"

#include <QDir>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <system_error>
#include <vector>

namespace
{

constexpr uint32_t DENSE = 2;          // pixels of the picture a pixel of the window system
constexpr uint32_t MOST_SAMPLES = 257; // a side: a large terrain costs no more than a small one

// A number of the path that stays the same from run to run.
std::string GetName(const std::string& strLevel)
{
    uint64_t uHash = 14695981039346656037U;
    for (const char c : strLevel)
    {
        uHash = (uHash ^ static_cast<uint8_t>(c)) * 1099511628211U;
    }
    return QString::number(uHash, 16).toStdString() + ".png";
}

// Every n-th vertex, from the first to the last.
std::vector<float> TakeSamples(const CTerrain& terrain, uint32_t& uX, uint32_t& uZ)
{
    uX = std::min(terrain.GetVerticesX(), MOST_SAMPLES);
    uZ = std::min(terrain.GetVerticesZ(), MOST_SAMPLES);
    std::vector<float> samples;
    samples.reserve(size_t{uX} * uZ);
    for (size_t z = 0; z < uZ; ++z)
    {
        const float* pRow = terrain.GetHeightData() +
                            z * (terrain.GetVerticesZ() - 1) / (uZ - 1) * terrain.GetVerticesX();
        for (size_t x = 0; x < uX; ++x)
        {
            samples.push_back(pRow[x * (terrain.GetVerticesX() - 1) / (uX - 1)]);
        }
    }
    return samples;
}

} // namespace

CLevelPictures::CLevelPictures(CEditor& editor, std::string strFolder)
    : m_Editor(editor)
    , m_Folder(std::move(strFolder))
{
}

void CLevelPictures::Follow()
{
    const CLevelDocument& document = m_Editor.GetDocument();
    const std::string strLevel =
        document.GetPath().empty() ? document.GetHeightPath() : document.GetPath();
    if (strLevel.empty() || !document.HasLevel())
    {
        return;
    }
    const std::string strState = strLevel + ' ' + std::to_string(document.GetGeneration()) + ' ' +
                                 std::to_string(document.GetSavings());
    const std::vector<std::string>& recent = m_Editor.GetRecentFiles().GetPaths();
    const bool bListed = std::find(recent.begin(), recent.end(), strLevel) != recent.end();
    // A level that comes back with what was not saved is another one than its file has.
    if (strState != m_Made && bListed && !document.IsModified())
    {
        m_Made = strState;
        Make(strLevel);
        DropOthers();
    }
}

std::string CLevelPictures::GetFile(const std::string& strLevel) const
{
    return m_Folder + "/" + GetName(strLevel);
}

void CLevelPictures::Make(const std::string& strLevel) const
{
    const CTerrain* pTerrain = m_Editor.GetHost().GetEngine().GetCWorld().GetCTerrain();
    uint32_t uX = 0;
    uint32_t uZ = 0;
    const std::vector<float> samples = TakeSamples(*pTerrain, uX, uZ);
    SReliefOptions options;
    options.uLongerSide = LONGER_SIDE * DENSE;
    SReliefPicture relief;
    if (!RenderRelief(samples.data(), uX, uZ, pTerrain->GetSize(), options, relief))
    {
        return;
    }
    const std::unique_ptr<IImage> pImage(IL_CreateImageFromBufferFormat(
        relief.uWidth, relief.uHeight, EImageFormat::Rgb24, relief.rgb.data()));
    std::error_code error; // without the folder, writing there says what is wrong
    std::filesystem::create_directories(m_Folder, error);
    IL_SaveImage(GetFile(strLevel).c_str(), pImage.get(), nullptr);
}

void CLevelPictures::DropOthers() const
{
    QStringList kept;
    for (const std::string& strLevel : m_Editor.GetRecentFiles().GetPaths())
    {
        kept << QString::fromStdString(GetName(strLevel));
    }
    QDir folder(QString::fromStdString(m_Folder));
    for (const QString& strName : folder.entryList({"*.png"}, QDir::Files))
    {
        if (!kept.contains(strName))
        {
            folder.remove(strName);
        }
    }
}

QPixmap CLevelPictures::Find(const std::string& strLevel) const
{
    QPixmap picture;
    if (picture.load(QString::fromStdString(GetFile(strLevel))))
    {
        picture.setDevicePixelRatio(DENSE);
    }
    return picture;
}
