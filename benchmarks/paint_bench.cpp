// What a stroke on a bitmap of 4096 x 4096 texels costs. Each yardstick goes over the same bytes in
// the plainest way there is: once through the texels under the brush, once through both images.
// "ratio" is tool / yardstick.

#include "benchmarks/BenchHost.h"
#include "benchmarks/Effort.h"
#include "engine/paint/CPaintLayer.h"
#include "host/Image.h"
#include "host/VectorLoop.h"
#include "tellur/painting/CTellur2DDrawUndoManager.h"
#include "tellur/painting/CTellur2DFunctionSet.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>

namespace
{

constexpr uint32_t SIDE = 4096;
constexpr uint32_t BRUSH = 256; // texels a side
constexpr float TERRAIN = 4096.0F;

class CPainting
{
public:
    CPainting()
    {
        m_World.CreateTerrain(64, 64, {TERRAIN, 100.0F, TERRAIN});
        std::vector<uint8_t> shape(64UL * 64);
        for (size_t i = 0; i < shape.size(); ++i)
        {
            shape[i] = static_cast<uint8_t>(1 + i % 255);
        }
        m_Work.reset(IL_CreateImageFromBufferFormat(SIDE, SIDE, EImageFormat::Rgba32, nullptr));
        const std::unique_ptr<IImage> pShape(
            IL_CreateImageFromBufferFormat(64, 64, EImageFormat::Indexed8, shape.data()));
        m_Layer.Begin(m_Work.get(), pShape.get(), 0x1FF);
        const float red[] = {1.0F, 0.5F, 0.25F, 1.0F};
        m_Set.SetChannelMask(0x1FF);
        m_Set.SetColor(red);
    }

    void Paint(float fX, float fZ)
    {
        constexpr float HALF = BRUSH * 0.5F;
        m_Layer.Paint(
            {{fX - HALF, 0.0F, fZ - HALF}, {fX + HALF, 0.0F, fZ + HALF}}, &m_Set, 0.5F, 0.0F);
    }

    IImage& GetWork() { return *m_Work; }

    const IImage& GetPainted() { return *m_Layer.GetImage(); }

private:
    CWorld m_World;
    CPaintLayer m_Layer{m_World};
    std::unique_ptr<IImage> m_Work;
    CTellur2DFunctionSet m_Set;
};

// Every byte moves towards a value by a share: what is left of painting where weights, channels and
// colours are given.
TELLUR_LOOP_BODY void MoveBytes(uint8_t* pBytes, size_t nCount)
{
    for (size_t i = 0; i < nCount; ++i)
    {
        const float fLeft = 200.0F - static_cast<float>(pBytes[i]);
        pBytes[i] = static_cast<uint8_t>(pBytes[i] + static_cast<int>(fLeft * 0.5F));
    }
}

// One point of a stroke. The yardstick goes over as many bytes at the same place of another image.
void PaintPoint(benchmark::State& state)
{
    CPainting painting;
    CRatio ratio;
    float fAt = 500.0F;
    for (auto _ : state)
    {
        fAt = fAt > 3000.0F ? 500.0F : fAt + 37.0F;
        const double fTool = TakeTime([&] { painting.Paint(fAt, fAt); });
        const auto nFirst = static_cast<size_t>(fAt - BRUSH * 0.5F);
        uint8_t* pRow = painting.GetWork().GetRawData() + (nFirst * SIDE + nFirst) * 4;
        const double fPlain = TakeTime(
            [&]
            {
                for (uint32_t uRow = 0; uRow < BRUSH; ++uRow, pRow += size_t{SIDE} * 4)
                {
                    CVectorLoop<MoveBytes>::Run(pRow, size_t{BRUSH} * 4);
                    benchmark::DoNotOptimize(pRow);
                }
            });
        ratio.Add(fTool, fPlain);
    }
    ratio.Report(state);
}

// The end of a stroke of so many points: which texels changed, and keeping them. The yardstick
// reads both images once.
void PaintUndoEntry(benchmark::State& state)
{
    CPainting painting;
    CRatio ratio;
    for (int i = 0; i < state.range(0); ++i)
    {
        const auto fStep = static_cast<float>(i);
        painting.Paint(500.0F + 40.0F * fStep, 900.0F + 20.0F * fStep);
    }
    const auto sum = [](const IImage& image)
    {
        uint64_t uSum = 0;
        const uint8_t* pBytes = image.GetRawData();
        for (size_t i = 0; i < size_t{SIDE} * SIDE * 4; i += sizeof(uint64_t))
        {
            uint64_t uWord = 0;
            std::memcpy(&uWord, pBytes + i, sizeof(uWord));
            uSum += uWord;
        }
        return uSum;
    };
    for (auto _ : state)
    {
        CTellur2DDrawUndoManager undo;
        const double fTool =
            TakeTime([&] { undo.AddEntry(&painting.GetWork(), &painting.GetPainted()); });
        const double fPlain = TakeTime(
            [&]
            {
                uint64_t uSum = sum(painting.GetWork());
                uSum += sum(painting.GetPainted());
                benchmark::DoNotOptimize(uSum);
            });
        ratio.Add(fTool, fPlain);
    }
    ratio.Report(state);
}

BENCHMARK(PaintPoint)->Iterations(GetRounds(200))->Unit(benchmark::kMillisecond);
BENCHMARK(PaintUndoEntry)
    ->ArgName("points")
    ->ArgsProduct({GetSizes({0, 5, 60})})
    ->Iterations(GetRounds(30))
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
