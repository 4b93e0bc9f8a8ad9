// Reading 10 MB of brush records: the text parser beside libconfig++ with the same records, which
// is the yardstick, and beside a plain scan of the same bytes.

#include "host/BrushBlock.h"
#include "host/FileSystem.h"
#include "parser/TCParseFile.h"

#include <sys/mman.h>
#include <unistd.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <libconfig.h++>
#include <memory>
#include <string>

namespace
{

constexpr size_t TEXT_BYTES = 10'000'000;

constexpr const char* RECORD = "brush()\n{\n"
                               "  brush_name( \"Brush%03zu\")\n"
                               "  bitmap()\n  {\n"
                               "    path( \"brushes\\\\soft%zu.bmp\" )\n"
                               "  }\n"
                               "  function( \"SetHeightFunction\" )\n  {\n"
                               "    attrib( \"m_Mode\", \"mode_default\" )\n"
                               "    attrib( \"m_Height\", \"%zu.000000\" )\n"
                               "    attrib( \"m_PickHeight\", \"false\" )\n"
                               "  }\n"
                               "  power_modifier( %zu.00000 )\n"
                               "  usage_density( 1.00000 )\n"
                               "  fade_factor( 0.12500 )\n"
                               "  hardness( 0.00000 )\n"
                               "  extent( 3200.00000 )\n"
                               "  vertical_distance( 0.00000 )\n"
                               "}\n\n";

constexpr const char* CONFIG_RECORD = "{\n"
                                      "  brush_name = \"Brush%03zu\";\n"
                                      "  bitmap = {\n"
                                      "    path = \"brushes\\\\soft%zu.bmp\";\n"
                                      "  };\n"
                                      "  function = { name = \"SetHeightFunction\";\n"
                                      "    m_Mode = \"mode_default\";\n"
                                      "    m_Height = \"%zu.000000\";\n"
                                      "    m_PickHeight = \"false\";\n"
                                      "  };\n"
                                      "  power_modifier = %zu.00000;\n"
                                      "  usage_density = 1.00000;\n"
                                      "  fade_factor = 0.12500;\n"
                                      "  hardness = 0.00000;\n"
                                      "  extent = 3200.00000;\n"
                                      "  vertical_distance = 0.00000;\n"
                                      "}";

std::string FormatRecord(const char* pszFormat, size_t i)
{
    char szRecord[1024];
    snprintf(szRecord, sizeof(szRecord), pszFormat, i, i % 17, i % 5000, i % 4);
    return szRecord;
}

// The same records in both languages.
struct SRecords
{
    SRecords()
    {
        strText = "!brush()\n" + GetBrushDeclarations(EBrushBlock::Library) + "\n";
        strConfig = "brushes = (";
        for (; strText.size() < TEXT_BYTES; ++nRecords)
        {
            strText += FormatRecord(RECORD, nRecords);
            strConfig += nRecords != 0 ? ",\n" : "\n";
            strConfig += FormatRecord(CONFIG_RECORD, nRecords);
        }
        strConfig += ");\n";
    }

    std::string strText;
    std::string strConfig;
    size_t nRecords = 0;
};

const SRecords& GetRecords()
{
    static const SRecords s_Records;
    return s_Records;
}

// The text as a file in memory.
class CMemoryFile
{
public:
    explicit CMemoryFile(const std::string& strText)
        : m_Descriptor(memfd_create("parser_bench", MFD_CLOEXEC))
        , m_Path("/proc/self/fd/" + std::to_string(m_Descriptor))
    {
        size_t nWritten = 0;
        ssize_t nStep = 1;
        while (nWritten < strText.size() && nStep > 0)
        {
            nStep = write(m_Descriptor, strText.data() + nWritten, strText.size() - nWritten);
            nWritten += nStep > 0 ? static_cast<size_t>(nStep) : 0;
        }
    }

    ~CMemoryFile() { close(m_Descriptor); }

    CMemoryFile(const CMemoryFile&) = delete;
    CMemoryFile& operator=(const CMemoryFile&) = delete;

    const char* GetPath() const { return m_Path.c_str(); }

private:
    int m_Descriptor;
    std::string m_Path;
};

// Seconds a pass takes, for the ratio.
template <class TPass> double Measure(benchmark::State& state, const TPass& pass)
{
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state)
    {
        pass();
    }
    const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start;
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(GetRecords().strText.size()));
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(GetRecords().nRecords));
    return spent.count() / static_cast<double>(state.iterations());
}

double g_fScanSeconds = 0.0;
double g_fConfigSeconds = 0.0;

void PlainScan(benchmark::State& state)
{
    const std::string& strText = GetRecords().strText;
    g_fScanSeconds = Measure(
        state, [&] { benchmark::DoNotOptimize(std::count(strText.begin(), strText.end(), '\n')); });
}

// Bytes per second are those of our text, so that rates compare by the record.
void LibConfig(benchmark::State& state)
{
    const std::string& strConfig = GetRecords().strConfig;
    g_fConfigSeconds = Measure(state,
                               [&]
                               {
                                   libconfig::Config config;
                                   config.readString(strConfig.c_str());
                                   benchmark::DoNotOptimize(config.getRoot().getLength());
                               });
}

// From the file to the tree and back to nothing.
void ParseFile(benchmark::State& state)
{
    const CMemoryFile file(GetRecords().strText);
    size_t nFound = 0;
    const double fSeconds =
        Measure(state,
                [&]
                {
                    const std::unique_ptr<CTCPARSE_KEYWORD> pTree(TCParseFile(file.GetPath()));
                    nFound = 0;
                    for (const auto* p = pTree.get(); p != nullptr; p = p->next)
                    {
                        ++nFound;
                    }
                });
    if (nFound != GetRecords().nRecords)
    {
        state.SkipWithError("records are missing");
        return;
    }
    if (g_fConfigSeconds == 0.0 || g_fScanSeconds == 0.0)
    {
        return; // left out by a filter
    }
    state.counters["tool_ms"] = fSeconds * 1e3;
    state.counters["yardstick_ms"] = g_fConfigSeconds * 1e3;
    state.counters["ratio"] = fSeconds / g_fConfigSeconds;
    state.counters["of_a_plain_scan"] = fSeconds / g_fScanSeconds;
}

} // namespace

BENCHMARK(PlainScan)->Unit(benchmark::kMillisecond);
BENCHMARK(LibConfig)->Unit(benchmark::kMillisecond);
BENCHMARK(ParseFile)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
