#include "engine/files/CommitGroup.h"

#include "engine/files/CSignalsHeld.h"
#include "engine/files/FaultText.h"
#include "host/FileSystem.h"

#include <algorithm>
#include <cerrno>
#include <new>
#include <utility>
#include <vector>

namespace fs
{

namespace
{

struct SHeld
{
    CNewFile file;
    std::string strName;
    bool bNew = false; // in its place
};

// Of the outermost group that is open; groups inside it add to the same list.
std::vector<SHeld> g_Held;
unsigned g_OpenGroups = 0;

// Puts the files into their places in order. Where one fails, those before it are put back, as far
// as that can be done, and pFailed is that one. What may find no memory throws before it changes
// a name.
int PlaceAll(std::vector<SHeld>& held, const SHeld*& pFailed)
{
    int iFault = 0;
    for (size_t i = 0; i < 2 * held.size() && iFault == 0; ++i)
    {
        // The first round gives names. The last one of all needs no way back.
        const bool bNames = i < held.size();
        const bool bLast = i + 1 == 2 * held.size();
        SHeld& one = held[i % held.size()];
        pFailed = &one;
        try
        {
            iFault = bNames  ? one.file.Name()
                     : bLast ? one.file.Place()
                             : one.file.PlaceKeepingOld();
        }
        catch (const std::bad_alloc&)
        {
            iFault = ENOMEM;
        }
        one.bNew = !bNames && iFault == 0;
    }
    // From the last to the first: a name that two of the files share gets back what it had before
    // both.
    for (size_t i = held.size(); i-- > 0 && iFault != 0;)
    {
        held[i].bNew = held[i].bNew && held[i].file.PutBack() != 0;
    }
    return iFault;
}

std::string GetNames(const std::vector<SHeld>& held, bool bNew)
{
    std::string strNames;
    for (const SHeld& one : held)
    {
        if (one.bNew == bNew)
        {
            strNames.append(strNames.empty() ? "" : ", ").append(one.strName);
        }
    }
    return strNames;
}

std::string GetText(const std::vector<SHeld>& held, const SHeld& failed, int iFault)
{
    try
    {
        const std::string strNew = GetNames(held, true);
        std::string strText = GetFaultText(failed.strName, iFault);
        return strNew.empty() ? strText
                              : strText.append(" (new: ")
                                    .append(strNew)
                                    .append("; as before: ")
                                    .append(GetNames(held, false))
                                    .append(")");
    }
    catch (const std::bad_alloc&)
    {
        return "out of memory"; // short enough to need none
    }
}

} // namespace

int PlaceOrHold(CNewFile&& file, const std::string& strName)
{
    if (g_OpenGroups == 0)
    {
        return file.Place();
    }
    g_Held.push_back({std::move(file), strName});
    return 0;
}

commit_group::commit_group()
    : m_FirstHeld(g_Held.size())
{
    ++g_OpenGroups;
}

commit_group::~commit_group()
{
    if (m_Open)
    {
        --g_OpenGroups;
        g_Held.resize(m_FirstHeld);
    }
}

bool commit_group::commit()
{
    if (!m_Open)
    {
        m_Error = file_exception("the group of files is not open");
        return false;
    }
    m_Open = false;
    // The files of an inner group wait for the outermost one.
    if (--g_OpenGroups > 0)
    {
        return true;
    }
    // From the first name to the last sync: a signal in between would leave some files new, some
    // old.
    const CSignalsHeld signalsHeld;
    std::vector<SHeld> held = std::exchange(g_Held, {});
    const SHeld* pFailed = nullptr;
    const int iFault = PlaceAll(held, pFailed);
    if (iFault != 0)
    {
        m_Mixed = std::any_of(held.begin(), held.end(), [](const SHeld& one) { return one.bNew; });
        m_Error = file_exception(GetText(held, *pFailed, iFault));
        return false;
    }
    // The renames are on the disk only when their folders are.
    for (const SHeld& one : held)
    {
        one.file.SyncFolder();
    }
    return true;
}

bool commit_group::is_mixed() const
{
    return m_Mixed;
}

const file_exception& commit_group::last_error() const
{
    return m_Error;
}

} // namespace fs
