#pragma once

#include "editor/core/CFileStamp.h"
#include "host/IPluginBrushes.h"

#include <string>
#include <vector>

class IPlugin;

// Why the plug-in cannot save these brushes, without a full stop: it writes none that has no image
// or no function. Names some of them; empty where they can be saved.
std::string GetSaveHindrance(const std::vector<SDefinedBrush>& brushes);

// The file of the library of brushes. What another hand has put there since this program read or
// wrote it, and what could not be read at the start, is kept beside it before it is replaced,
// whoever saves. Says, as long as it is so, why the library cannot be saved. Owned by the editor.
// UI thread.
class CBrushFile : private IBrushSaveGuard
{
public:
    CBrushFile() = default;
    ~CBrushFile() override = default;
    CBrushFile(const CBrushFile&) = delete;
    CBrushFile& operator=(const CBrushFile&) = delete;

    void Begin(IPlugin* pPlugin); // just after it has read the file; borrowed until End
    void End();
    void Follow(); // the library may be another one

private:
    bool MayReplaceBrushFile() override;
    void OnBrushFileSaved() override;
    bool Refuse();

    IPluginBrushes* m_pBrushes = nullptr; // null outside, and for a plug-in without
    CFileStamp m_Stamp;
    bool m_bFaulty = false;   // not all of the file could be read
    std::string m_Kept;       // the other hand's, for the line that says so; empty: none
    uint64_t m_uRevision = 0; // that was looked at; 0: none
};
