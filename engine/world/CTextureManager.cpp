#include "engine/world/CTextureManager.h"

#include "engine/world/CTexture.h"
#include "engine/world/CWorld.h"
#include "host/FileSystem.h"
#include "host/Image.h"
#include "host/Log.h"

#include <algorithm>

namespace
{

std::string MakeKey(const char* pszName)
{
    std::string strKey;
    fs::path_normalize(strKey, pszName != nullptr ? pszName : "", true);
    return strKey;
}

} // namespace

CTextureManager::CTextureManager(CWorld* pWorld)
    : m_World(pWorld)
{
}

CTextureManager::~CTextureManager()
{
    while (!m_Entries.empty())
    {
        // Through Release, so that the world forgets each one, however many users have not released
        // it.
        SEntry& entry = m_Entries.begin()->second;
        entry.uUsers = 1;
        Release(entry.pTexture.get());
    }
}

ITexture* CTextureManager::Load(const char* pszName, int iUsers)
{
    if (pszName == nullptr || *pszName == '\0')
    {
        CrashLog("[CTextureManager::Load] no name\n");
        return nullptr;
    }
    const auto uUsers = static_cast<uint32_t>(std::max(iUsers, 1));
    const std::string strKey = MakeKey(pszName);
    const auto found = m_Entries.find(strKey);
    if (found != m_Entries.end())
    {
        found->second.uUsers += uUsers;
        return found->second.pTexture.get();
    }
    std::unique_ptr<IImage> pImage(IL_LoadImage(pszName));
    if (pImage == nullptr)
    {
        return nullptr;
    }
    std::unique_ptr<IPalette> pPalette(IL_LoadPalette(pszName));
    SEntry& entry = m_Entries[strKey];
    entry.pTexture = std::make_unique<CTexture>(pszName, std::move(pImage), std::move(pPalette));
    entry.uUsers = uUsers;
    return entry.pTexture.get();
}

void CTextureManager::Release(ITexture* pTexture)
{
    if (pTexture == nullptr)
    {
        return;
    }
    const auto found =
        std::find_if(m_Entries.begin(),
                     m_Entries.end(),
                     [pTexture](const auto& e) { return e.second.pTexture.get() == pTexture; });
    if (found == m_Entries.end())
    {
        CrashLog("[CTextureManager::Release] not a loaded texture\n");
        return;
    }
    if (--found->second.uUsers > 0)
    {
        return;
    }
    // Whatever shows it must let go before it is destroyed.
    if (m_World != nullptr)
    {
        m_World->ForgetTexture(pTexture);
    }
    m_Entries.erase(found);
}

CTexture* CTextureManager::Find(const char* pszName) const
{
    const auto found = m_Entries.find(MakeKey(pszName));
    if (found != m_Entries.end())
    {
        return found->second.pTexture.get();
    }
    // A file may have been named by another path than now: from a root, or whole.
    const std::string strFile = pszName != nullptr ? MakeKey(fs::root_path(pszName).c_str()) : "";
    for (const auto& [strKey, entry] : m_Entries)
    {
        if (MakeKey(fs::root_path(entry.pTexture->GetName()).c_str()) == strFile)
        {
            return entry.pTexture.get();
        }
    }
    return nullptr;
}

bool CTextureManager::Reload(const char* pszName)
{
    CTexture* pTexture = Find(pszName);
    if (pTexture == nullptr)
    {
        return false;
    }
    CTexture& texture = *pTexture;
    std::unique_ptr<IImage> pImage(IL_LoadImage(texture.GetName()));
    if (pImage == nullptr)
    {
        return false;
    }
    std::unique_ptr<IPalette> pPalette(IL_LoadPalette(texture.GetName()));
    // The object stays, since its users keep pointers to it, and a bad file leaves its picture.
    texture.Replace(std::move(pImage), std::move(pPalette));
    return true;
}
