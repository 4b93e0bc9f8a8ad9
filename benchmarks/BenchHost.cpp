#include "benchmarks/BenchHost.h"

#include "host/BrushBlock.h"
#include "host/FileSystem.h"
#include "host/IPluginScript.h"
#include "parser/TCParseFile.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>

namespace
{

[[noreturn]] void Fail(const char* pszWhy)
{
    std::fprintf(stderr, "benchmark: %s\n", pszWhy);
    std::exit(1);
}

void PlayText(IPlugin* pPlugin, const std::string& strText)
{
    const std::string strFile =
        (std::filesystem::temp_directory_path() / "tellur-bench.txt").string();
    if (FILE* pFile = std::fopen(strFile.c_str(), "w"))
    {
        const std::string strBrush = GetBrushDeclarations(EBrushBlock::Script);
        std::fputs(("!brush()\n!mode( s )\n" + strBrush + strText).c_str(), pFile);
        std::fclose(pFile);
    }
    const std::unique_ptr<CTCPARSE_KEYWORD> pTree(TCParseFile(strFile.c_str()));
    std::filesystem::remove(strFile);
    auto* pScript = dynamic_cast<IPluginScript*>(pPlugin);
    std::string strWhy = "the plug-in takes no script";
    if (pTree == nullptr)
    {
        Fail("the script cannot be read");
    }
    for (const CTCPARSE_KEYWORD* pKey = pTree.get(); pKey != nullptr; pKey = pKey->next)
    {
        if (pScript == nullptr || pScript->Play(pKey, strWhy) != EScriptResult::Done)
        {
            Fail(strWhy.c_str());
        }
    }
}

} // namespace

std::string GetProgramFolder()
{
    return std::filesystem::read_symlink("/proc/self/exe").parent_path().string();
}

CBenchHost::CBenchHost(uint32_t uVertices)
    : m_Host(m_Face)
    , m_Loader(m_Host)
{
    fs::set_data_root((GetProgramFolder() + "/../share/tellur").c_str());
    const auto fSide = static_cast<float>(uVertices - 1);
    if (!m_Loader.Load((GetProgramFolder() + "/libtellur.so").c_str()) ||
        !m_Host.NewLevel(uVertices - 1, {fSide, 2000.0F, fSide}))
    {
        Fail("no plug-in or no level");
    }
    for (uint32_t z = 0; z < uVertices; ++z)
    {
        const std::vector<float> row = GetHills(uVertices, z);
        GetTerrain().SetRowHeights(0, z, row.data(), uVertices);
    }
}

std::vector<float> CBenchHost::GetHills(uint32_t uVertices, uint32_t uRow)
{
    if (m_Waves.empty())
    {
        for (uint32_t x = 0; x < uVertices; ++x)
        {
            m_Waves.push_back(200.0F * std::sin(static_cast<float>(x) * 0.01F));
        }
    }
    const float fWave = std::cos(static_cast<float>(uRow) * 0.013F);
    std::vector<float> row(m_Waves);
    for (float& fHeight : row)
    {
        fHeight = 700.0F + fHeight * fWave;
    }
    return row;
}

size_t CBenchHost::CountChanged()
{
    const uint32_t uVertices = GetTerrain().GetVerticesX();
    size_t nChanged = 0;
    for (uint32_t z = 0; z < uVertices; ++z)
    {
        const std::vector<float> row = GetHills(uVertices, z);
        const float* pRow = GetTerrain().GetHeightData() + static_cast<size_t>(z) * uVertices;
        for (uint32_t x = 0; x < uVertices; ++x)
        {
            nChanged += pRow[x] != row[x] ? 1 : 0;
        }
    }
    return nChanged;
}

namespace
{

std::unique_ptr<CBenchHost> g_Shared;

} // namespace

CBenchHost& CBenchHost::GetShared(uint32_t uVertices)
{
    if (g_Shared == nullptr || g_Shared->GetTerrain().GetCellsPerSide() + 1 != uVertices)
    {
        g_Shared.reset();
        g_Shared = std::make_unique<CBenchHost>(uVertices);
    }
    return *g_Shared;
}

void CBenchHost::DropShared()
{
    g_Shared.reset();
}

void TakeBrush(IPlugin* pPlugin, const char* pszFunction, float fExtent, const char* pszAttribs)
{
    PlayText(pPlugin,
             "brush() { bitmap() { path( \"data/brushes/round.png\" ) } function( \"" +
                 std::string(pszFunction) + "\" ) {" + pszAttribs + "} extent( " +
                 std::to_string(fExtent) + " ) }\nmode( \"terraforming\" )\n");
}

void CBenchHost::SetBrush(const char* pszFunction, float fExtent, const char* pszAttribs)
{
    TakeBrush(m_Loader.GetPlugin(), pszFunction, fExtent, pszAttribs);
}

void CBenchHost::Point(float fX, float fZ)
{
    m_Face.m_Hit = {fX, GetTerrain().GetHeightAt(fX, fZ), fZ};
}

void CBenchHost::Press(float fX, float fZ)
{
    Point(fX, fZ);
    m_Host.GetInput().SendButtonDown(CHeadlessFace::VIEW, MOUSE_LEFT, {});
}

void CBenchHost::Move(float fX, float fZ)
{
    Point(fX, fZ);
    m_Host.GetInput().SendMouseMove(CHeadlessFace::VIEW, MOUSE_LEFT, {}, {}, {0, -3});
}

void CBenchHost::Release(float fX, float fZ)
{
    Point(fX, fZ);
    m_Host.GetInput().SendButtonUp(CHeadlessFace::VIEW, 0, {});
}

double CRatio::GetMedian(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0.0 : values[values.size() / 2];
}

double CRatio::GetWorst() const
{
    return m_Tool.empty() ? 0.0 : *std::max_element(m_Tool.begin(), m_Tool.end());
}

void CRatio::Report(benchmark::State& state) const
{
    state.counters["yardstick_ms"] = GetYardstick() * 1e3;
    state.counters["tool_ms"] = GetTool() * 1e3;
    state.counters["worst_ms"] = GetWorst() * 1e3;
    state.counters["ratio"] = GetRatio();
}
