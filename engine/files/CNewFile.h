#pragma once

#include <sys/stat.h>

#include <string>

namespace fs
{

// A file that is written to take the place of another one, or to be the first of its name. Until
// then it has no name at all where the file system can do that, so that a process that ends leaves
// nothing behind; else a temporary one beside the target. Failures return the system's error
// number, 0 is success. Destroyed before it took its place, it is gone.
class CNewFile
{
public:
    CNewFile() = default;
    ~CNewFile();
    CNewFile(CNewFile&& other) noexcept;
    CNewFile& operator=(CNewFile&& other) noexcept;

    // Makes the new file, empty and open for writing. pTarget: what is there already, null when
    // nothing is. The new file gets its mode, and its owner, group and attributes as far as this
    // process may give them; before that it is its owner's alone.
    int Create(const std::string& strTarget, const struct stat* pTarget);

    int Sync();

    // Gives it its temporary name, under which it can be renamed.
    int Name();

    // Takes the target's place for good; called after Sync.
    int Place();

    // Takes the target's place with a way back, PutBack, until Discard drops what was there before.
    // Called after Sync and Name.
    int PlaceKeepingOld();
    int PutBack(); // needs no memory. ENOTSUP: the file system could not keep the old file

    void SyncFolder() const;
    void Discard();

    // -1 when there is none.
    int GetDescriptor() const { return m_Descriptor; }

    const std::string& GetTarget() const { return m_Target; }

private:
    int CreateNamed(mode_t mode);
    int Link(const std::string& strName) const;
    void KeepOwner(const struct stat& target) const;
    void KeepAttributes() const;
    void Forget();

    int m_Descriptor = -1;
    std::string m_Target;
    std::string m_Folder;    // of the target
    std::string m_Temporary; // the name of the new file; after PlaceKeepingOld of the old one
    bool m_Unnamed = false;
    bool m_WasAbsent = false; // PlaceKeepingOld found no target
};

} // namespace fs
