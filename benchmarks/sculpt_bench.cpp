// What a designer waits for while sculpting: press, points, release, undo. Each figure stands
// beside a yardstick taken in the same run; "ratio" is tool / yardstick.

#include "benchmarks/BenchHost.h"
#include "benchmarks/Effort.h"
#include "benchmarks/PointYardstick.h"
#include "host/Image.h"

#include <malloc.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

namespace
{

constexpr float SPACING = 0.1F; // of the brush, from point to point

// Points of a stroke along a line at a tenth of the brush, each next to the yardstick's over the
// same number of vertices. bFirst: only the first point of each stroke counts, which takes all
// heights under the brush; otherwise only those that follow, which take what is new to them.
void OperationPoint(benchmark::State& state, const char* pszFunction, bool bFirst)
{
    const auto uVertices = static_cast<uint32_t>(state.range(1));
    const auto iFootprint = static_cast<int>(state.range(0));
    CBenchHost& bench = CBenchHost::GetShared(uVertices);
    bench.SetBrush(pszFunction, static_cast<float>(iFootprint - 1));
    const std::unique_ptr<IImage> pImage(IL_LoadImage("data/brushes/round.png"));
    CPointYardstick yardstick(uVertices, bench.GetTerrain().GetHeightData());
    const auto fExtent = static_cast<float>(iFootprint);
    const float fStart = fExtent * 0.5F + 8.25F;
    const float fZ = static_cast<float>(uVertices / 2) + 0.25F;
    const int iFirstZ = static_cast<int>(uVertices / 2) - iFootprint / 2;
    const int iMost = std::clamp(
        static_cast<int>((static_cast<float>(uVertices) - fExtent - 16.0F) / (fExtent * SPACING)),
        1,
        20);
    CRatio ratio;
    int iPoint = 0;
    for (auto _ : state)
    {
        if (iPoint == 0)
        {
            bench.Press(fStart, fZ);
            if (!bFirst)
            {
                bench.Move(fStart, fZ);
            }
        }
        ++iPoint;
        const float fX =
            fStart + (bFirst ? 0.0F : std::floor(fExtent * SPACING)) * static_cast<float>(iPoint);
        const double fTool = TakeTime([&] { bench.Move(fX, fZ); });
        const int iFirstX = static_cast<int>(fX) - iFootprint / 2;
        const double fPlain =
            TakeTime([&] { yardstick.Run(std::max(iFirstX, 0), iFirstZ, iFootprint, *pImage); });
        ratio.Add(fTool, fPlain);
        state.SetIterationTime(fTool);
        if (bFirst || iPoint >= iMost)
        {
            bench.Release(fX, fZ);
            bench.GetHost().Undo();
            iPoint = 0;
        }
    }
    if (iPoint > 0)
    {
        bench.Release(fStart, fZ);
        bench.GetHost().Undo();
    }
    ratio.Report(state);
}

// One point of a blur over so many steps to each side. Yardstick: one pass of running column sums
// in double precision over the same footprint and its neighbourhood, with a running sum along each
// row.
void BlurPoint(benchmark::State& state)
{
    constexpr int SIDE = 1025;
    constexpr int COUNT = 256;
    constexpr float fCenter = 512.0F;
    const auto iSteps = static_cast<int>(state.range(0));
    CBenchHost& bench = CBenchHost::GetShared(SIDE);
    const std::string strAttribs =
        "attrib( \"m_NeighbourhoodSize\", \"" + std::to_string(iSteps) + "\" )";
    bench.SetBrush("BlurFunction", COUNT - 1.0F, strAttribs.c_str());
    const std::vector<float> from(bench.GetTerrain().GetHeightData(),
                                  bench.GetTerrain().GetHeightData() + SIDE * SIDE);
    std::vector<float> to(from);
    const int iFirst = (SIDE - COUNT) / 2;
    const int iWidth = COUNT + 2 * iSteps;
    std::vector<double> sums(static_cast<size_t>(iWidth));
    const auto runSums = [&]
    {
        std::fill(sums.begin(), sums.end(), 0.0);
        const auto add = [&](int iZ, double fSign)
        {
            const float* pRow = from.data() + iZ * SIDE + iFirst - iSteps;
            for (int i = 0; i < iWidth; ++i)
            {
                sums[static_cast<size_t>(i)] += fSign * static_cast<double>(pRow[i]);
            }
        };
        for (int z = iFirst - iSteps; z < iFirst + iSteps; ++z)
        {
            add(z, 1.0);
        }
        const double fShare = 1.0 / ((2.0 * iSteps + 1.0) * (2.0 * iSteps + 1.0));
        for (int z = iFirst; z < iFirst + COUNT; ++z)
        {
            add(z + iSteps, 1.0);
            double fSum = 0.0;
            for (int i = 0; i < 2 * iSteps; ++i)
            {
                fSum += sums[static_cast<size_t>(i)];
            }
            float* pTo = to.data() + z * SIDE + iFirst;
            for (int i = 0; i < COUNT; ++i)
            {
                fSum += sums[static_cast<size_t>(i + 2 * iSteps)];
                pTo[i] += (static_cast<float>(fSum * fShare) - pTo[i]) * 0.5F;
                fSum -= sums[static_cast<size_t>(i)];
            }
            add(z - iSteps, -1.0);
        }
    };
    CRatio ratio;
    for (auto _ : state)
    {
        bench.Press(fCenter, fCenter);
        bench.Move(fCenter, fCenter);
        const double fTool = TakeTime([&] { bench.Move(fCenter, fCenter); });
        bench.Release(fCenter, fCenter);
        bench.GetHost().Undo();
        ratio.Add(fTool, TakeTime(runSums));
        benchmark::DoNotOptimize(to.data());
        state.SetIterationTime(fTool);
    }
    ratio.Report(state);
}

// The press of a stroke. Yardstick: one copy of the heights under the brush.
void Press(benchmark::State& state)
{
    constexpr size_t EXTENT = 256;
    CBenchHost& bench = CBenchHost::GetShared(static_cast<uint32_t>(state.range(0)));
    bench.SetBrush("RelativeHeightFunction", EXTENT - 1.0F);
    const float* pHeights = bench.GetTerrain().GetHeightData();
    std::vector<float> copy(EXTENT * EXTENT);
    const float fAt = static_cast<float>(state.range(0)) * 0.5F;
    CRatio ratio;
    for (auto _ : state)
    {
        const double fPress = TakeTime([&] { bench.Press(fAt, fAt); });
        bench.Move(fAt, fAt);
        bench.Release(fAt, fAt);
        bench.GetHost().Undo();
        const double fCopy = TakeTime(
            [&]
            {
                for (size_t z = 0; z < EXTENT; ++z)
                {
                    std::memcpy(copy.data() + z * EXTENT,
                                pHeights + z * static_cast<size_t>(state.range(0)),
                                EXTENT * sizeof(float));
                }
            });
        benchmark::DoNotOptimize(copy.data());
        ratio.Add(fPress, fCopy);
        state.SetIterationTime(fPress);
    }
    ratio.Report(state);
}

constexpr int POINTS = 60; // of a stroke on a wide circle

// All but the release.
void RunCircle(CBenchHost& bench, float fSide, float fExtent)
{
    const float fMiddle = fSide * 0.5F;
    const float fRadius = (fSide - fExtent) * 0.45F;
    bench.SetBrush("RelativeHeightFunction", fExtent);
    for (int i = 0; i <= POINTS; ++i)
    {
        const float fAngle = static_cast<float>(i) / POINTS * 2.0F * std::numbers::pi_v<float>;
        const float fX = fMiddle + fRadius * std::cos(fAngle);
        const float fZ = fMiddle + fRadius * std::sin(fAngle);
        if (i == 0)
        {
            bench.Press(fX, fZ);
        }
        bench.Move(fX, fZ);
    }
}

size_t GetBytesInUse()
{
    return mallinfo2().uordblks + mallinfo2().hblkhd;
}

// A stroke of 60 points on a wide circle, and what follows it. Arguments: side of the brush, of the
// terrain. Yardsticks: for the release one comparison of as many heights as changed, for undo and
// redo one copy each.
void Circle(benchmark::State& state, bool bRelease)
{
    const auto uVertices = static_cast<uint32_t>(state.range(1));
    const auto fSide = static_cast<float>(uVertices - 1);
    const auto fExtent = static_cast<float>(state.range(0));
    CBenchHost& bench = CBenchHost::GetShared(uVertices);
    bench.GetHost().GetUndoStack().Clear();
    bench.GetPlugin()->ReleaseWorldResources(); // tiles that are kept, too
    const size_t nBefore = GetBytesInUse();
    size_t nChanged = 0;
    size_t nRecord = 0;
    CRatio ratio;
    std::vector<float> first;
    std::vector<float> second;
    for (auto _ : state)
    {
        RunCircle(bench, fSide, fExtent);
        const double fRelease = TakeTime([&] { bench.Release(0.0F, 0.0F); });
        if (nChanged == 0)
        {
            bench.GetPlugin()->ReleaseWorldResources();
            nRecord = GetBytesInUse() - nBefore;
            nChanged = bench.CountChanged();
            first.assign(nChanged, 1.0F);
            second.assign(nChanged, 1.0F);
        }
        const double fUndo = TakeTime([&] { bench.GetHost().Undo(); });
        size_t nDifferent = 0;
        const double fPlain = TakeTime(
            [&]
            {
                if (!bRelease)
                {
                    std::memcpy(first.data(), second.data(), nChanged * sizeof(float));
                }
                for (size_t i = 0; bRelease && i < nChanged; ++i)
                {
                    nDifferent += std::fabs(first[i] - second[i]) > 1e-6F ? 1 : 0;
                }
            });
        benchmark::DoNotOptimize(nDifferent);
        benchmark::DoNotOptimize(first.data());
        ratio.Add(bRelease ? fRelease : fUndo, fPlain);
        state.SetIterationTime(bRelease ? fRelease : fUndo);
    }
    ratio.Report(state);
    state.counters["changed"] = static_cast<double>(nChanged);
    state.counters["bytes_per_changed"] =
        static_cast<double>(nRecord) / static_cast<double>(nChanged);
}

void AddSizes(benchmark::internal::Benchmark* pBenchmark, int64_t iRounds)
{
    pBenchmark->ArgsProduct({GetSizes({32, 64, 128, 256, 512, 1024, 2048}), GetSizes({4097})})
        ->ArgNames({"footprint", "terrain"})
        ->Iterations(GetRounds(iRounds))
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

void AddTerrains(benchmark::internal::Benchmark* pBenchmark)
{
    pBenchmark->ArgsProduct({GetSizes({256}), GetSizes({513, 1025, 2049, 8193, 16385})})
        ->ArgNames({"footprint", "terrain"})
        ->Iterations(GetRounds(30))
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

void AddCircles(benchmark::internal::Benchmark* pBenchmark)
{
    pBenchmark->ArgNames({"footprint", "terrain"})
        ->Iterations(GetRounds(8))
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    if (IsQuick())
    {
        pBenchmark->Args({64, 513});
        return;
    }
    pBenchmark->ArgsProduct({{64, 256, 512, 1000, 2048}, {4097}})
        ->ArgsProduct({{256}, {1025, 16385}});
}

} // namespace

BENCHMARK_CAPTURE(OperationPoint, RelativeHeight, "RelativeHeightFunction", false)
    ->Apply([](auto* p) { AddSizes(p, 60); });
BENCHMARK_CAPTURE(OperationPoint, SetHeight, "SetHeightFunction", false)
    ->Apply([](auto* p) { AddSizes(p, 60); });
BENCHMARK_CAPTURE(OperationPoint, Posterize, "PosterizeFunction", false)
    ->Apply([](auto* p) { AddSizes(p, 60); });
BENCHMARK_CAPTURE(OperationPoint, FirstOfAStroke, "RelativeHeightFunction", true)
    ->Apply([](auto* p) { AddSizes(p, 30); });
BENCHMARK_CAPTURE(OperationPoint, RelativeHeight, "RelativeHeightFunction", false)
    ->Apply(AddTerrains);
BENCHMARK(BlurPoint)
    ->ArgsProduct({GetSizes({2, 16, 128})})
    ->ArgName("steps")
    ->Iterations(GetRounds(20))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Circle, Release, true)->Apply(AddCircles);
BENCHMARK_CAPTURE(Circle, Undo, false)->Apply(AddCircles);
BENCHMARK(Press)
    ->ArgsProduct({GetSizes({513, 1025, 4097, 16385})})
    ->ArgName("terrain")
    ->Iterations(GetRounds(20))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

int main(int nArguments, char** ppszArguments)
{
    benchmark::Initialize(&nArguments, ppszArguments);
    benchmark::RunSpecifiedBenchmarks();
    CBenchHost::DropShared();
    return 0;
}
