#pragma once

class CEditorHost;
class CLevelDocument;
struct SLevelText;

// Opens a level from what an interrupted run has left: heights from pszHeightPath, the rest from
// text. It gets its own paths back, which are not read, and counts as modified. bSavedSince: what
// is there now counts as changed by another hand. False after one logged line, and the level before
// stays.
bool OpenRecoveredLevel(CEditorHost& host,
                        CLevelDocument& document,
                        const SLevelText& text,
                        const char* pszHeightPath,
                        bool bSavedSince);

// The same of a level that was made and never saved, all of whose heights are fHeight.
bool NewRecoveredLevel(CLevelDocument& document, const SLevelText& text, float fHeight);
