#include "editor/autosave/CAutosaveCopy.h"

#include "editor/autosave/AutosaveFiles.h"
#include "editor/core/FileNames.h"
#include "host/IPaintLayer.h"
#include "host/Image.h"
#include "host/Log.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>

namespace
{

constexpr size_t PIECE = size_t{1} << 22U; // bytes

// In the child: no allocation, no log, only calls that are safe there.
class CRawFile
{
public:
    explicit CRawFile(const char* pszFile)
        : m_File(MakeNewFile(pszFile))
    {
    }

    bool Write(const void* pData, size_t nBytes) { return WriteAll(m_File, pData, nBytes); }

    // The parent gives the text its place when this process ends: all bytes are on the disk by
    // then.
    bool Finish() { return ::fsync(m_File) == 0 && ::close(m_File) == 0; }

private:
    int m_File;
};

// A ".height" file: the header, the heights, and the checksum of both.
bool WriteHeights(const SAutosaveJob& job, const char* pszFile)
{
    constexpr size_t HEADER_WORDS = 8;
    uint32_t header[HEADER_WORDS] = {};
    std::memcpy(header, "HEIGHTF1", 8);
    header[2] = job.uVerticesX;
    header[3] = job.uVerticesZ;
    std::memcpy(header + 4, &job.size, sizeof(job.size));
    const auto* pBytes = reinterpret_cast<const unsigned char*>(job.pHeights);
    size_t nLeft = size_t{job.uVerticesX} * job.uVerticesZ * sizeof(float);
    CRawFile file(pszFile);
    uLong uSum = ::crc32(0, reinterpret_cast<const unsigned char*>(header), sizeof(header));
    bool bDone = file.Write(header, sizeof(header));
    while (bDone && nLeft > 0)
    {
        const size_t nPiece = std::min(nLeft, PIECE);
        uSum = ::crc32(uSum, pBytes, static_cast<uInt>(nPiece));
        bDone = file.Write(pBytes, nPiece);
        pBytes += nPiece;
        nLeft -= nPiece;
    }
    const auto uWritten = static_cast<uint32_t>(uSum);
    return bDone && file.Write(&uWritten, sizeof(uWritten)) && file.Finish();
}

// A TGA of 32 bits a texel, top row first: every bit of the bitmap, alpha too, without packing.
bool WriteTexels(const IImage& image, const char* pszFile)
{
    constexpr size_t TEXELS_AT_ONCE = 4096;
    constexpr unsigned BYTE_BITS = 8;
    const uint32_t uWidth = image.GetWidth();
    const uint32_t uHeight = image.GetHeight();
    unsigned char header[18] = {};
    header[2] = 2; // colours, not packed
    header[12] = static_cast<unsigned char>(uWidth);
    header[13] = static_cast<unsigned char>(uWidth >> BYTE_BITS);
    header[14] = static_cast<unsigned char>(uHeight);
    header[15] = static_cast<unsigned char>(uHeight >> BYTE_BITS);
    header[16] = 32;
    header[17] = 0x28; // from the top, 8 bits of alpha
    CRawFile file(pszFile);
    bool bDone = file.Write(header, sizeof(header));
    unsigned char texels[TEXELS_AT_ONCE * PAINT_TEXEL_BYTES];
    const uint8_t* pNext = image.GetRawData();
    size_t nLeft = size_t{uWidth} * uHeight;
    while (bDone && nLeft > 0)
    {
        const size_t nNow = std::min(nLeft, TEXELS_AT_ONCE);
        // The file has blue first, the bitmap has red first.
        for (size_t i = 0; i < nNow * PAINT_TEXEL_BYTES; i += PAINT_TEXEL_BYTES)
        {
            texels[i] = pNext[i + 2];
            texels[i + 1] = pNext[i + 1];
            texels[i + 2] = pNext[i];
            texels[i + 3] = pNext[i + 3];
        }
        bDone = file.Write(texels, nNow * PAINT_TEXEL_BYTES);
        pNext += nNow * PAINT_TEXEL_BYTES;
        nLeft -= nNow;
    }
    return bDone && file.Finish();
}

struct SNames
{
    std::string strHeights;
    std::string strTexels;
    std::string strText;
};

bool WriteFiles(const SAutosaveJob& job, const SNames& names)
{
    if (!WriteHeights(job, names.strHeights.c_str()) ||
        (job.pTexels != nullptr && !WriteTexels(*job.pTexels, names.strTexels.c_str())))
    {
        return false;
    }
    CRawFile text(names.strText.c_str());
    return text.Write(job.strText.data(), job.strText.size()) && text.Finish();
}

[[noreturn]] void RunChild(const SAutosaveJob& job, const SNames& names, int iParent)
{
    // What an editor that was killed has begun helps nobody: the copy before and the steps do.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    ::signal(SIGTERM, SIG_DFL);
    ::signal(SIGHUP, SIG_DFL);
    // A parent that ended before the call above sends no signal any more.
    if (::getppid() != iParent)
    {
        ::_exit(EINTR);
    }
    errno = 0;
    if (WriteFiles(job, names))
    {
        ::_exit(0);
    }
    // The exit status is all that tells the parent why.
    const int iFault = errno != 0 ? errno : EIO;
    for (const std::string* pName : {&names.strText, &names.strTexels, &names.strHeights})
    {
        ::unlink(pName->c_str());
    }
    ::_exit(iFault);
}

} // namespace

CAutosaveCopy::~CAutosaveCopy()
{
    Abandon();
    Reap(true);
}

bool CAutosaveCopy::Start(const SAutosaveJob& job)
{
    Abandon();
    m_Stem = job.strStem;
    m_Number = job.uNumber;
    // The names are made before the fork: the child must not allocate.
    const SNames names = {GetAutosaveHeights(m_Stem, m_Number),
                          GetAutosaveTexels(m_Stem, m_Number),
                          GetAutosaveTextTemp(m_Stem, m_Number)};
    const int iParent = ::getpid();
    m_Child = ::fork();
    if (m_Child == 0)
    {
        RunChild(job, names, iParent);
    }
    if (m_Child < 0)
    {
        CrashLog("[CAutosaveCopy::Start] %s: %s\n", m_Stem.c_str(), std::strerror(errno));
    }
    return m_Child > 0;
}

ECopyState CAutosaveCopy::Poll(int& iFault)
{
    return Ask(false, iFault);
}

ECopyState CAutosaveCopy::Wait(int& iFault)
{
    return Ask(true, iFault);
}

ECopyState CAutosaveCopy::Ask(bool bWait, int& iFault)
{
    Reap(false);
    if (m_Child <= 0)
    {
        return ECopyState::None;
    }
    int iStatus = 0;
    int iEnded = 0;
    do
    {
        iEnded = ::waitpid(m_Child, &iStatus, bWait ? 0 : WNOHANG);
    } while (iEnded < 0 && errno == EINTR);
    if (iEnded == 0)
    {
        return ECopyState::Running;
    }
    m_Child = -1;
    // A child that a signal has ended tells no fault of its own.
    iFault = iEnded > 0 && WIFEXITED(iStatus) ? WEXITSTATUS(iStatus) : EINTR;
    if (iFault == 0)
    {
        return ECopyState::Done;
    }
    RemoveAutosaveCopy(m_Stem, m_Number);
    return ECopyState::Failed;
}

void CAutosaveCopy::Abandon()
{
    if (m_Child > 0)
    {
        // Nobody waits for the child here. It may make one more file before it is gone, so Reap
        // removes its files a second time.
        ::kill(m_Child, SIGKILL);
        m_Dying.push_back({std::exchange(m_Child, -1), m_Stem, m_Number});
        RemoveAutosaveCopy(m_Stem, m_Number);
    }
    Reap(false);
}

void CAutosaveCopy::Reap(bool bWait)
{
    const auto hasEnded = [bWait](const SDying& dying)
    {
        if (::waitpid(dying.iProcess, nullptr, bWait ? 0 : WNOHANG) == 0)
        {
            return false;
        }
        RemoveAutosaveCopy(dying.strStem, dying.uNumber);
        return true;
    };
    m_Dying.erase(std::remove_if(m_Dying.begin(), m_Dying.end(), hasEnded), m_Dying.end());
}
