#include "engine/terrain/HeightFile.h"

#include "host/FileSystem.h"
#include "host/Log.h"
#include "host/Progress.h"

#include <zlib.h>

#include <algorithm>
#include <bit>
#include <cstring>

static_assert(std::endian::native == std::endian::little, "records are written as they lie");

namespace
{

constexpr char MAGIC[8] = {'H', 'E', 'I', 'G', 'H', 'T', 'F', '1'};

struct SHeader
{
    char aMagic[8] = {};
    uint32_t uSizeX = 0;
    uint32_t uSizeZ = 0;
    SVec3 size;
    uint32_t uReserved = 0;
};

static_assert(sizeof(SHeader) == 32);

// Heights checked and written at a time: the bytes are still in the cache for the second look.
constexpr size_t BLOCK_HEIGHTS = size_t{1} << 18;

constexpr char CANCELLED[] = "cancelled";
constexpr char BACKUP_SUFFIX[] = ".bak";

uint32_t AddToChecksum(uint32_t uChecksum, const void* pBytes, size_t nBytes)
{
    return static_cast<uint32_t>(
        crc32_z(uChecksum, static_cast<const unsigned char*>(pBytes), nBytes));
}

bool IsNotFinite(float fHeight)
{
    // On bits, so that the loops below stay free of branches and of floating-point modes.
    return (std::bit_cast<uint32_t>(fHeight) & 0x7F800000U) == 0x7F800000U;
}

bool AreAllFinite(const float* pHeights, size_t nCount)
{
    uint32_t uBad = 0;
    for (size_t i = 0; i < nCount; ++i)
    {
        uBad |= static_cast<uint32_t>(IsNotFinite(pHeights[i]));
    }
    return uBad == 0;
}

bool Refuse(const char* pszOperation, const char* pszPath, const char* pszFault)
{
    CrashLog("[%s] %s: %s\n", pszOperation, pszPath, pszFault);
    return false;
}

bool RefuseFile(const char* pszOperation, const fs::file& file)
{
    CrashLog("[%s] %s\n", pszOperation, file.last_error().get_error_text());
    return false;
}

// A file that cannot be opened, with its backup where it has one.
bool RefuseMissing(const char* pszOperation, const char* pszPath, const fs::file& file)
{
    const std::string strBackup = FindHeightBackup(pszPath);
    if (strBackup.empty())
    {
        return RefuseFile(pszOperation, file);
    }
    CrashLog("[%s] %s; %s holds the heights from before a change of resolution\n",
             pszOperation,
             file.last_error().get_error_text(),
             strBackup.c_str());
    return false;
}

bool RefuseHeight(const char* pszOperation,
                  const char* pszPath,
                  const float* pHeights,
                  uint32_t uSizeX,
                  size_t nFrom)
{
    // Looked for only now: the fast check of all heights does not tell which one it is.
    size_t nAt = nFrom;
    while (!IsNotFinite(pHeights[nAt]))
    {
        ++nAt;
    }
    CrashLog("[%s] %s: the height at column %zu, row %zu is not a finite number\n",
             pszOperation,
             pszPath,
             nAt % uSizeX,
             nAt / uSizeX);
    return false;
}

// What a header says that no terrain can have; null when it is fine.
const char* FindHeaderFault(const SHeader& header)
{
    if (std::memcmp(header.aMagic, MAGIC, sizeof(MAGIC)) != 0)
    {
        return "not a height file (wrong magic)";
    }
    if (!IsTerrainSizeValid(header.uSizeX, header.uSizeZ))
    {
        return "the vertices per side are not from 2 to 16385";
    }
    if (!IsSizeVectorValid(header.size))
    {
        return "a component of the size is 0 or not a finite number";
    }
    return header.uReserved != 0 ? "the reserved word is not 0" : nullptr;
}

// Fills the field's array and checks it.
bool ReadHeights(fs::file& file, const char* pszPath, uint32_t uChecksum, SHeightField& field)
{
    const size_t nCount = field.GetCount();
    float* pHeights = field.pHeights.get();
    bool bFinite = true;
    CProgressSteps progress("Reading heights", nCount);
    for (size_t nDone = 0; nDone < nCount;)
    {
        if (!progress.Reach(nDone))
        {
            return Refuse("ReadHeightFile", pszPath, CANCELLED);
        }
        const size_t nBlock = std::min(nCount - nDone, BLOCK_HEIGHTS);
        const size_t nBytes = nBlock * sizeof(float);
        if (file.read(pHeights + nDone, nBytes) != nBytes)
        {
            return Refuse("ReadHeightFile", pszPath, "cannot be read to its end");
        }
        uChecksum = AddToChecksum(uChecksum, pHeights + nDone, nBytes);
        bFinite = bFinite && AreAllFinite(pHeights + nDone, nBlock);
        nDone += nBlock;
    }
    uint32_t uStored = 0;
    if (file.read(&uStored, sizeof(uStored)) != sizeof(uStored))
    {
        return Refuse("ReadHeightFile", pszPath, "cannot be read to its end");
    }
    if (uStored != uChecksum)
    {
        return Refuse(
            "ReadHeightFile", pszPath, "the checksum does not match, the file is damaged");
    }
    // Told last: in a damaged file the checksum names the real fault.
    return bFinite || RefuseHeight("ReadHeightFile", pszPath, pHeights, field.uSizeX, 0);
}

} // namespace

std::string FindHeightBackup(const std::string& strPath)
{
    const std::string strBackup = strPath + BACKUP_SUFFIX;
    const bool bOffer = !fs::exists(strPath.c_str()) && fs::exists(strBackup.c_str());
    return bOffer ? strBackup : "";
}

bool ReadHeightFile(const char* pszPath, SHeightField& field)
{
    constexpr const char* OPERATION = "ReadHeightFile";
    fs::file file;
    if (pszPath == nullptr)
    {
        return Refuse(OPERATION, "", "no path");
    }
    if (!file.open(pszPath, fs::mode_read))
    {
        return RefuseMissing(OPERATION, pszPath, file);
    }
    SHeader header;
    // A short file that begins as a height map is damaged; any other one is none.
    const bool bShort = file.read(&header, sizeof(header)) != sizeof(header);
    if (bShort && std::memcmp(header.aMagic, MAGIC, sizeof(MAGIC)) == 0)
    {
        return Refuse(OPERATION, pszPath, "shorter than a header");
    }
    if (const char* pszFault = FindHeaderFault(header))
    {
        return Refuse(OPERATION, pszPath, pszFault);
    }
    SHeightField loaded;
    const uint64_t uExpected = sizeof(SHeader) +
                               uint64_t{header.uSizeX} * header.uSizeZ * sizeof(float) +
                               sizeof(uint32_t);
    if (file.length() != uExpected)
    {
        CrashLog("[ReadHeightFile] %s: %s than its sizes say (%llu bytes for %u x %u vertices)\n",
                 pszPath,
                 file.length() < uExpected ? "shorter" : "longer",
                 static_cast<unsigned long long>(file.length()),
                 header.uSizeX,
                 header.uSizeZ);
        return false;
    }
    if (!loaded.Allocate(header.uSizeX, header.uSizeZ))
    {
        return Refuse(OPERATION, pszPath, "not enough memory");
    }
    loaded.size = header.size;
    if (!ReadHeights(file, pszPath, AddToChecksum(0, &header, sizeof(header)), loaded))
    {
        return false;
    }
    field = std::move(loaded);
    return true;
}

bool WriteHeightFile(
    const char* pszPath, const float* pHeights, uint32_t uSizeX, uint32_t uSizeZ, const SVec3& size)
{
    constexpr const char* OPERATION = "WriteHeightFile";
    SHeader header{{}, uSizeX, uSizeZ, size, 0};
    std::copy_n(MAGIC, sizeof(MAGIC), header.aMagic);
    const char* pszFault = FindHeaderFault(header);
    if (pszPath == nullptr || pHeights == nullptr || pszFault != nullptr)
    {
        return Refuse(OPERATION,
                      pszPath != nullptr ? pszPath : "",
                      pszFault != nullptr ? pszFault : "no path or no heights");
    }
    fs::file file;
    if (!file.open(pszPath, fs::mode_write))
    {
        return RefuseFile(OPERATION, file);
    }
    uint32_t uChecksum = AddToChecksum(0, &header, sizeof(header));
    // Single writes are not looked at: a fault sticks to the file, and closing it fails.
    file.write(&header, sizeof(header));
    const size_t nCount = static_cast<size_t>(uSizeX) * uSizeZ;
    CProgressSteps progress("Writing heights", nCount);
    for (size_t nDone = 0; nDone < nCount;)
    {
        const size_t nBlock = std::min(nCount - nDone, BLOCK_HEIGHTS);
        if (!progress.Reach(nDone))
        {
            // The old file was not touched yet; what was written for the new one goes.
            file.discard();
            return Refuse(OPERATION, pszPath, CANCELLED);
        }
        if (!AreAllFinite(pHeights + nDone, nBlock))
        {
            file.discard();
            return RefuseHeight(OPERATION, pszPath, pHeights, uSizeX, nDone);
        }
        uChecksum = AddToChecksum(uChecksum, pHeights + nDone, nBlock * sizeof(float));
        file.write(pHeights + nDone, nBlock * sizeof(float));
        nDone += nBlock;
    }
    file.write(&uChecksum, sizeof(uChecksum));
    return file.close() || RefuseFile(OPERATION, file);
}
