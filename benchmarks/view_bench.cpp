// What a designer sees while sculpting: the first frame of a terrain, and the frames of a stroke.
// Each figure stands beside a yardstick taken in the same run; "ratio" is tool / yardstick. Needs
// a display for its OpenGL context.

#include "benchmarks/BenchHost.h"
#include "benchmarks/Effort.h"
#include "editor/view/CTerrainCopies.h"
#include "editor/view/CTerrainRenderer.h"
#include "editor/view/SViewProjection.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "engine/world/CTexture.h"
#include "host/Image.h"

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace
{

constexpr int WIDTH = 1280;
constexpr int HEIGHT = 800;
constexpr double SLOW_SECONDS = 0.016;               // of a frame that is missed on a screen
constexpr uint64_t FRAME_BYTES = uint64_t{16} << 20; // that a view sends of a terrain that comes in

const char* GetRendererName()
{
    const auto* pszName = reinterpret_cast<const char*>(
        QOpenGLContext::currentContext()->functions()->glGetString(GL_RENDERER));
    return pszName != nullptr ? pszName : "unknown";
}

bool HasCard()
{
    return std::strstr(GetRendererName(), "llvmpipe") == nullptr &&
           std::strcmp(GetRendererName(), "NOOP") != 0; // the name of a driver that draws nothing
}

// A terrain, its stroke and its picture; one at a time, as the plug-in is one object a process.
class CScene
{
public:
    explicit CScene(uint32_t uVertices)
        : m_Bench(uVertices)
        , m_Buffer(WIDTH, HEIGHT, QOpenGLFramebufferObject::Depth)
        , m_Middle(static_cast<float>(uVertices) * 0.5F)
    {
        const auto fSide = static_cast<float>(uVertices - 1);
        m_View.position = {fSide * 0.5F, 700.0F + fSide * 0.45F, fSide * 1.1F};
        m_View.forward = {0.0F, -0.6F, -0.8F};
        m_View.up = {0.0F, 0.8F, -0.6F};
        m_View.iWidth = WIDTH;
        m_View.iHeight = HEIGHT;
        m_View.fFar = fSide * 4.0F;
    }

    // Until the card has drawn it.
    void Draw(CTerrainRenderer& renderer)
    {
        m_Bench.GetHost().RenderFrame();
        m_Buffer.bind();
        renderer.Render(m_View, m_Bench.GetHost().GetEngine(), m_Settings);
        QOpenGLContext::currentContext()->functions()->glFinish();
    }

    CBenchHost& GetBench() { return m_Bench; }

    void Press() { m_Bench.Press(m_Middle, m_Middle); }

    void Release() { m_Bench.Release(m_Middle, m_Middle); }

    // A point of the stroke, so many units further on a circle of half the terrain.
    void Move(float fBy)
    {
        m_Angle += fBy / (m_Middle * 0.5F);
        m_Bench.Move(m_Middle + m_Middle * 0.5F * std::sin(m_Angle),
                     m_Middle + m_Middle * 0.5F * std::cos(m_Angle));
    }

    float GetCircle() const { return m_Middle * 3.14159F; }

    SRenderSettings m_Settings;

private:
    CBenchHost m_Bench;
    QOpenGLFramebufferObject m_Buffer;
    SViewProjection m_View;
    float m_Middle;
    float m_Angle = 0.0F;
};

std::unique_ptr<CTerrainRenderer> MakeRenderer()
{
    auto pRenderer = std::make_unique<CTerrainRenderer>(std::make_shared<CTerrainCopies>());
    std::string strFault;
    if (!pRenderer->Initialize(strFault))
    {
        std::fprintf(stderr, "view_bench: %s\n", strFault.c_str());
        std::exit(1);
    }
    return pRenderer;
}

void Report(benchmark::State& state, const CRatio& ratio)
{
    state.SetLabel(GetRendererName());
    state.counters["yardstick_ms"] = ratio.GetYardstick() * 1e3;
    state.counters["tool_ms"] = ratio.GetTool() * 1e3;
    state.counters["ratio"] = ratio.GetRatio();
}

double GetMedian(std::vector<double> seconds)
{
    std::sort(seconds.begin(), seconds.end());
    return seconds[seconds.size() / 2];
}

// How evenly frames came.
void ReportFrames(benchmark::State& state, std::vector<double> seconds)
{
    std::sort(seconds.begin(), seconds.end());
    const auto slow = std::upper_bound(seconds.begin(), seconds.end(), SLOW_SECONDS);
    state.counters["p95_ms"] = seconds[(seconds.size() * 95 - 1) / 100] * 1e3;
    state.counters["worst_ms"] = seconds.back() * 1e3;
    state.counters["over_16ms_%"] =
        100.0 * static_cast<double>(seconds.end() - slow) / static_cast<double>(seconds.size());
}

// The first frame, and all frames until the terrain is there in full. Yardstick: one copy of what
// went to the card.
void FirstFrame(benchmark::State& state)
{
    CScene scene(static_cast<uint32_t>(state.range(0)));
    scene.m_Settings.uMostNewBytes = FRAME_BYTES;
    CRatio ratio;
    std::vector<double> frames;
    double fComplete = 0.0;
    for (auto _ : state)
    {
        const auto pRenderer = MakeRenderer();
        uint64_t uSent = 0;
        double fAll = 0.0;
        double fFirst = 0.0;
        do
        {
            const double fFrame = TakeTime([&] { scene.Draw(*pRenderer); });
            fFirst = fFirst > 0.0 ? fFirst : fFrame;
            fAll += fFrame;
            frames.push_back(fFrame);
            uSent += pRenderer->GetStatistics().uUploadedBytes;
        } while (!pRenderer->GetStatistics().bComplete);
        fComplete += fAll * 1e3;
        const std::vector<char> from(uSent, 1);
        std::vector<char> to(from.size());
        ratio.Add(fFirst, TakeTime([&] { std::memcpy(to.data(), from.data(), to.size()); }));
        benchmark::DoNotOptimize(to.data());
    }
    Report(state, ratio);
    ReportFrames(state, frames);
    state.counters["complete_ms"] = fComplete / static_cast<double>(state.iterations());
}

// A move of a stroke and the frame that shows it, a quarter of the brush on. Yardstick: a frame in
// which nothing changed.
void BrushStep(benchmark::State& state, bool bNeedsCard)
{
    if (bNeedsCard && !HasCard())
    {
        state.SkipWithError("needs a graphics card");
        return;
    }
    const auto fExtent = static_cast<float>(state.range(1)); // in cells
    CScene scene(static_cast<uint32_t>(state.range(0)));
    const auto pRenderer = MakeRenderer();
    scene.Draw(*pRenderer);
    scene.GetBench().SetBrush("RelativeHeightFunction", fExtent);
    scene.Press();
    scene.Draw(*pRenderer);
    CRatio ratio;
    std::vector<double> frames;
    double fUploaded = 0.0;
    std::vector<double> draws;
    for (auto _ : state)
    {
        const double fStill = TakeTime([&] { scene.Draw(*pRenderer); });
        const double fPoint = TakeTime([&] { scene.Move(fExtent * 0.25F); });
        const double fFrame = TakeTime([&] { scene.Draw(*pRenderer); });
        ratio.Add(fPoint + fFrame, fStill);
        frames.push_back(fPoint + fFrame);
        draws.push_back(fFrame);
        fUploaded += static_cast<double>(pRenderer->GetStatistics().uUploadedBytes);
    }
    scene.Release();
    const auto fRounds = static_cast<double>(state.iterations());
    Report(state, ratio);
    ReportFrames(state, frames);
    state.counters["draw_ms"] = GetMedian(draws) * 1e3;
    state.counters["triangles"] = pRenderer->GetStatistics().uTriangles;
    state.counters["upload_kb"] = fUploaded / 1024.0 / fRounds;
}

// A soft round shape.
std::unique_ptr<CTexture> MakeShape()
{
    constexpr int SIDE = 128;
    std::vector<uint8_t> pixels(size_t{SIDE} * SIDE);
    for (int i = 0; i < SIDE * SIDE; ++i)
    {
        const double fAway = std::hypot(i % SIDE - SIDE / 2, i / SIDE - SIDE / 2) / (SIDE / 2);
        pixels[static_cast<size_t>(i)] =
            static_cast<uint8_t>(255.0 * std::clamp(1.0 - fAway, 0.0, 1.0));
    }
    std::unique_ptr<IImage> pImage(IL_CreateImageFromBufferBPP(SIDE, SIDE, 8, pixels.data()));
    return std::make_unique<CTexture>("bench_shape", std::move(pImage), nullptr);
}

// A frame with the mark of a brush in it, and with so many images of it around the middle of the
// terrain. Yardstick: a frame without a mark.
void MarkFrame(benchmark::State& state)
{
    CScene scene(static_cast<uint32_t>(state.range(0)));
    const auto pRenderer = MakeRenderer();
    const std::unique_ptr<CTexture> pShape = MakeShape();
    const auto fMiddle = static_cast<float>(state.range(0)) * 0.5F;
    SGroundMark mark;
    mark.ePlace = EMarkPlace::Cursor;
    mark.at = {fMiddle * 1.25F, 0.0F, fMiddle};
    mark.bTool = true;
    mark.tool.eKind = EToolKind::Add;
    mark.tool.eSign = EToolSign::Raise;
    mark.tool.fExtent = static_cast<float>(state.range(1)); // in cells
    mark.pShape = pShape.get();
    mark.nImages = static_cast<size_t>(state.range(2));
    for (size_t i = 0; i < mark.nImages; ++i)
    {
        const float fTurn =
            6.2831853F * static_cast<float>(i + 1) / static_cast<float>(mark.nImages + 1);
        mark.images[i] = {{fMiddle + fMiddle * 0.25F * std::cos(fTurn),
                           0.0F,
                           fMiddle + fMiddle * 0.25F * std::sin(fTurn)},
                          fTurn,
                          false};
    }
    scene.m_Settings.mark = mark;
    scene.Draw(*pRenderer);
    CRatio ratio;
    for (auto _ : state)
    {
        scene.m_Settings.mark = {};
        scene.m_Settings.mark.ePlace = EMarkPlace::None;
        const double fWithout = TakeTime([&] { scene.Draw(*pRenderer); });
        scene.m_Settings.mark = mark;
        ratio.Add(TakeTime([&] { scene.Draw(*pRenderer); }), fWithout);
    }
    Report(state, ratio);
    state.counters["worst_ms"] = ratio.GetWorst() * 1e3;
}

// Undo of a stroke of 60 points on a wide circle, and the frame after it. Yardstick: a frame in
// which nothing changed.
void UndoFrame(benchmark::State& state)
{
    constexpr int POINTS = 60;
    CScene scene(static_cast<uint32_t>(state.range(0)));
    CEditorHost& host = scene.GetBench().GetHost();
    const auto pRenderer = MakeRenderer();
    scene.Draw(*pRenderer);
    scene.GetBench().SetBrush("RelativeHeightFunction", static_cast<float>(state.range(1)));
    scene.Press();
    for (int i = 0; i < POINTS; ++i)
    {
        scene.Move(scene.GetCircle() / POINTS);
    }
    scene.Release();
    CRatio ratio;
    double fUndo = 0.0;
    double fUploaded = 0.0;
    for (auto _ : state)
    {
        scene.Draw(*pRenderer);
        const double fStill = TakeTime([&] { scene.Draw(*pRenderer); });
        const double fStep = TakeTime([&] { host.Undo(); });
        ratio.Add(fStep + TakeTime([&] { scene.Draw(*pRenderer); }), fStill);
        fUndo += fStep * 1e3;
        fUploaded += static_cast<double>(pRenderer->GetStatistics().uUploadedBytes);
        host.Redo();
    }
    const auto fRounds = static_cast<double>(state.iterations());
    Report(state, ratio);
    state.counters["undo_ms"] = fUndo / fRounds;
    state.counters["upload_kb"] = fUploaded / 1024.0 / fRounds;
}

// Vertices, brush and perhaps images of each case, smallest first.
void AddCases(benchmark::internal::Benchmark* pRow, std::vector<std::vector<int64_t>> cases)
{
    std::vector<std::string> names = {"terrain", "footprint", "images"};
    names.resize(cases.front().size());
    cases.resize(IsQuick() ? 1 : cases.size());
    pRow->ArgNames(names);
    for (const std::vector<int64_t>& arguments : cases)
    {
        pRow->Args(arguments);
    }
}

BENCHMARK(FirstFrame)
    ->ArgsProduct({GetSizes({1025, 4097, 16385})})
    ->ArgName("terrain")
    ->Iterations(GetRounds(3))
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime();
BENCHMARK_CAPTURE(BrushStep, Any, false)
    ->Apply(
        [](auto* pRow) {
            AddCases(pRow, {{1025, 64}, {4097, 64}, {4097, 256}, {4097, 1000}});
        }) -> Iterations(GetRounds(100)) -> Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BrushStep, OnCard, true)
    ->Apply(
        [](auto* pRow) {
            AddCases(pRow, {{4097, 256}, {4097, 1000}});
        }) -> Iterations(GetRounds(600)) -> Unit(benchmark::kMillisecond);
BENCHMARK(MarkFrame)
    ->Apply(
        [](auto* pRow) {
            AddCases(pRow, {{4097, 64, 0}, {4097, 1000, 0}, {4097, 256, 7}});
        }) -> Iterations(GetRounds(100)) -> Unit(benchmark::kMillisecond);
BENCHMARK(UndoFrame)
    ->Apply(
        [](auto* pRow) {
            AddCases(pRow, {{1025, 64}, {4097, 1000}, {16385, 256}});
        }) -> Iterations(GetRounds(5)) -> Unit(benchmark::kMillisecond);

} // namespace

int main(int nArguments, char** ppszArguments)
{
    if (std::getenv("DISPLAY") == nullptr && std::getenv("WAYLAND_DISPLAY") == nullptr &&
        std::getenv("QT_QPA_PLATFORM") == nullptr)
    {
        std::printf("view_bench: there is no display to measure\n");
        return 0;
    }
    benchmark::Initialize(&nArguments, ppszArguments);
    QSurfaceFormat format;
    format.setVersion(3, 3);
    format.setProfile(QSurfaceFormat::CoreProfile);
    QSurfaceFormat::setDefaultFormat(format);
    const QGuiApplication program(nArguments, ppszArguments);
    QOffscreenSurface surface;
    surface.create();
    QOpenGLContext context;
    if (!context.create() || !context.makeCurrent(&surface))
    {
        std::fprintf(stderr, "view_bench: the display offers no OpenGL 3.3\n");
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
