#include "engine/files/CommitGroup.h"

#include "engine/files/CSignalsHeld.h"
#include "engine/files/FaultText.h"
#include "host/FileSystem.h"

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
};

// Of the outermost group that is open; groups inside it add to the same list.
std::vector<SHeld> g_Held;
unsigned g_OpenGroups = 0;

// Empty when the first nPlaced files are all the old ones again; else which names are what.
std::string PutBack(std::vector<SHeld>& held, size_t nPlaced)
{
    std::string strNew;
    std::string strOld;
    for (size_t i = held.size(); i-- > 0;)
    {
        const bool bNew = i < nPlaced && held[i].file.PutBack() != 0;
        std::string& strList = bNew ? strNew : strOld;
        strList.insert(0, strList.empty() ? "" : ", ").insert(0, held[i].strName);
    }
    return strNew.empty() ? strNew : " (new: " + strNew + "; as before: " + strOld + ")";
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
    if (--g_OpenGroups > 0)
    {
        return true;
    }
    const CSignalsHeld signalsHeld;
    std::vector<SHeld> held = std::exchange(g_Held, {});
    for (SHeld& one : held)
    {
        const int iFault = one.file.Name();
        if (iFault != 0)
        {
            m_Error = file_exception(GetFaultText(one.strName, iFault));
            return false;
        }
    }
    for (size_t i = 0; i < held.size(); ++i)
    {
        // The last one needs no way back.
        const bool bLast = i + 1 == held.size();
        const int iFault = bLast ? held[i].file.Place() : held[i].file.PlaceKeepingOld();
        if (iFault != 0)
        {
            const std::string strMixed = PutBack(held, i);
            m_Mixed = !strMixed.empty();
            m_Error = file_exception(GetFaultText(held[i].strName, iFault) + strMixed);
            return false;
        }
    }
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
