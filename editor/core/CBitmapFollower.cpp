#include "editor/core/CBitmapFollower.h"

#include "editor/core/CEditorHost.h"
#include "editor/core/CLevelDocument.h"
#include "editor/core/FileNames.h"
#include "editor/core/SLevelText.h"
#include "editor/core/Words.h"
#include "engine/terrain/CTerrain.h"
#include "engine/terrain/SGroundMap.h"
#include "engine/world/CEngineHost.h"
#include "host/FileSystem.h"
#include "host/IPlugin.h"
#include "host/IPluginPainting.h"
#include "host/IPluginScript.h"
#include "host/IPluginTools.h"
#include "host/Image.h"
#include "host/Log.h"
#include "host/Notice.h"
#include "host/Progress.h"
#include "host/TerrainSize.h"
#include "parser/CTCParseNodes.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

namespace
{

constexpr char EXTENSION[] = ".png"; // keeps each of the library's formats as it is

// Names the level's bitmap of the ground that is not there.
class CBitmapCompanion final : public IGroundCompanion
{
public:
    CBitmapCompanion(CEditorHost& host, CLevelDocument& document, std::string strOther)
        : m_Host(host)
        , m_Document(document)
        , m_Other(std::move(strOther))
    {
    }

    void Swap() override
    {
        m_Document.SwapBitmap(m_Other);
        m_Host.GetInput().Guard("CBitmapFollower::Swap", [this] { FollowInPlugin(); });
    }

private:
    void FollowInPlugin()
    {
        auto* pTools = m_Host.GetRegistry().FindInterface<IPluginTools>();
        auto* pPainting = m_Host.GetRegistry().FindInterface<IPluginPainting>();
        auto* pScript = m_Host.GetRegistry().FindInterface<IPluginScript>();
        if (pTools != nullptr && pTools->IsPainting())
        {
            m_Host.GetModes().DeactivateMode(0);
        }
        if (pPainting == nullptr || pScript == nullptr || pPainting->GetBitmapFile().empty() ||
            !pPainting->GetUnsavedBitmap().empty() ||
            GetFullPath(pPainting->GetBitmapFile().c_str()) != GetFullPath(m_Other.c_str()))
        {
            return;
        }
        CTCPARSE_KEYWORD call;
        std::snprintf(call.name, sizeof(call.name), "paint_bitmap");
        call.params = new CTCPARSE_STRING(m_Document.GetBitmap().c_str());
        std::string strWhy;
        pScript->Play(&call, strWhy);
    }

    CEditorHost& m_Host;
    CLevelDocument& m_Document;
    std::string m_Other;
};

// "rock" of "rock.2", which a step before has made.
std::string GetPlainStem(const std::filesystem::path& path)
{
    const std::string strStem = path.stem().string();
    const size_t iDot = strStem.find_last_of('.');
    const bool bNumber = iDot != std::string::npos && iDot > 0 && iDot + 1 < strStem.size() &&
                         std::all_of(strStem.begin() + static_cast<std::ptrdiff_t>(iDot) + 1,
                                     strStem.end(),
                                     [](unsigned char c) { return std::isdigit(c) != 0; });
    return bNumber ? strStem.substr(0, iDot) : strStem;
}

// As a level file names it: below the user root from there, so that both can be moved together.
std::string MakeName(const std::string& strFile)
{
    const std::string strRoot = fs::get_user_root() + '/';
    const std::string strName =
        strFile.starts_with(strRoot) ? strFile.substr(strRoot.size()) : strFile;
    return GetFullPath(strName.c_str()) == GetFullPath(strFile.c_str()) ? strName : strFile;
}

// Whether a picture may have as many pixels as the act leads to; looked at before anything is made
// of that size.
bool HasRoom(const SGroundAct& texels, const IImage& from)
{
    const bool bExtend = texels.eKind == EGround::Extend;
    const int64_t iMoreX = bExtend ? int64_t{texels.iWest} + texels.iEast : 0;
    const int64_t iMoreZ = bExtend ? int64_t{texels.iNorth} + texels.iSouth : 0;
    const int64_t iWidth = int64_t{from.GetWidth()} + iMoreX;
    const int64_t iHeight = int64_t{from.GetHeight()} + iMoreZ;
    const int64_t iMost = int64_t{TERRAIN_MAX_VERTICES} * TERRAIN_MAX_VERTICES;
    const bool bRoom = iWidth <= int64_t{IMAGE_MAX_SIDE} && iHeight <= int64_t{IMAGE_MAX_SIDE} &&
                       iWidth * iHeight <= iMost;
    if (!bRoom)
    {
        CrashLog("[CBitmapFollower::Follow] the bitmap would have %lld x %lld pixels, more than a "
                 "picture can have; the ground stays\n",
                 static_cast<long long>(iWidth),
                 static_cast<long long>(iHeight));
    }
    return bRoom;
}

// False when the user cancels.
bool MoveTexels(const SGroundMap& map, const IImage& from, IImage& to)
{
    const size_t nBytes = from.GetBitsPerPixel() / 8;
    const size_t nAlong = nBytes * (map.bSwapped ? from.GetWidth() : 1);
    const size_t nDown = nBytes * (map.bSwapped ? 1 : from.GetWidth());
    uint8_t* pTo = to.GetRawData();
    CProgressSteps progress("Moving the bitmap", map.GetSizeZ());
    for (size_t z = 0; z < map.down.source.size(); ++z)
    {
        if (!progress.Reach(z))
        {
            LogR("[CBitmapFollower::Follow] cancelled\n");
            return false;
        }
        const uint8_t* pRow = from.GetRawData() + map.down.source[z] * nDown;
        for (const uint32_t uAlong : map.along.source)
        {
            std::memcpy(pTo, pRow + uAlong * nAlong, nBytes);
            pTo += nBytes;
        }
    }
    return true;
}

} // namespace

CBitmapFollower::CBitmapFollower(CEditorHost& host, CLevelDocument& document)
    : m_Host(host)
    , m_Document(document)
{
    m_Host.GetGround().SetFollower(this);
}

CBitmapFollower::~CBitmapFollower()
{
    m_Host.GetGround().SetFollower(nullptr);
}

bool CBitmapFollower::Follow(const SGroundAct& act,
                             bool bRepeated,
                             std::unique_ptr<IGroundCompanion>& pCompanion)
{
    const std::string& strBitmap = m_Document.GetBitmap();
    if (strBitmap.empty() || !IsGroundMoved(act.eKind))
    {
        return true;
    }
    // What is given back names the file itself afterwards.
    std::string strOther = strBitmap;
    if (!bRepeated)
    {
        if (!IsPainted() && !fs::exists(strBitmap.c_str()))
        {
            WarnLog("[CBitmapFollower::Follow] the bitmap %s is not there: the ground moves "
                    "without it\n",
                    strBitmap.c_str());
            return true;
        }
        m_Made = FindNewName();
        if (!Make(act))
        {
            return false;
        }
        strOther = MakeName(m_Made);
    }
    pCompanion = std::make_unique<CBitmapCompanion>(m_Host, m_Document, std::move(strOther));
    return true;
}

void CBitmapFollower::OnDone(bool bDone)
{
    const std::filesystem::path made = std::exchange(m_Made, {});
    if (made.empty())
    {
        return;
    }
    if (bDone)
    {
        Notice((Words("The bitmap follows as ") + made.filename().string() +
                Words("; the file before stays"))
                   .c_str());
        return;
    }
    std::error_code error; // there need not be one
    std::filesystem::remove(made, error);
}

// There are strokes on the level's bitmap that are in no file yet.
bool CBitmapFollower::IsPainted() const
{
    auto* pPainting = m_Host.GetRegistry().FindInterface<IPluginPainting>();
    const std::string strUnsaved = pPainting != nullptr ? pPainting->GetUnsavedBitmap() : "";
    return !strUnsaved.empty() &&
           GetFullPath(strUnsaved.c_str()) == GetFullPath(m_Document.GetBitmap().c_str());
}

std::string CBitmapFollower::FindNewName() const
{
    const std::filesystem::path bitmap = m_Document.GetBitmap();
    std::filesystem::path folder = m_Document.GetFolder();
    if (folder.empty())
    {
        // A bitmap that comes with the program lies where nobody should write.
        folder = bitmap.is_absolute() ? bitmap.parent_path()
                                      : fs::get_user_root() / bitmap.parent_path();
        std::error_code error; // writing says it
        std::filesystem::create_directories(folder, error);
    }
    size_t uNumber = 0;
    return FindFreeName((folder / GetPlainStem(bitmap)).string() + ".", EXTENSION, uNumber);
}

// False after one logged line, or when the user cancels.
bool CBitmapFollower::Make(const SGroundAct& act)
{
    const CTerrain& terrain = *m_Host.GetEngine().GetCWorld().GetCTerrain();
    const bool bPainted = IsPainted();
    if (bPainted &&
        !m_Host.GetRegistry().FindInterface<IPluginPainting>()->SaveBitmap(m_Made.c_str()))
    {
        return false;
    }
    const std::string& strSource = bPainted ? m_Made : m_Document.GetBitmap();
    const std::unique_ptr<IImage> pFrom(IL_LoadImage(strSource.c_str()));
    const std::unique_ptr<IPalette> pPalette(IL_LoadPalette(strSource.c_str()));
    if (pFrom == nullptr)
    {
        CrashLog("[CBitmapFollower::Follow] the bitmap %s cannot follow the ground, which stays\n",
                 strSource.c_str());
        return false;
    }
    const SGroundAct texels = MakeTexelAct(act,
                                           terrain.GetCellsPerSide(),
                                           terrain.GetCellsPerSideZ(),
                                           pFrom->GetWidth(),
                                           pFrom->GetHeight());
    if (!HasRoom(texels, *pFrom))
    {
        return false;
    }
    const SGroundMap map = MakeGroundMap(texels, pFrom->GetWidth(), pFrom->GetHeight());
    const std::unique_ptr<IImage> pTo(IL_CreateImageFromBufferFormat(
        map.GetSizeX(), map.GetSizeZ(), pFrom->GetFormat(), nullptr));
    if (pTo == nullptr)
    {
        CrashLog("[CBitmapFollower::Follow] no memory for a bitmap of %u x %u pixels; the ground "
                 "stays\n",
                 map.GetSizeX(),
                 map.GetSizeZ());
        return false;
    }
    return MoveTexels(map, *pFrom, *pTo) && IL_SaveImage(m_Made.c_str(), pTo.get(), pPalette.get());
}
