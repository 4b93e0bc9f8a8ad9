#pragma once

#include "host/Export.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

// The file-system library: every path of host and plug-in passes through it. '/' and '\' are the
// same separator on input. A relative path is looked for in the user root (read and write), then in
// the data root (read only); a name that is not there as written is found without regard to case.
// Nothing here throws; only making a file and what gives a path may find no memory for that.
// Implemented by the engine library. UI thread only; nothing here calls back.
//
// Order of calls: a program sets the roots first. Reading: open, then read, seek and the rest,
// close or the destructor. Writing: open, write, close, whose answer says whether the target is the
// new file; discard, or the destructor alone, keeps the old one. A fault sticks until the next
// open, so a writer need look at close only. Files that belong together: a commit_group, each file
// as above, then commit. Paths that are null count as "", which is no file.
namespace fs
{

enum EOpenMode : uint32_t
{
    mode_read = 0,
    mode_write = 1,
};

// Why the last operation of a file failed.
class TELLUR_API file_exception
{
public:
    file_exception() = default;
    explicit file_exception(std::string strText);

    // One line without a line feed that names the file and the fault; empty when nothing failed.
    const char* get_error_text() const;

private:
    std::string m_Text;
};

// One open file. A file opened for writing is written beside its target and takes its place in a
// close that succeeds (after fsync); a failed or abandoned write leaves the old file as it was. It
// has no name until then where the file system can do that, else ".NAME.tmp-…". Opening also
// removes such names from the folder when the processes that made them are gone. What is no plain
// file (/dev/stdout, a pipe) is written through; seek then fails on a pipe.
class TELLUR_API file
{
public:
    file();          // closed
    virtual ~file(); // an open write that was not closed is abandoned
    file(const file&) = delete;
    file& operator=(const file&) = delete;

    // pszPath: copied; null is no file. uMode: EOpenMode. uFlags: none are defined, pass 0. False
    // when it cannot be opened (a folder is no file), and the file is closed.
    virtual bool open(const char* pszPath, uint32_t uMode, uint32_t uFlags = 0);

    // Read or write at the position and move it. They give the number of bytes, of the nBytes that
    // the caller's buffer has: fewer at the end of the file or on a fault. A write fault sticks:
    // close then returns false.
    virtual size_t read(void* pDest, size_t nBytes);
    virtual size_t write(const void* pSource, size_t nBytes);

    virtual bool seek(uint64_t nPosition); // bytes from the start; false on a fault, nothing moves
    // Position and length in bytes, 0 when closed; eof is true at the end and when closed.
    virtual uint64_t tell() const;
    virtual uint64_t length() const;
    virtual bool eof() const;
    virtual bool set_eof();           // cuts the file at the current position, write mode only
    virtual const char* name() const; // as it was passed to open, borrowed; empty when closed

    // Ends the use of the file. What was written is flushed, put on the disk and takes its target's
    // place; inside a commit_group that last step waits for the commit. False when anything failed
    // since open; the target is then untouched. False too when no file is open.
    virtual bool close();

    // Ends the use of the file, drops what was written and keeps the target as it was.
    virtual void discard();

    const file_exception& last_error() const;

protected:
    struct SState;
    std::unique_ptr<SState> m_State;
};

// Files that belong together take their places together. While a group is open, the close of a file
// opened for writing puts everything on the disk but leaves the target as it is: reading the target
// still gives the old file. One group at a time: a group that is made while another is open joins
// it, and its commit leaves the files to the outer one. What is written through, and fs::rename and
// fs::remove, do not wait.
//
// Killed inside commit, between two renames: the names already renamed are new and whole, the
// others old and whole, and no file is lost; so close first what the old others can be read with.
// What lay beside them is removed by the next write into that folder.
class TELLUR_API commit_group
{
public:
    commit_group();
    ~commit_group(); // without a commit: drops what was closed since it was made
    commit_group(const commit_group&) = delete;
    commit_group& operator=(const commit_group&) = delete;

    // Ends the group. Puts all files into their places, in the order in which they were closed.
    // When one fails, those before it are put back: false, and every target is as it was.
    bool commit();

    // Whether a commit that failed could not put all files back. The text of last_error then says
    // which names are new and which are as before.
    bool is_mixed() const;

    const file_exception& last_error() const;

private:
    size_t m_FirstHeld;
    bool m_Open = true;
    bool m_Mixed = false;
    file_exception m_Error;
};

// A text file that is written printf-style.
class TELLUR_API ifile : public file
{
public:
    // Gives the number of bytes written, or -1 on a fault (which sticks like that of write). The
    // format must not be null.
    virtual int printf(const char* pszFormat, ...) TELLUR_PRINTF(2, 3);
    ifile& operator<<(const char* pszText);
};

// exists: whether there is a file or a folder of that path, in either root. read_only: whether it
// is there and this user may not write it. Both are false for null.
TELLUR_API bool exists(const char* pszPath);
TELLUR_API bool read_only(const char* pszPath);

// Turns separators to '/', drops "." and double separators, resolves "..". bLower: lower case too,
// as texture names in caches compare. strDest may be the source's own string.
TELLUR_API void path_normalize(std::string& strDest, const char* pszSource, bool bLower);

// The path as the operating system knows it: the existing file that a relative path means, or,
// when there is none, the path below the user root.
TELLUR_API std::string root_path(const char* pszPath);

// True when writing one of them changes or replaces the file that the other one means: one name
// spelled in two ways, a link, a second name of a file. Files that are not there yet count by name.
// False for devices and pipes, and for two descriptors of this process (/dev/stdout): what is
// written through there comes one after the other.
TELLUR_API bool same_file(const char* pszLeft, const char* pszRight);

// Opens what is no plain file for writing and gives the descriptor, which the caller closes. -1,
// with the fault in errno, when it cannot be opened; EINVAL for a plain file and for a name that is
// free.
TELLUR_API int open_stream(const char* pszPath);

// These answer as the C run-time's do: 0 on success, -1 otherwise and for null. rename does not
// overwrite an existing target.
TELLUR_API int rename(const char* pszFrom, const char* pszTo);
TELLUR_API int remove(const char* pszPath);

// Set the folder for relative paths (default: the current folder at the time of use) and the
// installed, read-only one (default: none). Null or "" sets the default.
TELLUR_API void set_user_root(const char* pszFolder);
TELLUR_API void set_data_root(const char* pszFolder);
TELLUR_API std::string get_user_root(); // absolute, without a separator at the end
TELLUR_API std::string get_data_root(); // empty when there is none

} // namespace fs
