#pragma once

#include "host/Export.h"
#include "host/World.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>

class CTexture;
class CWorld;

// The textures that come from files, each loaded once and shared by name until its last user gives
// it back. Owned by the engine.
class TELLUR_API CTextureManager final : public ITextureManager
{
public:
    // pWorld: borrowed, outlives the manager; it is told of textures that go away. Null for none.
    explicit CTextureManager(CWorld* pWorld);
    ~CTextureManager() override; // textures still in use go with it

    // iUsers below 1 counts as 1.
    ITexture* Load(const char* pszName, int iUsers) override;
    void Release(ITexture* pTexture) override;

    // Reads the file of a loaded texture again, under the same pointer. Another path that leads to
    // the same file will do. False when none of that name is loaded, or, with the image library's
    // line, when the file cannot be read; the texture then keeps its picture.
    bool Reload(const char* pszName);

    uint32_t GetCount() const { return static_cast<uint32_t>(m_Entries.size()); }

private:
    struct SEntry
    {
        std::unique_ptr<CTexture> pTexture;
        uint32_t uUsers = 0;
    };

    CTexture* Find(const char* pszName) const; // null when it is not loaded

    CWorld* m_World;
    std::map<std::string, SEntry> m_Entries; // by name in lower case with '/'
};
