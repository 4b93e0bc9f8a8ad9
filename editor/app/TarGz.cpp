#include "editor/app/TarGz.h"

#include "host/Log.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <numeric>

namespace
{

constexpr size_t BLOCK = 512;

// The first block of a file; numbers are octal texts, each field ends in a zero byte.
struct STarHeader
{
    std::array<char, 100> name{};
    std::array<char, 8> mode{};
    std::array<char, 8> user{};
    std::array<char, 8> group{};
    std::array<char, 12> size{};
    std::array<char, 12> time{};
    std::array<char, 8> sum{};
    char cKind = '0'; // a plain file
    std::array<char, 100> link{};
    std::array<char, 8> magic = {'u', 's', 't', 'a', 'r', '\0', '0', '0'};
    std::array<char, 247> rest{};
};

static_assert(sizeof(STarHeader) == BLOCK);

template <size_t nBytes> void SetOctal(std::array<char, nBytes>& field, uint64_t uNumber)
{
    std::snprintf(field.data(),
                  field.size(),
                  "%0*llo",
                  static_cast<int>(nBytes - 1),
                  static_cast<unsigned long long>(uNumber));
}

bool AppendFile(const SPackedFile& file, std::string& strTar)
{
    STarHeader header;
    if (file.strName.empty() || file.strName.size() >= header.name.size())
    {
        CrashLog("[MakeTarGz] %s: the name is too long\n", file.strName.c_str());
        return false;
    }
    std::copy(file.strName.begin(), file.strName.end(), header.name.begin());
    SetOctal(header.mode, 0644);
    SetOctal(header.user, 0);
    SetOctal(header.group, 0);
    SetOctal(header.size, file.strContent.size());
    SetOctal(header.time, static_cast<uint64_t>(std::time(nullptr)));
    header.sum.fill(' '); // it counts as blanks in itself
    std::array<unsigned char, BLOCK> bytes{};
    std::memcpy(bytes.data(), &header, BLOCK);
    SetOctal(header.sum, std::accumulate(bytes.begin(), bytes.end(), uint64_t{0}));
    strTar.append(reinterpret_cast<const char*>(&header), BLOCK);
    strTar += file.strContent;
    strTar.append((BLOCK - strTar.size() % BLOCK) % BLOCK, '\0');
    return true;
}

} // namespace

std::string MakeTarGz(const std::vector<SPackedFile>& files)
{
    std::string strTar;
    for (const SPackedFile& file : files)
    {
        if (!AppendFile(file, strTar))
        {
            return {};
        }
    }
    strTar.append(2 * BLOCK, '\0'); // the end
    constexpr int GZIP = 16;        // beside the largest window
    constexpr int MEMORY_LEVEL = 8;
    z_stream stream{};
    if (deflateInit2(&stream,
                     Z_DEFAULT_COMPRESSION,
                     Z_DEFLATED,
                     MAX_WBITS + GZIP,
                     MEMORY_LEVEL,
                     Z_DEFAULT_STRATEGY) != Z_OK)
    {
        CrashLog("[MakeTarGz] no memory to pack with\n");
        return {};
    }
    std::string strPacked(deflateBound(&stream, static_cast<uLong>(strTar.size())), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(strTar.data());
    stream.avail_in = static_cast<uInt>(strTar.size());
    stream.next_out = reinterpret_cast<Bytef*>(strPacked.data());
    stream.avail_out = static_cast<uInt>(strPacked.size());
    const bool bWhole = deflate(&stream, Z_FINISH) == Z_STREAM_END;
    strPacked.resize(bWhole ? stream.total_out : 0);
    deflateEnd(&stream);
    return strPacked;
}
