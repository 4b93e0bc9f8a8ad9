// What a designer waits for beside the strokes: the files, and the ground under the cursor.
// Each figure stands beside a yardstick taken in the same run; "ratio" is tool / yardstick.

#include "benchmarks/BenchHost.h"
#include "benchmarks/Effort.h"
#include "engine/terrain/HeightFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <string>

namespace
{

// The height-map file of 4097 x 4097 vertices, beside the same bytes through plain write with fsync
// and plain read.
void HeightFile(benchmark::State& state, bool bWrite)
{
    constexpr uint32_t uVertices = 4097;
    CBenchHost& bench = CBenchHost::GetShared(uVertices);
    const size_t nBytes = size_t{uVertices} * uVertices * sizeof(float);
    const auto folder = std::filesystem::temp_directory_path();
    const std::string strTool = (folder / "tellur-bench.height").string();
    const std::string strPlain = (folder / "tellur-bench.raw").string();
    std::vector<char> buffer(nBytes);
    const SVec3 size = bench.GetTerrain().GetSizeVector();
    CRatio ratio;
    const auto writeTool = [&]
    {
        WriteHeightFile(
            strTool.c_str(), bench.GetTerrain().GetHeightData(), uVertices, uVertices, size);
    };
    const auto writePlain = [&]
    {
        const int iFile = open(strPlain.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0644);
        benchmark::DoNotOptimize(write(iFile, bench.GetTerrain().GetHeightData(), nBytes));
        fsync(iFile);
        close(iFile);
    };
    const auto readTool = [&]
    {
        SHeightField field;
        benchmark::DoNotOptimize(ReadHeightFile(strTool.c_str(), field));
    };
    const auto readPlain = [&]
    {
        const int iFile = open(strPlain.c_str(), O_RDONLY);
        const std::unique_ptr<char[]> pFresh(new char[nBytes]); // the reader makes its array too
        benchmark::DoNotOptimize(read(iFile, pFresh.get(), nBytes));
        close(iFile);
    };
    writeTool();
    writePlain();
    for (auto _ : state)
    {
        const double fTool = bWrite ? TakeTime(writeTool) : TakeTime(readTool);
        ratio.Add(fTool, bWrite ? TakeTime(writePlain) : TakeTime(readPlain));
        state.SetIterationTime(fTool);
    }
    ratio.Report(state);
    std::filesystem::remove(strTool);
    std::filesystem::remove(strPlain);
}

// The whole terrain as STL, beside the same bytes through plain write with fsync.
void ExportStl(benchmark::State& state)
{
    constexpr uint32_t uVertices = 2049;
    CTerrain& terrain = CBenchHost::GetShared(uVertices).GetTerrain();
    const auto folder = std::filesystem::temp_directory_path();
    const std::string strTool = (folder / "tellur-bench.stl").string();
    const std::string strPlain = (folder / "tellur-bench.raw").string();
    terrain.ExportToSTL(strTool.c_str(), nullptr);
    std::vector<char> bytes(std::filesystem::file_size(strTool));
    const int iStl = open(strTool.c_str(), O_RDONLY);
    benchmark::DoNotOptimize(read(iStl, bytes.data(), bytes.size()));
    close(iStl);
    const auto writePlain = [&]
    {
        const std::string strPart = strPlain + ".part"; // safe, as the tool writes
        const int iFile = open(strPart.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0644);
        benchmark::DoNotOptimize(write(iFile, bytes.data(), bytes.size()));
        fsync(iFile);
        close(iFile);
        std::filesystem::rename(strPart, strPlain);
    };
    writePlain();
    CRatio ratio;
    for (auto _ : state)
    {
        const double fTool = TakeTime([&] { terrain.ExportToSTL(strTool.c_str(), nullptr); });
        ratio.Add(fTool, TakeTime(writePlain));
        state.SetIterationTime(fTool);
    }
    ratio.Report(state);
    state.counters["MB"] = static_cast<double>(bytes.size()) * 1e-6;
    std::filesystem::remove(strTool);
    std::filesystem::remove(strPlain);
}

// The ground under the cursor, seen from just above the hills: a thousand lines between places all
// over the terrain. The yardstick for one line looks at the heights of one row.
void PickGround(benchmark::State& state)
{
    constexpr uint32_t LINES = 1000;
    const auto uVertices = static_cast<uint32_t>(state.range(0));
    const CTerrain& terrain = CBenchHost::GetShared(uVertices).GetTerrain();
    const auto fSide = static_cast<float>(uVertices - 1);
    const auto spread = [&](uint32_t i, double fBy) // evenly, over one side
    {
        return fSide * static_cast<float>(std::fmod(i * fBy, 1.0));
    };
    CRatio ratio;
    SVec3 hit;
    for (auto _ : state)
    {
        const double fTool = TakeTime(
            [&]
            {
                for (uint32_t i = 1; i <= LINES; ++i)
                {
                    const SVec3 from = {spread(i, 0.618), 950.0F, spread(i, 0.414)};
                    const SVec3 to = {spread(i, 0.732), 600.0F, spread(i, 0.236)};
                    const SVec3 by = {to.x - from.x, to.y - from.y, to.z - from.z};
                    benchmark::DoNotOptimize(terrain.PickRay(from, by, hit));
                }
            });
        const double fPlain = TakeTime(
            [&]
            {
                for (size_t i = 0; i < LINES; ++i)
                {
                    const float* pRow = terrain.GetHeightData() + i * uVertices;
                    benchmark::DoNotOptimize(*std::max_element(pRow, pRow + uVertices));
                }
            });
        ratio.Add(fTool / LINES, fPlain / LINES);
        state.SetIterationTime(fTool / LINES);
    }
    ratio.Report(state);
}

} // namespace

BENCHMARK_CAPTURE(HeightFile, Write4097, true)
    ->Iterations(GetRounds(8))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(HeightFile, Read4097, false)
    ->Iterations(GetRounds(8))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(ExportStl)->Iterations(GetRounds(8))->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(PickGround)
    ->ArgsProduct({GetSizes({1025, 4097})})
    ->ArgName("terrain")
    ->Iterations(GetRounds(20))
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

int main(int nArguments, char** ppszArguments)
{
    benchmark::Initialize(&nArguments, ppszArguments);
    benchmark::RunSpecifiedBenchmarks();
    CBenchHost::DropShared();
    return 0;
}
