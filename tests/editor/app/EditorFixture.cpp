#include "tests/editor/app/EditorFixture.h"

#include "host/BrushBlock.h"
#include "host/FileSystem.h"
#include "host/IPluginScript.h"
#include "parser/TCParseFile.h"
#include "tests/support/TestPaths.h"

#include <QAbstractNativeEventFilter>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QTimer>

#include <cmath>
#include <cstring>

namespace
{

constexpr qint64 LIMIT_MS = 60000; // of what a loaded machine may take, not of what it should take

// Sees the server's note that a property of a window has changed.
class CServerEcho : public QAbstractNativeEventFilter
{
public:
    explicit CServerEcho(WId window)
        : m_Window(static_cast<uint32_t>(window))
    {
        QCoreApplication::instance()->installNativeEventFilter(this);
    }

    ~CServerEcho() override { QCoreApplication::instance()->removeNativeEventFilter(this); }

    bool IsThere() const { return m_bThere; }

    bool nativeEventFilter(const QByteArray& type, void* pMessage, qintptr*) override
    {
        constexpr uint8_t PROPERTY_NOTIFY = 28; // of the X protocol; the window's id follows at 4
        constexpr uint8_t SENT_BY_CLIENT = 0x80;
        const auto* pEvent = static_cast<const uint8_t*>(pMessage);
        uint32_t uWindow = 0;
        if (type == "xcb_generic_event_t" && (pEvent[0] & ~SENT_BY_CLIENT) == PROPERTY_NOTIFY)
        {
            std::memcpy(&uWindow, pEvent + 4, sizeof(uWindow));
            m_bThere = m_bThere || uWindow == m_Window;
        }
        return false;
    }

private:
    uint32_t m_Window;
    bool m_bThere = false;
};

} // namespace

CEditorFixture::CEditorFixture()
{
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(m_Folder.Path("config")));
    qputenv("XDG_STATE_HOME", QByteArray::fromStdString(m_Folder.Path("state")));
    std::filesystem::create_directories(m_Folder.Path("root"));
    fs::set_user_root(m_Folder.Path("root").c_str());
    fs::set_data_root(TELLUR_SOURCE_DIR);
}

CEditorFixture::~CEditorFixture()
{
    Stop();
    fs::set_user_root(nullptr);
    fs::set_data_root(nullptr);
}

void CEditorFixture::Start(bool bLevel)
{
    m_Face = std::make_unique<CEditorFace>();
    m_Editor = std::make_unique<CEditor>(*m_Face, m_Folder.Path("config/tellur"));
    m_Window = std::make_unique<CEditorWindow>(*m_Editor, *m_Face);
    ASSERT_TRUE(m_Editor->LoadPlugin(TELLUR_BIN_DIR "/libtellur.so"));
    m_Window->ShowPlugin();
    if (m_bTools)
    {
        m_Editor->BeginTools([this] { return m_Face->IsScriptPlayed(); });
    }
    if (m_bWelcome)
    {
        m_Window->WelcomePerson();
    }
    m_Window->move(0, 0);
    m_Window->show();
    if (bLevel)
    {
        ASSERT_TRUE(m_Editor->GetDocument().New(32, {320.0F, 100.0F, 320.0F}, 20.0F));
        m_Window->GetViews().FrameAll();
    }
    CViewWidget& active = *m_Window->GetViews().GetActive(); // others may be hidden
    ASSERT_TRUE(WaitFor([&] { return active.GetFrameMilliseconds() > 0.0; }, "a frame"));
    // There is no window manager that would do it.
    m_Window->activateWindow();
    active.setFocus();
    ASSERT_TRUE(WaitFor([this] { return m_Window->isActiveWindow(); }, "the window is active"));
    Settle();
    ASSERT_EQ(m_Window->GetViewFault().toStdString(), "");
}

void CEditorFixture::Stop()
{
    m_Window.reset();
    if (m_Editor != nullptr)
    {
        m_Editor->UnloadPlugin();
    }
    m_Editor.reset();
    m_Face.reset();
}

void CEditorFixture::TakeBrush(const char* pszFunction,
                               const char* pszField,
                               const char* pszValue,
                               const std::string& strMore,
                               const char* pszShape)
{
    const std::string strScript = m_Folder.Path("brush.txt");
    WriteBytes(strScript,
               "!brush()\n!mode( s )\n" + GetBrushDeclarations(EBrushBlock::Script) +
                   "brush()\n{\n bitmap() { path( \"data/brushes/" + pszShape +
                   ".png\" ) }\n function( \"" + pszFunction + "\" ) { attrib( \"" + pszField +
                   "\", \"" + pszValue + "\" ) }\n extent( 40.0 )\n" + strMore +
                   "}\nmode( \"terraforming\" )\n");
    const std::unique_ptr<CTCPARSE_KEYWORD> pFirst(TCParseFile(strScript.c_str()));
    std::string strWhy;
    for (const CTCPARSE_KEYWORD* pKey = pFirst.get(); pKey != nullptr; pKey = pKey->next)
    {
        ASSERT_EQ(m_Editor->FindInterface<IPluginScript>()->Play(pKey, strWhy), EScriptResult::Done)
            << strWhy;
    }
    Settle();
}

bool CEditorFixture::WaitFor(const std::function<bool()>& holds, const char* pszWhat)
{
    QElapsedTimer clock;
    clock.start();
    while (!holds())
    {
        if (clock.elapsed() > LIMIT_MS)
        {
            ADD_FAILURE() << "never happened: " << pszWhat;
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return true;
}

void CEditorFixture::Settle()
{
    // A property that the server changes for us comes back behind everything that it sent before.
    if (m_Window != nullptr && m_Window->windowHandle() != nullptr)
    {
        const CServerEcho echo(m_Window->winId());
        QProcess process;
        process.start("xdotool",
                      {"set_window", "--name", "settled", QString::number(m_Window->winId())});
        WaitFor([&] { return process.state() == QProcess::NotRunning && echo.IsThere(); },
                "the server answers");
    }
    for (int i = 0; i < 4; ++i)
    {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
}

void CEditorFixture::Do(const QStringList& arguments)
{
    QProcess process;
    process.start("xdotool", arguments);
    WaitFor([&process] { return process.state() == QProcess::NotRunning; }, "xdotool ends");
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    Settle();
}

void CEditorFixture::MoveTo(const QPoint& screen)
{
    Do({"mousemove", QString::number(screen.x()), QString::number(screen.y())});
}

namespace
{

// Qt's points are the server's pixels divided by the scale.
QPoint GetScreenPoint(const QWidget& widget, const QPointF& share)
{
    const double fScale = widget.devicePixelRatioF();
    const QPointF local(share.x() * widget.width(), share.y() * widget.height());
    const QPointF at = widget.mapToGlobal(local) * fScale;
    return {static_cast<int>(std::floor(at.x())), static_cast<int>(std::floor(at.y()))};
}

} // namespace

void CEditorFixture::MoveTo(QWidget& widget, const QPointF& share)
{
    MoveTo(GetScreenPoint(widget, share));
}

void CEditorFixture::Click(QWidget& widget, const char* pszButton)
{
    MoveTo(widget, {0.5, 0.5});
    Do({"click", pszButton});
}

void CEditorFixture::Drag(QWidget& view, const QPointF& from, const QPointF& to, int nSteps)
{
    QStringList arguments;
    const auto go = [&](const QPointF& share)
    {
        const QPoint at = GetScreenPoint(view, share);
        arguments << "mousemove" << QString::number(at.x()) << QString::number(at.y());
    };
    go(from);
    arguments << "mousedown"
              << "1";
    for (int i = 1; i <= nSteps; ++i)
    {
        go(from + (to - from) * (static_cast<double>(i) / nSteps));
    }
    arguments << "mouseup"
              << "1";
    Do(arguments);
}

void CEditorFixture::AnswerAny(const std::function<void()>& work,
                               const std::function<bool(QWidget*)>& answer)
{
    bool bAnswered = false;
    QTimer timer;
    timer.setInterval(20);
    timer.callOnTimeout(
        [&]
        {
            QWidget* pShown = QApplication::activePopupWidget();
            pShown = pShown != nullptr ? pShown : QApplication::activeModalWidget();
            if (!bAnswered && pShown != nullptr && pShown->isVisible())
            {
                timer.stop();
                if (pShown == QApplication::activeModalWidget())
                {
                    pShown->activateWindow();
                    WaitFor([pShown] { return pShown->isActiveWindow(); }, "a dialog is active");
                }
                bAnswered = answer(pShown);
                EXPECT_TRUE(bAnswered) << "another window: " << pShown->windowTitle().toStdString();
                if (!bAnswered)
                {
                    pShown->close();
                }
            }
        });
    timer.start();
    work();
    WaitFor([&bAnswered] { return bAnswered; }, "a dialog is shown");
    if (m_Window != nullptr && m_Window->isVisible())
    {
        m_Window->activateWindow();
        WaitFor([this] { return m_Window->isActiveWindow(); }, "the window is active again");
    }
    Settle();
}

std::vector<float> CEditorFixture::GetHeights()
{
    const CTerrain* pTerrain = GetTerrain();
    const size_t nCount = size_t{pTerrain->GetVerticesX()} * pTerrain->GetVerticesZ();
    return {pTerrain->GetHeightData(), pTerrain->GetHeightData() + nCount};
}

void CEditorFixture::Trigger(const char* pszCommand)
{
    QAction* pAction = m_Window->GetCommands().Find(pszCommand);
    ASSERT_NE(pAction, nullptr) << pszCommand;
    pAction->trigger();
}

QImage CEditorFixture::Grab(const QWidget& widget)
{
    const QPoint at = widget.mapToGlobal(QPoint(0, 0));
    return m_Window->screen()
        ->grabWindow(0, at.x(), at.y(), widget.width(), widget.height())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}

void CEditorFixture::SavePicture(const char* pszName)
{
    QDir().mkpath("pictures");
    // From the screen, so that dialogs are in it.
    const QRect at = m_Window->frameGeometry();
    const QPixmap picture =
        m_Window->screen()->grabWindow(0, at.x(), at.y(), at.width(), at.height());
    EXPECT_TRUE(picture.save(QString("pictures/%1.png").arg(pszName)));
}

std::string ReplayScript(const std::string& strScript, const std::string& strOut)
{
    QProcess process;
    process.start(TELLUR_BIN_DIR "/tellur-replay",
                  {QString::fromStdString(strScript),
                   "--root",
                   TELLUR_SOURCE_DIR,
                   "--out",
                   QString::fromStdString(strOut)});
    EXPECT_TRUE(process.waitForFinished(LIMIT_MS));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    return ReadBytes(strOut);
}
