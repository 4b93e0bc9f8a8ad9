#include "editor/core/CFileStamp.h"

#include "host/FileSystem.h"

#include <sys/stat.h>

#include <bit>
#include <cstring>
#include <tuple>
#include <utility>
#include <vector>

namespace
{

constexpr uint64_t SMALL_BYTES = 1U << 20U; // reading them takes no time
constexpr size_t PIECE_BYTES = 1U << 20U;
constexpr int64_t SECOND = 1'000'000'000;   // nanoseconds
constexpr int64_t COARSE_STEP = 3 * SECOND; // file systems count in steps of up to 2 seconds
constexpr int64_t FINE_STEP = SECOND / 50;  // systems stamp with their tick, 10 ms at most

int64_t GetNanoseconds(const timespec& time)
{
    return int64_t{time.tv_sec} * SECOND + time.tv_nsec;
}

} // namespace

CFileStamp::CFileStamp(std::string strPath)
    : m_Path(std::move(strPath))
    , m_State(Look(m_Path))
{
    timespec now = {};
    ::clock_gettime(CLOCK_REALTIME, &now);
    const int64_t iStep = m_State.written.tv_nsec == 0 ? COARSE_STEP : FINE_STEP;
    m_bYoung = GetNanoseconds(now) - GetNanoseconds(m_State.written) < iStep;
    m_bChecksum = m_State.bThere && (m_bYoung || m_State.uBytes <= SMALL_BYTES);
    m_Checksum = m_bChecksum ? ReadChecksum(m_Path) : 0;
}

CFileStamp::SState CFileStamp::Look(const std::string& strPath)
{
    struct stat info = {};
    if (strPath.empty() || ::stat(strPath.c_str(), &info) != 0)
    {
        return {};
    }
    return {info.st_dev, info.st_ino, static_cast<uint64_t>(info.st_size), info.st_mtim, true};
}

// No CRC: of a height map, which ends in the CRC of what stands before, it would always be the
// same. What cannot be read counts as empty: writing will say what is wrong with it.
uint64_t CFileStamp::ReadChecksum(const std::string& strPath)
{
    constexpr uint64_t FACTOR = 0x9E3779B97F4A7C15U;
    uint64_t uSum = 0;
    fs::file file;
    if (file.open(strPath.c_str(), fs::mode_read))
    {
        std::vector<uint64_t> piece(PIECE_BYTES / sizeof(uint64_t));
        for (size_t nRead = PIECE_BYTES; nRead == PIECE_BYTES;)
        {
            std::memset(piece.data(), 0, PIECE_BYTES);
            nRead = file.read(piece.data(), PIECE_BYTES);
            for (const uint64_t uWord : piece)
            {
                uSum = std::rotl((uSum ^ uWord) * FACTOR, 29);
            }
        }
    }
    return uSum;
}

bool CFileStamp::IsChanged() const
{
    const SState now = Look(m_Path);
    if (!now.bThere || !m_State.bThere)
    {
        return now.bThere;
    }
    const auto tie = [](const SState& state)
    {
        return std::make_tuple(
            state.uDevice, state.uNode, state.uBytes, GetNanoseconds(state.written));
    };
    if (tie(now) == tie(m_State) && !m_bYoung)
    {
        return false;
    }
    // Another time or node may have come with the same content, which only the checksum tells.
    const bool bSameSize = now.uBytes == m_State.uBytes;
    return !m_bChecksum || !bSameSize || ReadChecksum(m_Path) != m_Checksum;
}
