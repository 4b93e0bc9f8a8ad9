#pragma once

#include "editor/core/IHostObserver.h"
#include "editor/core/SReadyBrushes.h"
#include "host/IPluginBrushes.h"

#include <functional>
#include <string>
#include <vector>

class CEditorHost;
class CTerrain;
class IPlugin;
class IPluginScript;
class IPluginTools;

// The brushes of the tools as a person finds them: kept from start to start, and as long as nobody
// changes them as large as fits the level. What the rule of SizeRule.h made of a tool, at the first
// start or when a ready brush was taken from the library, it makes anew for another level; what a
// person has changed since stays as it is. Where there is no library of the person's yet, the list
// has the ready brushes. Scripts know nothing of it. Owned by the editor. UI thread.
class CToolBrushes : public IHostObserver, private IBrushTaker
{
public:
    explicit CToolBrushes(CEditorHost& host); // borrowed, outlives this
    ~CToolBrushes() override;
    CToolBrushes(const CToolBrushes&) = delete;
    CToolBrushes& operator=(const CToolBrushes&) = delete;

    // Once the plug-in is loaded and a person is about to work with it. strFile: where the brushes
    // are kept; one that cannot be used is kept aside after a logged line, and the tools begin
    // anew. isScriptPlayed: a brush that a script takes stays as it is. A plug-in without the
    // interfaces is left alone.
    void Begin(IPlugin* pPlugin, std::string strFile, std::function<bool()> isScriptPlayed);
    // Writes the brushes when they are others than those that were written last; to be called now
    // and then, between what a person does. Nothing without Begin.
    void Keep();
    // Keeps the brushes; the plug-in may go. Nothing without Begin.
    void End();

    // IHostObserver
    void OnBeforeEvent(const SHostEvent& event) override;
    void OnEvent(const SHostEvent& event) override;

private:
    struct STool
    {
        std::string strFunction;
        SSizeShare share;
        std::string strReady;  // the ready brush that it is; empty: its own
        std::string strFitted; // as the rule left it; empty: it is a person's
        float fAmount = 0.0F;  // of then
        // The picture that was not there when the brush was loaded; empty: none.
        std::string strLostMask;
    };

    void OnBrushTaken(const char* pszName, const char* pszFunction) override;
    void HeedGivenHeight();
    void ListReadyBrushes();
    void Load();
    std::string MakeFile();
    bool HasOtherSize(const CTerrain& terrain) const; // than the tools were fitted to
    bool FitAll();                                    // true when one is another
    void Fit(STool& tool, const SGroundSize& ground);
    void NoteFitted(STool& tool);
    void PutBackPicked(const STool& tool);
    bool IsAsFitted(const STool& tool) const;
    std::string GetText(const std::string& strFunction) const;
    const CTerrain* FindTerrain() const;

    CEditorHost& m_Host;
    IPluginBrushes* m_pBrushes = nullptr; // all null before Begin and after End
    IPluginScript* m_pScript = nullptr;
    IPluginTools* m_pTools = nullptr;
    std::function<bool()> m_IsScriptPlayed;
    std::string m_File;
    bool m_bMayReplace = true; // the file was understood, or is kept aside
    std::string m_Written;     // what was to be written last, at first what there was to write
    SReadyBrushes m_Ready;
    std::vector<STool> m_Tools;
    SVec3 m_FittedSize;            // of the terrain that the tools were last fitted to
    bool m_bFitted = false;        // the last other size has changed one
    std::string m_CommandFunction; // of the tool at hand when a command began
    SToolSizes m_CommandSizes;     // its sizes then
};
