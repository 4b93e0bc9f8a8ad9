// What a designer waits for while sculpting: press, move, release, undo, and the files.
// Each figure stands beside a yardstick taken in the same run; "ratio" is tool / yardstick.

#include "benchmarks/BenchHost.h"
#include "benchmarks/Effort.h"
#include "engine/terrain/HeightFile.h"
#include "host/Image.h"

#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>

namespace
{

// The plug-in is one object a process, so there is one host. The main function ends it: statics of
// the libraries, which are made later, would be gone before this one.
std::unique_ptr<CBenchHost> g_Host;

// Made anew for another size.
CBenchHost& GetBenchHost(uint32_t uVertices)
{
    if (g_Host == nullptr || g_Host->GetTerrain().GetCellsPerSide() + 1 != uVertices)
    {
        g_Host.reset();
        g_Host = std::make_unique<CBenchHost>(uVertices);
    }
    return *g_Host;
}

void Report(benchmark::State& state, const CRatio& ratio)
{
    state.counters["yardstick_ms"] = ratio.GetYardstick() * 1e3;
    state.counters["tool_ms"] = ratio.GetTool() * 1e3;
    state.counters["ratio"] = ratio.GetRatio();
}

// The yardstick of an operation point: one plain loop over the footprint's floats that resamples
// the brush image bilinearly and adds.
void ResampleAndAdd(float* pHeights, int iRow, int iFirst, int iCount, const IImage& image)
{
    const int iSide = static_cast<int>(image.GetWidth());
    const uint8_t* pPixels = image.GetRawData();
    const float fScale = static_cast<float>(iSide) / static_cast<float>(iCount);
    for (int z = 0; z < iCount; ++z)
    {
        float* pRow = pHeights + static_cast<ptrdiff_t>(iFirst + z) * iRow + iFirst;
        const float fZ = static_cast<float>(z) * fScale;
        const int z0 = std::min(static_cast<int>(fZ), iSide - 1);
        const int z1 = std::min(z0 + 1, iSide - 1);
        const float wz = fZ - static_cast<float>(z0);
        for (int x = 0; x < iCount; ++x)
        {
            const float fX = static_cast<float>(x) * fScale;
            const int x0 = std::min(static_cast<int>(fX), iSide - 1);
            const int x1 = std::min(x0 + 1, iSide - 1);
            const float wx = fX - static_cast<float>(x0);
            const float fTop = static_cast<float>(pPixels[z0 * iSide + x0]) * (1 - wx) +
                               static_cast<float>(pPixels[z0 * iSide + x1]) * wx;
            const float fLow = static_cast<float>(pPixels[z1 * iSide + x0]) * (1 - wx) +
                               static_cast<float>(pPixels[z1 * iSide + x1]) * wx;
            pRow[x] += (fTop * (1 - wz) + fLow * wz) * (1.0F / 255.0F) * 0.25F;
        }
    }
}

void OperationPoint(benchmark::State& state, const char* pszFunction)
{
    const auto uVertices = static_cast<uint32_t>(state.range(1));
    const auto iFootprint = static_cast<int>(state.range(0));
    CBenchHost& bench = GetBenchHost(uVertices);
    bench.SetBrush(pszFunction, static_cast<float>(iFootprint - 1));
    const std::unique_ptr<IImage> pImage(IL_LoadImage("data/brushes/round.png"));
    std::vector<float> plain(bench.GetTerrain().GetHeightData(),
                             bench.GetTerrain().GetHeightData() +
                                 static_cast<size_t>(uVertices) * uVertices);
    const float fCenter = static_cast<float>(uVertices - 1) * 0.5F;
    const int iFirst = (static_cast<int>(uVertices) - iFootprint) / 2;
    CRatio ratio;
    for (auto _ : state)
    {
        bench.Press(fCenter, fCenter);
        const double fTool = TakeTime([&] { bench.Move(fCenter, fCenter); });
        bench.Release(fCenter, fCenter);
        bench.GetHost().Undo();
        const double fPlain = TakeTime(
            [&] {
                ResampleAndAdd(
                    plain.data(), static_cast<int>(uVertices), iFirst, iFootprint, *pImage);
            });
        benchmark::DoNotOptimize(plain.data());
        ratio.Add(fTool, fPlain);
        state.SetIterationTime(fTool);
    }
    Report(state, ratio);
}

// One point of a blur over so many steps to each side, beside one over a single step: the cost must
// not grow with the neighbourhood.
void BlurPoint(benchmark::State& state)
{
    constexpr uint32_t uVertices = 1025;
    constexpr float fCenter = 512.0F;
    CBenchHost& bench = GetBenchHost(uVertices);
    const auto time = [&bench](int64_t iSteps)
    {
        const std::string strAttribs =
            "attrib( \"m_NeighbourhoodSize\", \"" + std::to_string(iSteps) + "\" )";
        bench.SetBrush("BlurFunction", 255.0F, strAttribs.c_str());
        bench.Press(fCenter, fCenter);
        const double fTime = TakeTime([&] { bench.Move(fCenter, fCenter); });
        bench.Release(fCenter, fCenter);
        bench.GetHost().Undo();
        return fTime;
    };
    CRatio ratio;
    for (auto _ : state)
    {
        const double fTime = time(state.range(0));
        ratio.Add(fTime, time(1));
        state.SetIterationTime(fTime);
    }
    Report(state, ratio);
}

void PressAndRelease(benchmark::State& state, bool bPress)
{
    constexpr uint32_t uVertices = 4097;
    CBenchHost& bench = GetBenchHost(uVertices);
    bench.SetBrush("RelativeHeightFunction", 255.0F);
    const size_t nCount = static_cast<size_t>(uVertices) * uVertices;
    std::vector<float> first(nCount);
    std::vector<float> second(nCount);
    const float* pHeights = bench.GetTerrain().GetHeightData();
    CRatio ratio;
    for (auto _ : state)
    {
        const double fPress = TakeTime([&] { bench.Press(2000.0F, 2000.0F); });
        bench.Move(2050.0F, 2020.0F);
        const double fRelease = TakeTime([&] { bench.Release(2050.0F, 2020.0F); });
        bench.GetHost().Undo();
        const double fCopies = TakeTime(
            [&]
            {
                std::memcpy(first.data(), pHeights, nCount * sizeof(float));
                std::memcpy(second.data(), first.data(), nCount * sizeof(float));
            });
        size_t nDifferent = 0;
        const double fCompare = TakeTime(
            [&]
            {
                for (size_t i = 0; i < nCount; ++i)
                {
                    nDifferent += std::fabs(first[i] - second[i]) > 1e-6F ? 1 : 0;
                }
            });
        benchmark::DoNotOptimize(nDifferent);
        ratio.Add(bPress ? fPress : fRelease, bPress ? fCopies : fCompare);
        state.SetIterationTime(bPress ? fPress : fRelease);
    }
    Report(state, ratio);
}

// A stroke of 33 points; the yardstick copies as many floats as vertices changed.
void UndoRedo(benchmark::State& state)
{
    CBenchHost& bench = GetBenchHost(4097);
    bench.SetBrush("RelativeHeightFunction", 255.0F);
    bench.Press(500.0F, 500.0F); // a stroke that drops what earlier figures left to redo
    bench.Move(500.0F, 500.0F);
    bench.Release(500.0F, 500.0F);
    const float* pHeights = bench.GetTerrain().GetHeightData();
    const size_t nCount = size_t{4097} * 4097;
    const std::vector<float> before(pHeights, pHeights + nCount);
    bench.Press(1000.0F, 1500.0F);
    for (int i = 1; i <= 33; ++i)
    {
        bench.Move(1000.0F + 40.0F * static_cast<float>(i), 1500.0F);
    }
    const size_t nBefore = mallinfo2().uordblks;
    bench.Release(2320.0F, 1500.0F);
    const size_t nRecord = mallinfo2().uordblks - nBefore;
    size_t nChanged = 0;
    for (size_t i = 0; i < nCount; ++i)
    {
        nChanged += before[i] != pHeights[i] ? 1 : 0;
    }
    std::vector<float> copy(nChanged);
    CRatio ratio;
    for (auto _ : state)
    {
        const double fTool = TakeTime(
            [&]
            {
                bench.GetHost().Undo();
                bench.GetHost().Redo();
            });
        const double fCopy = TakeTime(
            [&]
            {
                std::memcpy(copy.data(), before.data(), nChanged * sizeof(float));
                std::memcpy(copy.data(), pHeights, nChanged * sizeof(float));
            });
        benchmark::DoNotOptimize(copy.data());
        ratio.Add(fTool, fCopy);
        state.SetIterationTime(fTool);
    }
    Report(state, ratio);
    state.counters["changed"] = static_cast<double>(nChanged);
    state.counters["bytes_per_changed"] =
        static_cast<double>(nRecord) / static_cast<double>(nChanged);
    bench.GetHost().Undo();
}

// The height-map file of 4097 x 4097 vertices, beside the same bytes through plain write with fsync
// and plain read.
void HeightFile(benchmark::State& state, bool bWrite)
{
    constexpr uint32_t uVertices = 4097;
    CBenchHost& bench = GetBenchHost(uVertices);
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
    Report(state, ratio);
    std::filesystem::remove(strTool);
    std::filesystem::remove(strPlain);
}

// The whole terrain as STL, beside the same bytes through plain write with fsync.
void ExportStl(benchmark::State& state)
{
    constexpr uint32_t uVertices = 2049;
    CTerrain& terrain = GetBenchHost(uVertices).GetTerrain();
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
    Report(state, ratio);
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
    const CTerrain& terrain = GetBenchHost(uVertices).GetTerrain();
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
    Report(state, ratio);
}

} // namespace

BENCHMARK_CAPTURE(OperationPoint, RelativeHeight, "RelativeHeightFunction")
    ->ArgsProduct({GetSizes({64, 128, 256, 512, 1024}), GetSizes({1025, 4097})})
    ->ArgNames({"footprint", "terrain"})
    ->Iterations(GetRounds(40))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OperationPoint, SetHeight, "SetHeightFunction")
    ->ArgsProduct({GetSizes({64, 128, 256, 512, 1024}), GetSizes({1025, 4097})})
    ->ArgNames({"footprint", "terrain"})
    ->Iterations(GetRounds(40))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BlurPoint)
    ->ArgsProduct({GetSizes({2, 16, 128})})
    ->ArgName("steps")
    ->Iterations(GetRounds(20))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(PressAndRelease, Press4097, true)
    ->Iterations(GetRounds(20))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(PressAndRelease, Release4097, false)
    ->Iterations(GetRounds(20))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(UndoRedo)->Iterations(GetRounds(20))->UseManualTime()->Unit(benchmark::kMillisecond);
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
    g_Host.reset();
    return 0;
}
