#pragma once

#include "host/IPluginBrushes.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class CEditorHost;
class CTCPARSE_KEYWORD;
class IPlugin;
class IPluginScript;

// The plug-in's library of brushes as a window works with it: each change is a keyword that the
// plug-in plays, and is saved at once. What cannot be saved is taken back, so list and file agree;
// brushes that wait to be saved (the panel adds them so) are saved along. Owned by its window, gone
// before the plug-in. UI thread.
class CBrushCatalogue
{
public:
    // Borrowed. pPlugin: null for none; one that lacks an interface for this has no library.
    CBrushCatalogue(CEditorHost& host, IPlugin* pPlugin);

    bool IsThere() const { return m_pBrushes != nullptr && m_pScript != nullptr; }

    // True when the library is another one than at the last call; GetBrushes has it then.
    bool Follow();

    // As they were at the last Follow. Their pixels can be read right after it only.
    const std::vector<SDefinedBrush>& GetBrushes() const { return m_Shown; }

    // What a person does to brushes, by their places. False: nothing was changed; GetLine says in
    // either case what happened, one line for a person. Nothing is done during a stroke, and where
    // the library is no longer the one that is shown.
    bool Take(size_t iBrush); // as a click in the panel's list
    bool Rename(size_t iBrush, const std::string& strName);
    bool Duplicate(size_t iBrush); // behind it
    bool Remove(std::vector<size_t> brushes);
    bool Move(size_t iBrush, size_t iTo);
    bool TakeBack();
    bool DoAgain();

    const std::string& GetLine() const { return m_Line; }

    // To be called when another brush may be at hand. True when the line said of one that it is,
    // and it is no longer so; the line is empty then.
    bool FollowHand();

    bool HasSaveFailed() const { return m_bSaveFailed; } // that was why nothing was changed

private:
    bool Begin(size_t iBrush); // it may be changed
    bool Play(const CTCPARSE_KEYWORD& call);
    // Plays the calls and saves; pszBack: takes one of them back.
    bool Change(const std::vector<std::unique_ptr<CTCPARSE_KEYWORD>>& calls, const char* pszBack);
    bool Change(std::unique_ptr<CTCPARSE_KEYWORD> pCall, const char* pszBack);
    bool Say(std::string strLine); // true
    bool Refuse(std::string strWhy);
    std::string GetSaveFault() const;           // of a change that is still there
    std::string GetQuoted(size_t iBrush) const; // its name

    CEditorHost& m_Host;
    IPluginBrushes* m_pBrushes;
    IPluginScript* m_pScript;
    std::vector<SDefinedBrush> m_Shown;
    uint64_t m_uRevision = 0; // of what is shown; 0 before anything is
    std::string m_Line;
    bool m_bSaveFailed = false;
    int32_t m_iTaken = -1; // of which the line says that it is at hand; -1: of none
};
