#include "engine/elevation/ElevationFormats.h"
#include "engine/elevation/HeightExport.h"
#include "engine/elevation/HeightImport.h"
#include "host/Progress.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <vector>

namespace
{

constexpr uint32_t COLUMNS = 900;
constexpr uint32_t ROWS = 900;

// Cancels the work at its nth report.
class CCancelling final : public IProgressSink
{
public:
    CCancelling()
        : m_Before(SetProgressSink(this))
    {
    }

    ~CCancelling() override { SetProgressSink(m_Before); }

    CCancelling(const CCancelling&) = delete;
    CCancelling& operator=(const CCancelling&) = delete;

    bool OnProgress(const char* pszWhat, float fDone) override
    {
        EXPECT_FALSE(std::string(pszWhat).empty());
        done.push_back(fDone);
        const bool bMiddle = fDone > 0.1F && fDone < 0.9F;
        nReadings += bMiddle && std::string(pszWhat) == "Reading the height map" ? 1 : 0;
        return done.size() != nEnd;
    }

    std::vector<float> done;
    size_t nEnd = 0;      // 0: never
    size_t nReadings = 0; // reports in the middle of the file

private:
    IProgressSink* m_Before;
};

class HeightProgress : public testing::TestWithParam<SElevationFormat>
{
protected:
    HeightProgress()
    {
        for (uint32_t i = 0; i < COLUMNS * ROWS; ++i)
        {
            m_Heights.push_back(static_cast<float>(i % 977));
        }
    }

    bool Export()
    {
        const SSampleView view{m_Heights.data(), COLUMNS, ROWS};
        const SVec3 size = {900.0F, 1000.0F, 900.0F};
        SExportPlan plan;
        return PlanExport(m_Path.c_str(), view, size, {}, plan) &&
               ExportHeights(m_Path.c_str(), view, size, plan);
    }

    bool Import(SHeightField& field)
    {
        SImportOptions options;
        options.uSize = 129;
        options.uColumns = COLUMNS;
        options.uRows = ROWS;
        SImportReport report;
        return ImportHeights(m_Path.c_str(), options, field, report);
    }

    // One line that names the file, and says what happened.
    void ExpectCancelled()
    {
        const std::vector<std::string> lines = m_Log.TakeLines();
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_NE(lines.front().find(m_Path + ": cancelled"), std::string::npos) << lines.front();
    }

    CTempFolder m_Folder;
    CLogCatcher m_Log;
    std::string m_Path = m_Folder.Path("map.") + GetParam().extensions[0];
    std::vector<float> m_Heights;
};

TEST_P(HeightProgress, ACancelledExportKeepsTheOldFile)
{
    CCancelling sink;
    ASSERT_TRUE(Export());
    const size_t nReports = sink.done.size();
    EXPECT_EQ(sink.done.back(), 1.0F);
    EXPECT_GT(std::count_if(sink.done.begin(),
                            sink.done.end(),
                            [](float fDone) { return fDone > 0.2F && fDone < 0.8F; }),
              1);
    for (const size_t nEnd : {size_t{1}, nReports / 2})
    {
        SCOPED_TRACE(nEnd);
        WriteBytes(m_Path, "old");
        sink.done.clear();
        sink.nEnd = nEnd;
        EXPECT_FALSE(Export());
        ExpectCancelled();
        EXPECT_TRUE(ReadBytes(m_Path) == "old");
        const std::filesystem::directory_iterator entries(m_Folder.GetFolder());
        EXPECT_EQ(std::distance(begin(entries), end(entries)), 1) << "nothing beside the old file";
    }
}

TEST_P(HeightProgress, ACancelledImportGivesNothing)
{
    ASSERT_TRUE(Export());
    CCancelling sink;
    SHeightField field;
    ASSERT_TRUE(Import(field));
    EXPECT_EQ(field.uSizeX, 129U);
    EXPECT_EQ(sink.done.back(), 1.0F);
    const size_t nReports = sink.done.size();
    ASSERT_GT(nReports, 100U);
    // What is unpacked or parsed takes long.
    const std::string_view extension = GetParam().extensions[0];
    const bool bSlow = extension == "exr" || extension == "tif" || extension == "asc";
    EXPECT_TRUE(!bSlow || sink.nReadings > 1) << sink.nReadings;
    for (const size_t nEnd : {size_t{1}, nReports / 2, nReports - 20})
    {
        SCOPED_TRACE(nEnd);
        SHeightField other;
        sink.done.clear();
        sink.nEnd = nEnd;
        EXPECT_FALSE(Import(other));
        ExpectCancelled();
        EXPECT_EQ(other.pHeights, nullptr);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats,
                         HeightProgress,
                         testing::ValuesIn(GetElevationFormats().begin(),
                                           GetElevationFormats().end()),
                         [](const auto& test) { return std::string(test.param.extensions[0]); });

} // namespace
