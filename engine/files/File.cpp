#include "engine/files/CFileReader.h"
#include "engine/files/CFileWriter.h"
#include "engine/files/FaultText.h"
#include "engine/files/FormatText.h"
#include "engine/files/Paths.h"
#include "host/FileSystem.h"

#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <limits>
#include <new>

namespace fs
{

namespace
{

// A failure short of memory, too; the target is then untouched.
int Commit(CFileWriter& writer, const std::string& strName)
{
    try
    {
        return writer.Commit(strName);
    }
    catch (const std::bad_alloc&)
    {
        writer.Discard();
        return ENOMEM;
    }
}

} // namespace

struct file::SState
{
    std::string strName;
    file_exception error;
    CFileReader reader;
    CFileWriter writer;
    bool bReadPastEnd = false;

    // True for success; else last_error names the file and the fault.
    bool Accept(int iFault, const std::string& strPath)
    {
        if (iFault == 0)
        {
            return true;
        }
        return Tell([&] { return GetFaultText(strPath, iFault); });
    }

    bool Fail(const std::string& strPath, const char* pszFault)
    {
        return Tell([&] { return strPath + ": " + pszFault; });
    }

    // The text is made in here: where there is no memory for it, a fault is told all the same.
    template <typename TGetText> bool Tell(const TGetText& getText)
    {
        try
        {
            error = file_exception(getText());
        }
        catch (const std::bad_alloc&)
        {
            error = file_exception("out of memory"); // short enough to need none
        }
        return false;
    }
};

file_exception::file_exception(std::string strText)
    : m_Text(std::move(strText))
{
}

const char* file_exception::get_error_text() const
{
    return m_Text.c_str();
}

file::file()
    : m_State(std::make_unique<SState>())
{
}

file::~file() = default;

bool file::open(const char* pszPath, uint32_t uMode, uint32_t /*uFlags*/)
try
{
    // What is still open is abandoned, as it would be by the destructor.
    discard();
    m_State->error = file_exception();
    const std::string strName = pszPath != nullptr ? pszPath : "";
    const std::string strPath = ToNative(pszPath);
    int iFault = 0;
    if (uMode == mode_read)
    {
        const std::string strFound = FindExisting(strPath);
        iFault = strFound.empty() ? ENOENT : m_State->reader.Open(strFound);
    }
    else if (uMode == mode_write)
    {
        MakeOverlayFolders(strPath);
        iFault = m_State->writer.Open(GetWriteTarget(strPath));
    }
    else
    {
        iFault = EINVAL;
    }
    // Faults of which the system's own text would tell too little.
    if (iFault == EROFS)
    {
        return m_State->Fail(strName, "is read-only");
    }
    if (iFault == EISDIR)
    {
        return m_State->Fail(strName, "is a folder");
    }
    if (iFault == ENOTSUP)
    {
        return m_State->Fail(strName, "is no regular file");
    }
    if (iFault == ENXIO)
    {
        return m_State->Fail(strName, "is a pipe that nobody reads");
    }
    if (!m_State->Accept(iFault, strName))
    {
        return false;
    }
    m_State->strName = strName;
    return true;
}

catch (const std::bad_alloc&)
{
    discard();
    return m_State->Fail(std::string(), "not enough memory");
}

size_t file::read(void* pDest, size_t nBytes)
{
    size_t nRead = 0;
    if (!m_State->reader.IsOpen())
    {
        m_State->Fail(m_State->strName, "is not open for reading");
        return nRead;
    }
    m_State->Accept(m_State->reader.Read(pDest, nBytes, nRead), m_State->strName);
    m_State->bReadPastEnd = nRead < nBytes;
    return nRead;
}

size_t file::write(const void* pSource, size_t nBytes)
{
    if (!m_State->writer.IsOpen())
    {
        m_State->Fail(m_State->strName, "is not open for writing");
        return 0;
    }
    const int iFault = m_State->writer.Write(pSource, nBytes);
    return m_State->Accept(iFault, m_State->strName) ? nBytes : 0;
}

bool file::seek(uint64_t nPosition)
{
    // The system's positions have a sign.
    constexpr uint64_t MAX_POSITION = std::numeric_limits<int64_t>::max();
    if (nPosition > MAX_POSITION || (!m_State->reader.IsOpen() && !m_State->writer.IsOpen()))
    {
        return m_State->Fail(m_State->strName, "has no such position");
    }
    m_State->bReadPastEnd = false;
    if (m_State->reader.IsOpen())
    {
        m_State->reader.Seek(nPosition);
        return true;
    }
    return m_State->Accept(m_State->writer.Seek(nPosition), m_State->strName);
}

uint64_t file::tell() const
{
    return m_State->reader.IsOpen() ? m_State->reader.GetPosition() : m_State->writer.GetPosition();
}

uint64_t file::length() const
{
    return m_State->reader.IsOpen() ? m_State->reader.GetLength() : m_State->writer.GetLength();
}

bool file::eof() const
{
    return m_State->bReadPastEnd || tell() >= length();
}

bool file::set_eof()
{
    if (!m_State->writer.IsOpen())
    {
        return m_State->Fail(m_State->strName, "is not open for writing");
    }
    return m_State->Accept(m_State->writer.Truncate(), m_State->strName);
}

const char* file::name() const
{
    return m_State->strName.c_str();
}

bool file::close()
{
    // The file counts as closed whatever follows; the name is only needed for the message.
    const std::string strName = std::move(m_State->strName);
    m_State->strName.clear();
    m_State->bReadPastEnd = false;
    if (m_State->reader.IsOpen())
    {
        m_State->reader.Close();
        return true;
    }
    if (!m_State->writer.IsOpen())
    {
        return m_State->Fail(strName, "is not open");
    }
    return m_State->Accept(Commit(m_State->writer, strName), strName);
}

void file::discard()
{
    m_State->reader.Close();
    m_State->writer.Discard();
    m_State->strName.clear();
    m_State->bReadPastEnd = false;
}

const file_exception& file::last_error() const
{
    return m_State->error;
}

int ifile::printf(const char* pszFormat, ...)
{
    std::string strText;
    va_list arguments;
    va_start(arguments, pszFormat);
    const bool bFormatted = FormatText(strText, pszFormat, arguments);
    va_end(arguments);
    if (!bFormatted)
    {
        return -1;
    }
    return write(strText.data(), strText.size()) == strText.size()
               ? static_cast<int>(strText.size())
               : -1;
}

ifile& ifile::operator<<(const char* pszText)
{
    if (pszText != nullptr)
    {
        write(pszText, std::strlen(pszText));
    }
    return *this;
}

} // namespace fs
