#include "editor/core/CLevelDocument.h"

#include "editor/core/CEditorHost.h"
#include "editor/core/SLevelText.h"
#include "engine/terrain/CTerrain.h"
#include "engine/terrain/HeightFile.h"
#include "engine/world/CEngineHost.h"
#include "engine/world/CEnvironment.h"
#include "host/Log.h"
#include "host/Progress.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>

namespace
{

constexpr char LEVEL_EXTENSION[] = ".level";
constexpr char HEIGHT_EXTENSION[] = ".height";

struct STargets
{
    std::string strPath;
    std::string strHeightPath;
};

STargets GetTargets(const char* pszPath)
{
    std::filesystem::path path = GetFullPath(pszPath);
    if (path.extension() != LEVEL_EXTENSION)
    {
        path = GetFullPath((path.string() + LEVEL_EXTENSION).c_str());
    }
    const std::filesystem::path heights =
        std::filesystem::path(path).replace_extension(HEIGHT_EXTENSION);
    return {path.string(), GetFullPath(heights.c_str())};
}

bool IsSame(const SLevelSizes& a, const SLevelSizes& b)
{
    return a.uCellsX == b.uCellsX && a.uCellsZ == b.uCellsZ && a.size.x == b.size.x &&
           a.size.y == b.size.y && a.size.z == b.size.z;
}

// Heights that were written may not have taken their place: what the file holds is what it held,
// unless all of the save was done.
class CKeptFileState
{
public:
    explicit CKeptFileState(CLevelHeights& heights)
        : m_Heights(heights)
        , m_State(heights.GetFileState())
    {
    }

    ~CKeptFileState()
    {
        if (!m_bReleased)
        {
            m_Heights.SetFileState(m_State);
        }
    }

    CKeptFileState(const CKeptFileState&) = delete;
    CKeptFileState& operator=(const CKeptFileState&) = delete;

    void Release() { m_bReleased = true; }

private:
    CLevelHeights& m_Heights;
    std::optional<uint64_t> m_State;
    bool m_bReleased = false;
};

// False, with one logged line, when there is no memory for it or the user cancels.
bool MakeFlat(uint32_t uVertices, const SVec3& size, float fHeight, SHeightField& field)
{
    constexpr char OPERATION[] = "[CLevelDocument::New]";
    if (!field.Allocate(uVertices, uVertices))
    {
        CrashLog("%s no memory for %u x %u vertices\n", OPERATION, uVertices, uVertices);
        return false;
    }
    field.size = size;
    CProgressSteps progress("Making the terrain", uVertices);
    for (uint32_t z = 0; z < uVertices; ++z)
    {
        if (!progress.Reach(z))
        {
            LogR("%s cancelled\n", OPERATION);
            return false;
        }
        std::fill_n(field.pHeights.get() + size_t{z} * uVertices, uVertices, fHeight);
    }
    return true;
}

} // namespace

CLevelDocument::CLevelDocument(CEditorHost& host)
    : m_Host(host)
{
    m_Host.GetObservers().Add(this);
    // The plug-in has written it, and nobody else.
    m_Host.GetLevelHeights().SetFileListener([this] { m_Files.NoteHeights(GetHeightPath()); });
    SetSaved();
}

CLevelDocument::~CLevelDocument()
{
    m_Host.GetLevelHeights().SetFileListener(nullptr);
    m_Host.GetObservers().Remove(this);
}

CTerrain* CLevelDocument::GetTerrain() const
{
    return m_Host.GetEngine().GetCWorld().GetCTerrain();
}

uint64_t CLevelDocument::GetRevision() const
{
    const CTerrain* pTerrain = GetTerrain();
    return pTerrain != nullptr ? pTerrain->GetRevision() : 0;
}

bool CLevelDocument::New(uint32_t uCells, const SVec3& size, float fHeight)
{
    const float fGround = std::clamp(fHeight, 0.0F, std::fabs(size.y));
    SHeightField field;
    // Sizes that no terrain has are the host's to refuse.
    const bool bSizes = IsTerrainSizeValid(uCells + 1, uCells + 1) && IsSizeVectorValid(size);
    if (bSizes && fGround > 0.0F && !MakeFlat(uCells + 1, size, fGround, field))
    {
        return false;
    }
    m_bOpening = true;
    bool bMade = true;
    if (field.pHeights != nullptr)
    {
        m_Host.TakeLevel(std::move(field));
    }
    else
    {
        bMade = m_Host.NewLevel(uCells, size);
    }
    m_bOpening = false;
    if (bMade)
    {
        SetSource({}, {}, true);
        m_FlatHeight = fGround;
    }
    return bMade;
}

bool CLevelDocument::Open(const char* pszPath)
{
    const std::string strPath = GetFullPath(pszPath);
    SLevelText text;
    CLevelFiles files;
    text.strHeightMap = strPath;
    m_MissingHeights.clear();
    if (!strPath.ends_with(HEIGHT_EXTENSION))
    {
        const ETCParseStatus eStatus = files.ReadText(strPath, text);
        if (eStatus == tcparse_unreadable)
        {
            CrashLog("[CLevelDocument::Open] %s cannot be read\n", pszPath);
            return false;
        }
        if (eStatus == tcparse_failed)
        {
            CrashLog("[CLevelDocument::Open] %s is no level: it names no height map\n", pszPath);
            return false;
        }
    }
    files.NoteHeights(GetFullPath(text.strHeightMap.c_str()));
    if (!OpenHeights(text.strHeightMap.c_str()))
    {
        m_MissingHeights = FindHeightBackup(text.strHeightMap).empty() ? "" : text.strHeightMap;
        return false;
    }
    SetSource(text, std::move(files), true);
    return true;
}

bool CLevelDocument::OpenHeights(const char* pszPath)
{
    m_bOpening = true;
    const bool bOpen = m_Host.OpenLevel(pszPath);
    m_bOpening = false;
    return bOpen;
}

bool CLevelDocument::Save()
{
    if (m_Path.empty())
    {
        CrashLog("[CLevelDocument::Save] the level has no file yet\n");
        return false;
    }
    return WriteTo(m_Path, GetSavedHeightPath());
}

std::string CLevelDocument::GetSavedHeightPath() const
{
    const std::string strHeightPath = GetHeightPath();
    return strHeightPath.empty() ? GetTargets(m_Path.c_str()).strHeightPath : strHeightPath;
}

bool CLevelDocument::SaveAs(const char* pszPath)
{
    const STargets targets = GetTargets(pszPath);
    return WriteTo(targets.strPath, targets.strHeightPath);
}

std::vector<SReplacedFile> CLevelDocument::FindReplaced() const
{
    return m_Files.FindReplaced(m_Path, GetSavedHeightPath(), "");
}

std::vector<SReplacedFile> CLevelDocument::FindReplaced(const char* pszPath, bool bConfirmed) const
{
    const STargets targets = GetTargets(pszPath);
    return m_Files.FindReplaced(targets.strPath, targets.strHeightPath, bConfirmed ? pszPath : "");
}

bool CLevelDocument::WriteTo(const std::string& strPath, const std::string& strHeightPath)
{
    CTerrain* pTerrain = GetTerrain();
    if (pTerrain == nullptr)
    {
        CrashLog("[CLevelDocument::Save] there is no level\n");
        return false;
    }
    SLevelText text = GetText();
    text.strPath = strPath;
    text.strHeightMap = strHeightPath;
    CKeptFileState kept(m_Host.GetLevelHeights());
    if (!m_Files.Write(*pTerrain, text))
    {
        return false;
    }
    m_Host.GetEngine().GetCWorld().GetCEnvironment()->SetHeightMapName(strHeightPath);
    m_Path = strPath;
    SetSaved();
    kept.Release();
    return true;
}

SLevelSizes CLevelDocument::GetSizes() const
{
    const CTerrain* pTerrain = GetTerrain();
    return pTerrain == nullptr ? SLevelSizes()
                               : SLevelSizes{pTerrain->GetCellsPerSide(),
                                             pTerrain->GetCellsPerSideZ(),
                                             pTerrain->GetSizeVector()};
}

void CLevelDocument::SetSaved()
{
    ++m_Savings;
    m_FlatHeight.reset();
    m_Host.GetLevelHeights().SetSaved();
    m_SavedSizes = GetSizes();
    m_KnownRevision = GetRevision();
    m_bChanged = false;
}

void CLevelDocument::SetSource(const SLevelText& text, CLevelFiles&& files, bool bSaved)
{
    m_Path = text.strPath;
    m_Files = std::move(files);
    m_Bitmap = text.strBitmap;
    m_Material = text.strMaterial;
    ++m_Generation;
    SetSaved();
    m_bChanged = !bSaved;
}

std::string CLevelDocument::GetTitle() const
{
    const std::string strPath = m_Path.empty() ? GetHeightPath() : m_Path;
    return strPath.empty() ? "Untitled" : std::filesystem::path(strPath).filename().string();
}

std::string CLevelDocument::GetFolder() const
{
    const std::string strPath = m_Path.empty() ? GetHeightPath() : m_Path;
    return std::filesystem::path(strPath).parent_path().string();
}

std::string CLevelDocument::GetHeightPath() const
{
    const CEnvironment* pEnvironment = m_Host.GetEngine().GetCWorld().GetCEnvironment();
    const std::string strName = pEnvironment != nullptr ? pEnvironment->GetHeightMapName() : "";
    return strName.empty() ? strName : GetFullPath(strName.c_str());
}

bool CLevelDocument::IsModified() const
{
    const uint64_t uState = m_Host.GetUndoStack().GetStateId();
    return HasLevel() && (m_bChanged || GetRevision() != m_KnownRevision ||
                          m_Host.GetLevelHeights().GetFileState() != uState ||
                          (!m_Path.empty() && !IsSame(GetSizes(), m_SavedSizes)));
}

void CLevelDocument::SetBitmap(const std::string& strPath)
{
    m_bChanged = m_bChanged || strPath != m_Bitmap;
    m_Bitmap = strPath;
}

void CLevelDocument::SetMaterial(const std::string& strPath)
{
    m_bChanged = m_bChanged || strPath != m_Material;
    m_Material = strPath;
}

SLevelText CLevelDocument::GetText() const
{
    SLevelText text;
    text.strHeightMap = GetHeightPath();
    text.strBitmap = m_Bitmap;
    text.strMaterial = m_Material;
    text.strPath = m_Path;
    if (const CTerrain* pTerrain = GetTerrain())
    {
        text.uCellsX = pTerrain->GetCellsPerSide();
        text.uCellsZ = pTerrain->GetCellsPerSideZ();
        text.size = pTerrain->GetSizeVector();
    }
    return text;
}

void CLevelDocument::OnBeforeEvent(const SHostEvent& event)
{
    // A press drops a drag that was never released: its heights stay and no record knows of them.
    if (event.eKind == EHostEvent::ButtonDown)
    {
        NoteChange();
    }
}

void CLevelDocument::NoteChange()
{
    m_bChanged = m_bChanged || GetRevision() != m_KnownRevision;
    m_KnownRevision = GetRevision();
}

void CLevelDocument::OnEvent(const SHostEvent& event)
{
    switch (event.eKind)
    {
    case EHostEvent::ButtonDown:
    case EHostEvent::MouseMove:
        return; // the stroke is not over
    case EHostEvent::ButtonUp:
    case EHostEvent::Action:
    case EHostEvent::Command:
        NoteChange(); // what came with a record was known before
        return;
    case EHostEvent::LevelChanged:
        if (!m_bOpening)
        {
            SetSource({}, {}, true); // a script has made or opened it: it is no file of ours
        }
        break;
    default:
        break; // a step, or a stroke that was taken back
    }
    m_KnownRevision = GetRevision();
}
