// The editor's window: a level from the choice of its file to its ground on the screen, and how the
// ground follows the hand. Needs a display for its OpenGL context.

#include "benchmarks/BenchHost.h"
#include "benchmarks/CHand.h"
#include "benchmarks/Effort.h"
#include "editor/app/CEditor.h"
#include "editor/app/CEditorFace.h"
#include "editor/app/CEditorProgram.h"
#include "editor/app/CEditorWindow.h"
#include "editor/app/CViewArea.h"
#include "editor/app/CViewWidget.h"
#include "engine/terrain/HeightFile.h"
#include "engine/terrain/SHeightField.h"
#include "host/FileSystem.h"

#include <QAbstractEventDispatcher>
#include <QElapsedTimer>
#include <QSurfaceFormat>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace
{

// The longest time in which the window could not answer.
class CAnswers
{
public:
    CAnswers()
    {
        m_Since.start();
        m_Awake = QObject::connect(QAbstractEventDispatcher::instance(),
                                   &QAbstractEventDispatcher::awake,
                                   [this] { Note(); });
    }

    ~CAnswers() { QObject::disconnect(m_Awake); }

    CAnswers(const CAnswers&) = delete;
    CAnswers& operator=(const CAnswers&) = delete;

    void Note()
    {
        m_Longest = std::max(m_Longest, m_Since.nsecsElapsed());
        m_Since.start();
    }

    double GetLongestMilliseconds() const { return static_cast<double>(m_Longest) * 1e-6; }

private:
    QElapsedTimer m_Since;
    qint64 m_Longest = 0;
    QMetaObject::Connection m_Awake;
};

// The editor as it starts, with no level.
class CEditorScene
{
public:
    CEditorScene()
        : m_Editor(m_Face, m_Folder.filePath("config").toStdString())
        , m_Window(m_Editor, m_Face)
    {
        if (!m_Editor.LoadPlugin(GetProgramFolder() + "/libtellur.so"))
        {
            std::exit(1); // the log has said why
        }
        m_Window.ShowPlugin();
        m_Window.resize(1280, 800);
        m_Window.show();
        Settle();
    }

    ~CEditorScene()
    {
        m_Window.hide();
        m_Editor.UnloadPlugin();
    }

    CEditorScene(const CEditorScene&) = delete;
    CEditorScene& operator=(const CEditorScene&) = delete;

    template <class TFn> static void Wait(TFn holds)
    {
        do
        {
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents();
        } while (!holds());
    }

    std::string MakeLevel(uint32_t uVertices) const
    {
        SHeightField field;
        if (!field.Allocate(uVertices, uVertices))
        {
            std::exit(1);
        }
        field.size = {static_cast<float>(uVertices - 1), 500.0F, static_cast<float>(uVertices - 1)};
        float* pHeight = field.pHeights.get();
        for (uint32_t z = 0; z < uVertices; ++z)
        {
            const float fRow = std::sin(static_cast<float>(z) * 0.004F);
            for (uint32_t x = 0; x < uVertices; ++x)
            {
                *pHeight++ = 200.0F + 150.0F * fRow * static_cast<float>(x % 4096) / 4096.0F;
            }
        }
        const std::string strPath = m_Folder.filePath("level.height").toStdString();
        if (!WriteHeightFile(
                strPath.c_str(), field.pHeights.get(), uVertices, uVertices, field.size))
        {
            std::exit(1);
        }
        return strPath;
    }

    // Until the views have nothing more to draw.
    void Settle()
    {
        constexpr qint64 QUIET_MS = 500; // longer than a view waits before it draws in full
        QElapsedTimer since;
        since.start();
        const auto drawn = QObject::connect(m_Window.GetViews().GetActive(),
                                            &QOpenGLWidget::frameSwapped,
                                            [&since] { since.start(); });
        Wait([&since] { return since.elapsed() > QUIET_MS; });
        QObject::disconnect(drawn);
    }

    CEditorWindow& GetWindow() { return m_Window; }

    IPlugin* GetPlugin() { return m_Editor.GetPlugin(); }

private:
    QTemporaryDir m_Folder;
    CEditorFace m_Face;
    CEditor m_Editor;
    CEditorWindow m_Window;
};

// Until the first frame that shows the ground, and until it is there in full. Yardstick: one plain
// read of the file.
void OpenLevel(benchmark::State& state)
{
    CEditorScene scene;
    CEditorWindow& window = scene.GetWindow();
    const std::string strPath = scene.MakeLevel(static_cast<uint32_t>(state.range(0)));
    CRatio ratio;
    double fRead = 0.0;
    double fComplete = 0.0;
    double fBlock = 0.0;
    for (auto _ : state)
    {
        bool bShown = false;
        const double fPlain = TakeTime(
            [&]
            {
                std::ifstream file(strPath, std::ios::binary | std::ios::ate);
                std::vector<char> bytes(static_cast<size_t>(file.tellg()));
                file.seekg(0);
                file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
                benchmark::DoNotOptimize(bytes.data());
            });
        scene.Settle();
        CAnswers answers;
        const double fOpen = TakeTime([&] { window.GetDocuments().OpenFile(strPath); });
        const auto shown = QObject::connect(window.GetViews().GetActive(),
                                            &QOpenGLWidget::frameSwapped,
                                            [&bShown] { bShown = true; });
        const double fFirst = TakeTime([&] { scene.Wait([&] { return bShown; }); });
        const double fRest =
            TakeTime([&] { scene.Wait([&] { return window.GetViews().IsComplete(); }); });
        QObject::disconnect(shown);
        answers.Note();
        ratio.Add(fOpen + fFirst, fPlain);
        state.SetIterationTime(fOpen + fFirst);
        fRead = std::max(fRead, fOpen);
        fComplete = std::max(fComplete, fOpen + fFirst + fRest);
        fBlock = std::max(fBlock, answers.GetLongestMilliseconds());
    }
    ratio.Report(state);
    state.counters["read_ms"] = fRead * 1e3;
    state.counters["complete_ms"] = fComplete * 1e3;
    state.counters["longest_without_answer_ms"] = fBlock;
}

// A drag over one side of the brush in 200 ms, by a mouse that says where it is 125 times a second.
// Times are from frame to frame. Yardstick: a frame in which nothing changed.
void DragOneExtent(benchmark::State& state)
{
    constexpr int MOVES = 25;
    constexpr double SECONDS = 0.2;
    CEditorScene scene;
    CEditorWindow& window = scene.GetWindow();
    const auto fExtent = static_cast<float>(state.range(1));
    window.GetDocuments().OpenFile(scene.MakeLevel(static_cast<uint32_t>(state.range(0))));
    scene.Wait([&] { return window.GetViews().IsComplete(); });
    TakeBrush(scene.GetPlugin(), "RelativeHeightFunction", fExtent);
    CViewWidget& view = *window.GetViews().GetActive();
    const double fPixels = view.width() * 0.7 * fExtent / static_cast<double>(state.range(0));
    CHand hand(view);
    CRatio ratio;
    std::vector<double> times;
    int nBehind = 0;
    for (auto _ : state)
    {
        scene.Settle();
        view.update();
        const double fStill = TakeTime([&] { view.grabFramebuffer(); });
        hand.Drag(fPixels, MOVES, SECONDS);
        nBehind = std::max(nBehind, hand.GetMostBehind());
        for (const double fTime : hand.GetTimes())
        {
            times.push_back(fTime);
            ratio.Add(fTime, fStill);
        }
        window.GetHost().Undo();
    }
    ratio.Report(state);
    std::sort(times.begin(), times.end());
    state.counters["p95_ms"] = times.empty() ? 0.0 : times[(times.size() * 95 - 1) / 100] * 1e3;
    state.counters["frames"] = static_cast<double>(times.size());
    state.counters["most_frames_behind"] = nBehind;
}

BENCHMARK(OpenLevel)
    ->ArgsProduct({GetSizes({1025, 4097, 16385})})
    ->ArgName("terrain")
    ->Iterations(GetRounds(3))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

BENCHMARK(DragOneExtent)
    ->Apply(
        [](auto* pRow)
        {
            pRow->ArgNames({"terrain", "footprint"});
            pRow->Args({1025, 256});
            if (!IsQuick())
            {
                pRow->Args({4097, 256})->Args({4097, 1000});
            }
        }) -> Iterations(GetRounds(5)) -> Unit(benchmark::kMillisecond);

} // namespace

int main(int nArguments, char** ppszArguments)
{
    if (std::getenv("DISPLAY") == nullptr && std::getenv("WAYLAND_DISPLAY") == nullptr)
    {
        std::printf("window_bench: there is no display to measure\n");
        return 0;
    }
    benchmark::Initialize(&nArguments, ppszArguments);
    const QTemporaryDir home; // nothing of the person who measures is read or written
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    qputenv("XDG_STATE_HOME", home.path().toUtf8());
    fs::set_user_root(home.path().toUtf8().constData());
    fs::set_data_root((GetProgramFolder() + "/../share/tellur").c_str());
    QSurfaceFormat format;
    format.setVersion(3, 3);
    format.setProfile(QSurfaceFormat::CoreProfile);
    format.setDepthBufferSize(24);
    QSurfaceFormat::setDefaultFormat(format);
    const CEditorProgram program(nArguments, ppszArguments);
    benchmark::RunSpecifiedBenchmarks();
    fs::set_user_root(nullptr);
    fs::set_data_root(nullptr);
    return 0;
}
