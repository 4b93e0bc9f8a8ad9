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

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

namespace
{

constexpr int WIDTH = 1280;
constexpr int HEIGHT = 800;
constexpr float EXTENT = 64.0F; // of the brush, in cells

// A terrain, its stroke and its picture; one at a time, as the plug-in is one object a process.
class CScene
{
public:
    explicit CScene(uint32_t uVertices)
        : m_Bench(uVertices)
        , m_Buffer(WIDTH, HEIGHT, QOpenGLFramebufferObject::Depth)
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
        renderer.Render(m_View, m_Bench.GetHost().GetEngine(), {});
        QOpenGLContext::currentContext()->functions()->glFinish();
    }

    CBenchHost& GetBench() { return m_Bench; }

private:
    CBenchHost m_Bench;
    QOpenGLFramebufferObject m_Buffer;
    SViewProjection m_View;
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
    state.counters["yardstick_ms"] = ratio.GetYardstick() * 1e3;
    state.counters["tool_ms"] = ratio.GetTool() * 1e3;
    state.counters["ratio"] = ratio.GetRatio();
}

// Yardstick: one copy of what goes to the card.
void FirstFrame(benchmark::State& state)
{
    CScene scene(static_cast<uint32_t>(state.range(0)));
    CRatio ratio;
    for (auto _ : state)
    {
        const auto pRenderer = MakeRenderer();
        const double fTool = TakeTime([&] { scene.Draw(*pRenderer); });
        const std::vector<char> from(pRenderer->GetStatistics().uUploadedBytes, 1);
        std::vector<char> to(from.size());
        ratio.Add(fTool, TakeTime([&] { std::memcpy(to.data(), from.data(), to.size()); }));
        benchmark::DoNotOptimize(to.data());
    }
    Report(state, ratio);
}

// A move of a stroke and the frame that shows it. Yardstick: a frame in which nothing changed.
void BrushStep(benchmark::State& state)
{
    const auto uVertices = static_cast<uint32_t>(state.range(0));
    CScene scene(uVertices);
    CBenchHost& bench = scene.GetBench();
    const auto pRenderer = MakeRenderer();
    scene.Draw(*pRenderer);
    bench.SetBrush("RelativeHeightFunction", EXTENT);
    const float fMiddle = static_cast<float>(uVertices) * 0.5F;
    bench.Press(fMiddle, fMiddle);
    scene.Draw(*pRenderer);
    CRatio ratio;
    double fUploaded = 0.0;
    float fAngle = 0.0F;
    for (auto _ : state)
    {
        const double fFrame = TakeTime([&] { scene.Draw(*pRenderer); });
        fAngle += EXTENT * 0.25F / (fMiddle * 0.5F); // a quarter of the brush on a circle
        const float fX = fMiddle + fMiddle * 0.5F * std::sin(fAngle);
        const float fZ = fMiddle + fMiddle * 0.5F * std::cos(fAngle);
        ratio.Add(TakeTime(
                      [&]
                      {
                          bench.Move(fX, fZ);
                          scene.Draw(*pRenderer);
                      }),
                  fFrame);
        fUploaded += static_cast<double>(pRenderer->GetStatistics().uUploadedBytes);
    }
    bench.Release(fMiddle, fMiddle);
    Report(state, ratio);
    state.counters["triangles"] = pRenderer->GetStatistics().uTriangles;
    state.counters["upload_kb"] = fUploaded / 1024.0 / static_cast<double>(state.iterations());
}

BENCHMARK(FirstFrame)
    ->ArgsProduct({GetSizes({1025, 4097})})
    ->Iterations(GetRounds(5))
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BrushStep)
    ->ArgsProduct({GetSizes({1025, 4097})})
    ->Iterations(GetRounds(100))
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int nArguments, char** ppszArguments)
{
    if (std::getenv("DISPLAY") == nullptr && std::getenv("WAYLAND_DISPLAY") == nullptr)
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
