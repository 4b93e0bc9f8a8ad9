#include "editor/core/CLevelDocument.h"

#include "editor/core/CEditorHost.h"
#include "editor/core/ProtectionPicture.h"
#include "editor/core/SLevelText.h"
#include "editor/core/Words.h"
#include "engine/terrain/CProtectionEdit.h"
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

constexpr char HEIGHT_EXTENSION[] = ".height";

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
    , m_Changes(host)
{
    m_Host.GetObservers().Add(this);
    // The plug-in has written it, and nobody else.
    m_Host.GetLevelHeights().SetFileListener([this] { m_Files.NoteHeights(GetHeightPath()); });
    m_Changes.SetSaved();
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
    const bool bMade = ChangeLevel(
        [&]
        {
            // The host's new terrain is flat at 0, so only higher ground needs heights of its own.
            if (field.pHeights == nullptr)
            {
                return m_Host.NewLevel(uCells, size);
            }
            m_Host.TakeLevel(std::move(field));
            return true;
        });
    if (bMade)
    {
        SetSource({}, {});
        m_FlatHeight = fGround;
    }
    return bMade;
}

bool CLevelDocument::Open(const char* pszPath)
{
    const std::string strPath = GetFullPath(pszPath);
    SLevelText text;
    // What is known of the files becomes the document's own only when the level is open.
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
    // Looked at before they are read, so that a change in between shows later.
    files.NoteHeights(GetFullPath(text.strHeightMap.c_str()));
    if (!ChangeLevel([&] { return m_Host.OpenLevel(text.strHeightMap.c_str()); }))
    {
        // A change of resolution that was cut off leaves the backup alone, which a person may want
        // back.
        m_MissingHeights = FindHeightBackup(text.strHeightMap).empty() ? "" : text.strHeightMap;
        return false;
    }
    ReadProtection(text, files);
    SetSource(text, std::move(files));
    return true;
}

// A picture that cannot be used, which was logged, is left where it is; the level opens without it.
void CLevelDocument::ReadProtection(SLevelText& text, CLevelFiles& files) const
{
    if (text.strProtection.empty())
    {
        return;
    }
    text.strProtection = GetFullPath(text.strProtection.c_str());
    files.NoteProtection(text.strProtection);
    bool bRead = false;
    CProtectionEdit edit(*GetTerrain());
    // The resolution may have changed after the level was saved: its height map is on the disk
    // then.
    m_Host.GetInput().Guard("CLevelDocument::Open",
                            [&] { bRead = ::ReadProtection(text.strProtection, edit, true); });
    if (!bRead)
    {
        edit.TakeBack(); // memory may have ended half-way
        WarnLog("[CLevelDocument::Open] %s cannot be used: nothing is protected\n",
                text.strProtection.c_str());
        files.NoteProtection({});
        text.strProtection.clear();
        text.bUnreadProtection = true;
    }
}

bool CLevelDocument::TakeOver(const SLevelText& text,
                              const std::function<bool(CLevelFiles& files)>& change,
                              std::optional<float> flatHeight)
{
    CLevelFiles files;
    if (!ChangeLevel([&] { return change(files); }))
    {
        return false;
    }
    SetSource(text, std::move(files));
    m_Changes.SetChanged();
    m_FlatHeight = flatHeight;
    return true;
}

bool CLevelDocument::ChangeLevel(const std::function<bool()>& change)
{
    // The host tells of the other level in the middle of this call, when only the caller knows
    // which file it comes from.
    struct SOpening // ends with the call, also when memory runs out in it
    {
        explicit SOpening(bool& bOpening)
            : flag(bOpening)
        {
            flag = true;
        }

        ~SOpening() { flag = false; }

        SOpening(const SOpening&) = delete;
        SOpening& operator=(const SOpening&) = delete;

        bool& flag;
    };

    const SOpening opening(m_bOpening);
    return change();
}

bool CLevelDocument::Save()
{
    if (m_Path.empty())
    {
        CrashLog("[CLevelDocument::Save] the level has no file yet\n");
        return false;
    }
    return WriteTo(GetSavedText(nullptr));
}

// The text that a save writes; pszPath: of SaveAs, null for the level's own names.
SLevelText CLevelDocument::GetSavedText(const char* pszPath) const
{
    SLevelText text = GetText();
    const SLevelTargets targets = GetLevelTargets(pszPath != nullptr ? pszPath : m_Path.c_str());
    text.strPath = targets.strPath;
    if (pszPath != nullptr || text.strHeightMap.empty())
    {
        text.strHeightMap = targets.strHeightPath;
    }
    if (pszPath != nullptr || text.strProtection.empty())
    {
        text.strProtection = targets.strProtection;
    }
    if (!m_Host.GetProtection().IsAny())
    {
        text.strProtection.clear();
        text.bUnreadProtection = m_bUnreadProtection && pszPath == nullptr;
    }
    return text;
}

bool CLevelDocument::SaveAs(const char* pszPath)
{
    return WriteTo(GetSavedText(pszPath));
}

std::vector<SReplacedFile> CLevelDocument::FindReplaced() const
{
    return FindReplaced(nullptr, false);
}

std::vector<SReplacedFile> CLevelDocument::FindReplaced(const char* pszPath, bool bConfirmed) const
{
    const SLevelText text = GetSavedText(pszPath);
    return m_Files.FindReplaced({text.strPath, text.strHeightMap, text.strProtection},
                                bConfirmed ? pszPath : "");
}

bool CLevelDocument::WriteTo(const SLevelText& text)
{
    m_Host.GetProtection().End(); // what is being painted is saved, too
    CTerrain* pTerrain = GetTerrain();
    if (pTerrain == nullptr)
    {
        CrashLog("[CLevelDocument::Save] there is no level\n");
        return false;
    }
    CKeptFileState kept(m_Host.GetLevelHeights());
    if (!m_Files.Write(*pTerrain, text))
    {
        return false;
    }
    m_Host.GetEngine().GetCWorld().GetCEnvironment()->SetHeightMapName(text.strHeightMap);
    m_Path = text.strPath;
    m_Protection = text.strProtection;
    m_bUnreadProtection = text.bUnreadProtection;
    m_FlatHeight.reset();
    m_Changes.SetSaved();
    kept.Release();
    return true;
}

void CLevelDocument::SetSource(const SLevelText& text, CLevelFiles&& files)
{
    m_Path = text.strPath;
    m_Files = std::move(files);
    m_Bitmap = text.strBitmap;
    m_Material = text.strMaterial;
    m_Protection = text.strProtection;
    m_bUnreadProtection = text.bUnreadProtection;
    if (CTerrain* pTerrain = GetTerrain())
    {
        pTerrain->SetGeoTags(text.geo);
    }
    ++m_Generation;
    m_FlatHeight.reset();
    m_Changes.SetSaved();
}

std::string CLevelDocument::GetTitle() const
{
    const std::string strPath = m_Path.empty() ? GetHeightPath() : m_Path;
    return strPath.empty() ? TextKey("Untitled")
                           : std::filesystem::path(strPath).filename().string();
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

void CLevelDocument::SetBitmap(const std::string& strPath)
{
    if (strPath != m_Bitmap)
    {
        m_Bitmap = strPath;
        m_Changes.SetChanged();
    }
}

void CLevelDocument::SetMaterial(const std::string& strPath)
{
    if (strPath != m_Material)
    {
        m_Material = strPath;
        m_Changes.SetChanged();
    }
}

SLevelText CLevelDocument::GetText() const
{
    SLevelText text;
    text.strHeightMap = GetHeightPath();
    text.strBitmap = m_Bitmap;
    text.strMaterial = m_Material;
    text.strProtection = m_Protection;
    text.strPath = m_Path;
    if (const CTerrain* pTerrain = GetTerrain())
    {
        text.uCellsX = pTerrain->GetCellsPerSide();
        text.uCellsZ = pTerrain->GetCellsPerSideZ();
        text.size = pTerrain->GetSizeVector();
        text.geo = pTerrain->GetGeoTags();
    }
    return text;
}

void CLevelDocument::OnBeforeEvent(const SHostEvent& event)
{
    m_Changes.OnBeforeEvent(event);
}

void CLevelDocument::OnEvent(const SHostEvent& event)
{
    if (event.eKind == EHostEvent::LevelChanged && !m_bOpening)
    {
        SetSource({}, {}); // a script has made or opened it: it is no file of ours
    }
    m_Changes.OnEvent(event);
}
