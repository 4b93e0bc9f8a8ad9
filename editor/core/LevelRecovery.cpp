// A level document from what an interrupted run has left.

#include "editor/core/CEditorHost.h"
#include "editor/core/CLevelDocument.h"
#include "editor/core/SLevelText.h"
#include "engine/world/CEngineHost.h"
#include "engine/world/CEnvironment.h"

#include <utility>

bool CLevelDocument::OpenRecovered(const SLevelText& text,
                                   const char* pszHeightPath,
                                   bool bSavedSince)
{
    if (!OpenHeights(pszHeightPath))
    {
        return false;
    }
    m_Host.GetEngine().GetCWorld().GetCEnvironment()->SetHeightMapName(text.strHeightMap);
    CLevelFiles files;
    if (!text.strPath.empty())
    {
        SLevelText said; // what is kept of it; what it says is known
        files.ReadText(text.strPath, said);
        files.NoteHeights(GetHeightPath());
        if (bSavedSince)
        {
            files.Distrust();
        }
    }
    SetSource(text, std::move(files), false);
    return true;
}

bool CLevelDocument::NewRecovered(const SLevelText& text, float fHeight)
{
    if (!New(text.uCellsX, text.size, fHeight))
    {
        return false;
    }
    SetSource(text, {}, false);
    m_FlatHeight = fHeight;
    return true;
}
