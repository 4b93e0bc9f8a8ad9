#include "editor/core/LevelRecovery.h"

#include "editor/core/CEditorHost.h"
#include "editor/core/CLevelDocument.h"
#include "editor/core/SLevelText.h"
#include "engine/world/CEngineHost.h"
#include "engine/world/CEnvironment.h"

bool OpenRecoveredLevel(CEditorHost& host,
                        CLevelDocument& document,
                        const SLevelText& text,
                        const char* pszHeightPath,
                        bool bSavedSince)
{
    SLevelText recovered = text;
    return document.TakeOver(recovered,
                             [&](CLevelFiles& files)
                             {
                                 if (!host.OpenLevel(pszHeightPath))
                                 {
                                     return false;
                                 }
                                 // The heights come from the autosave; the level goes on under the
                                 // name of its own file.
                                 host.GetEngine().GetCWorld().GetCEnvironment()->SetHeightMapName(
                                     text.strHeightMap);
                                 if (!text.strPath.empty())
                                 {
                                     SLevelText said; // what is kept of it; what it says is known
                                     files.ReadText(text.strPath, said);
                                     files.NoteHeights(document.GetHeightPath());
                                     files.NoteProtection(text.strProtection);
                                     // A picture that could not be used is no more there than
                                     // before; its name stays all the same.
                                     recovered.bUnreadProtection =
                                         text.strProtection.empty() && !said.strProtection.empty();
                                     if (bSavedSince)
                                     {
                                         files.Distrust();
                                     }
                                 }
                                 return true;
                             });
}

bool NewRecoveredLevel(CLevelDocument& document, const SLevelText& text, float fHeight)
{
    return document.New(text.uCellsX, text.size, fHeight) &&
           document.TakeOver(
               text, [](CLevelFiles&) { return true; }, fHeight);
}
