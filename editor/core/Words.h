#pragma once

class CTextCatalogue;

// The one place that the editor's own texts pass through on their way to a person, so that a house
// can translate or re-word them. What the plug-in says is its own and does not come here, and lines
// of the log stay as they are: reports of faults must read the same everywhere.

// The catalogue's text for an English one, or the English itself where it has none. Good until the
// catalogue goes; without one it is what was given. One look into a hash table, no memory is asked
// for. "%1" and the like stand in both. Null gives null.
const char* Words(const char* pszEnglish);

// Marks a text of a table, which is made before a catalogue is read: whoever shows it asks Words.
constexpr const char* TextKey(const char* pszEnglish)
{
    return pszEnglish;
}

// Where Words looks from now on; null: nowhere. Borrowed until another one is set. Before windows
// are made, which keep what they were given.
void SetCatalogue(const CTextCatalogue* pCatalogue);
