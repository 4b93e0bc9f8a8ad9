// What the open tool panel costs a stroke: refreshing and painting it after each change that comes
// from the hand in the view. The yardstick is one frame of a display with 60 a second; "ratio" is
// tool / yardstick.

#include "benchmarks/BenchHost.h"
#include "benchmarks/Effort.h"
#include "framework/core/CRuntimeClass.h"
#include "framework/qt/WidgetAccess.h"
#include "framework/widgets/CFormView.h"
#include "host/ActionIds.h"
#include "host/IPlugin.h"

#include <QApplication>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QWidget>

#include <benchmark/benchmark.h>

#include <memory>

namespace
{

constexpr double FRAME_SECONDS = 1.0 / 60.0;
constexpr int32_t PANEL_COMMAND = 1;

class CPanelHost
{
public:
    CPanelHost()
        : m_Bench(257)
    {
        m_Bench.SetOpenView(
            [this](const CRuntimeClass* pClass)
            {
                m_View.reset(pClass->Create());
                if (!m_View->Create(nullptr))
                {
                    return false;
                }
                GetWidget(*m_View)->resize(360, 1000);
                m_View->ShowWindow(true);
                return true;
            });
        m_Bench.GetPlugin()->OnCommand(PANEL_COMMAND);
        QApplication::processEvents();
    }

    ~CPanelHost() { m_View.reset(); }

    CPanelHost(const CPanelHost&) = delete;
    CPanelHost& operator=(const CPanelHost&) = delete;

    CBenchHost& GetBench() { return m_Bench; }

private:
    CBenchHost m_Bench;
    std::unique_ptr<CFormView> m_View;
};

// A brush-size key that is held down.
void PanelBrushSize(benchmark::State& state)
{
    CPanelHost panel;
    CBenchHost& bench = panel.GetBench();
    bench.SetBrush("SetHeightFunction", 20.0F);
    QApplication::processEvents();
    CRatio ratio;
    int n = 0;
    for (auto _ : state)
    {
        const int32_t iAction = ++n / 50 % 2 == 0 ? ACTION_BRUSH_LARGER : ACTION_BRUSH_SMALLER;
        ratio.Add(TakeTime(
                      [&]
                      {
                          bench.GetHost().GetInput().SendAction(CHeadlessFace::VIEW, iAction, 1);
                          QApplication::processEvents();
                      }),
                  FRAME_SECONDS);
    }
    ratio.Report(state);
}

// A press that picks the height under the cursor, which the property grid shows.
void PanelPickedHeight(benchmark::State& state)
{
    CPanelHost panel;
    CBenchHost& bench = panel.GetBench();
    bench.SetBrush("SetHeightFunction", 20.0F, " attrib( \"m_PickHeight\", \"1\" ) ");
    QApplication::processEvents();
    CRatio ratio;
    float fX = 30.0F;
    for (auto _ : state)
    {
        fX = fX > 200.0F ? 30.0F : fX + 1.0F;
        ratio.Add(TakeTime(
                      [&]
                      {
                          bench.Press(fX, fX);
                          QApplication::processEvents();
                      }),
                  FRAME_SECONDS);
        bench.Release(fX, fX);
    }
    ratio.Report(state);
}

BENCHMARK(PanelBrushSize)->Iterations(GetRounds(300))->Unit(benchmark::kMillisecond);
BENCHMARK(PanelPickedHeight)->Iterations(GetRounds(300))->Unit(benchmark::kMillisecond);

} // namespace

int main(int nArguments, char** ppszArguments)
{
    benchmark::Initialize(&nArguments, ppszArguments);
    const QTemporaryDir config; // the panel keeps its column widths
    qputenv("XDG_CONFIG_HOME", config.path().toUtf8());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication program(nArguments, ppszArguments);
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
