#include "editor/core/CKeyBindings.h"

#include "editor/core/KeptFiles.h"
#include "host/FileSystem.h"
#include "parser/DeclarativeText.h"
#include "parser/KeywordValues.h"
#include "parser/TCParseFile.h"

#include <algorithm>
#include <memory>

namespace
{

constexpr char KEY[] = "key";

bool CouldMeanBoth(const SKeyCommand& a, const SKeyCommand& b)
{
    return a.key.uKey != 0 && a.key == b.key &&
           (a.strContext.empty() || b.strContext.empty() || a.strContext == b.strContext);
}

} // namespace

void CKeyBindings::Add(SKeyCommand command)
{
    const SKeyChord* pLoaded = FindLoaded(command.strId);
    const bool bTaken =
        std::any_of(m_Loaded.begin(),
                    m_Loaded.end(),
                    [&](const auto& loaded) { return loaded.second == command.defaultKey; });
    command.key = pLoaded != nullptr ? *pLoaded : bTaken ? SKeyChord() : command.defaultKey;
    const auto known =
        std::find_if(m_Commands.begin(),
                     m_Commands.end(),
                     [&](const SKeyCommand& other) { return other.strId == command.strId; });
    if (known != m_Commands.end())
    {
        *known = std::move(command);
    }
    else
    {
        m_Commands.push_back(std::move(command));
    }
    // The program's command may come after the action whose default key it shares.
    TakeOverDefaults();
}

void CKeyBindings::TakeOverDefaults()
{
    for (SKeyCommand& action : m_Commands)
    {
        const bool bTaken =
            action.iAction >= 0 && action.defaultKey.uKey != 0 &&
            std::any_of(m_Commands.begin(),
                        m_Commands.end(),
                        [&](const SKeyCommand& other)
                        { return other.iAction < 0 && other.defaultKey == action.defaultKey; });
        if (bTaken)
        {
            action.key = FindLoaded(action.strId) != nullptr ? action.key : SKeyChord();
            action.defaultKey = {};
        }
    }
}

void CKeyBindings::AddActions(const std::vector<SActionDescriptor>& actions,
                              const std::string& strContext)
{
    for (const SActionDescriptor& action : actions)
    {
        SKeyCommand command;
        command.strId =
            "action." + std::to_string(action.iGroup) + "." + std::to_string(action.iIndex);
        command.strText = action.strName;
        command.strContext = strContext;
        command.defaultKey = {action.uKey, action.uModifiers};
        command.iAction = action.iIndex;
        Add(std::move(command));
    }
}

const SKeyCommand* CKeyBindings::FindById(const std::string& strId) const
{
    const auto found =
        std::find_if(m_Commands.begin(),
                     m_Commands.end(),
                     [&](const SKeyCommand& command) { return command.strId == strId; });
    return found != m_Commands.end() ? &*found : nullptr;
}

bool CKeyBindings::Set(const std::string& strId, const SKeyChord& key)
{
    for (SKeyCommand& command : m_Commands)
    {
        if (command.strId == strId)
        {
            command.key = key;
            return true;
        }
    }
    return false;
}

void CKeyBindings::Reset()
{
    for (SKeyCommand& command : m_Commands)
    {
        command.key = command.defaultKey;
    }
}

std::optional<std::pair<size_t, size_t>> CKeyBindings::FindClash() const
{
    for (size_t i = 0; i < m_Commands.size(); ++i)
    {
        for (size_t iOther = i + 1; iOther < m_Commands.size(); ++iOther)
        {
            if (CouldMeanBoth(m_Commands[i], m_Commands[iOther]))
            {
                return std::make_pair(i, iOther);
            }
        }
    }
    return std::nullopt;
}

bool CKeyBindings::Load(const std::string& strFile)
{
    ETCParseStatus eStatus = tcparse_done;
    const std::unique_ptr<CTCPARSE_KEYWORD> pFirst(
        TCParseFile(strFile.c_str(), nullptr, nullptr, nullptr, nullptr, nullptr, &eStatus));
    m_bDamaged =
        eStatus == tcparse_failed || (eStatus == tcparse_unreadable && fs::exists(strFile.c_str()));
    if (eStatus != tcparse_done)
    {
        return false;
    }
    for (const CTCPARSE_KEYWORD* pKey = pFirst.get(); pKey != nullptr; pKey = pKey->next)
    {
        const CTCPARSE_PARAM* pParam = pKey->params;
        const char* pszId = IsKeyword(pKey, KEY) ? GetStringValue(pParam) : nullptr;
        if (pszId == nullptr || pParam->next == nullptr)
        {
            continue;
        }
        const SKeyChord key = {static_cast<uint32_t>(GetIntValue(pParam->next)),
                               static_cast<uint32_t>(GetIntValue(pParam->next->next))};
        // A later line of the same command counts.
        std::erase_if(m_Loaded, [&](const auto& loaded) { return loaded.first == pszId; });
        m_Loaded.emplace_back(pszId, key);
        Set(pszId, key);
    }
    return true;
}

bool CKeyBindings::Save(const std::string& strFile)
{
    if (m_bDamaged && KeepFile(strFile).empty())
    {
        return false; // it stays where it is
    }
    m_bDamaged = false;
    // Keys of unknown commands stay in the file: their plug-in may just not be loaded.
    std::vector<std::pair<std::string, SKeyChord>> kept;
    for (const auto& loaded : m_Loaded)
    {
        if (FindById(loaded.first) == nullptr)
        {
            kept.push_back(loaded);
        }
    }
    for (const SKeyCommand& command : m_Commands)
    {
        if (command.key != command.defaultKey)
        {
            kept.emplace_back(command.strId, command.key);
        }
    }
    std::string strText = "!key( s, i, i )\n\n";
    for (const auto& [strId, key] : kept)
    {
        strText += "key( " + QuoteText(strId) + ", " + std::to_string(key.uKey) + ", " +
                   std::to_string(key.uModifiers) + " )\n";
    }
    m_Loaded = std::move(kept);
    return WriteTextFile("CKeyBindings::Save", strFile, strText);
}

const SKeyChord* CKeyBindings::FindLoaded(const std::string& strId) const
{
    for (const auto& [strLoaded, key] : m_Loaded)
    {
        if (strLoaded == strId)
        {
            return &key;
        }
    }
    return nullptr;
}
