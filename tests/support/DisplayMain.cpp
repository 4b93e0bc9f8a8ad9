// The tests of real windows need a display of their own: events from outside reach the window under
// the cursor, and a developer's desktop is no place for that.

#include "tests/support/DecimalPoint.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QStyleFactory>
#include <QSurfaceFormat>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace
{

// In pixels; a test of other sizes than that of most screens says so.
std::string GetScreen()
{
    const char* pszScreen = std::getenv("TELLUR_TEST_SCREEN");
    return pszScreen != nullptr ? pszScreen : "1600x1000";
}

// An X server that ends with this object.
class CDisplay
{
public:
    CDisplay()
    {
        int pipe[2] = {};
        if (::pipe(pipe) != 0)
        {
            return;
        }
        m_Server = ::fork();
        if (m_Server == 0)
        {
            // It must not outlive a test that crashes, nor keep its output open.
            ::prctl(PR_SET_PDEATHSIG, SIGTERM);
            const int iNothing = ::open("/dev/null", O_RDWR);
            ::dup2(iNothing, STDOUT_FILENO);
            ::dup2(iNothing, STDERR_FILENO);
            ::close(pipe[0]);
            const std::string strPipe = std::to_string(pipe[1]);
            ::execlp("Xvfb",
                     "Xvfb",
                     "-displayfd",
                     strPipe.c_str(),
                     "-screen",
                     "0",
                     (GetScreen() + "x24").c_str(),
                     "-nolisten",
                     "tcp",
                     static_cast<char*>(nullptr));
            ::_exit(127);
        }
        ::close(pipe[1]);
        char szNumber[16] = {};
        size_t nRead = 0;
        while (nRead + 1 < sizeof(szNumber) && ::read(pipe[0], szNumber + nRead, 1) == 1 &&
               szNumber[nRead] != '\n')
        {
            ++nRead;
        }
        ::close(pipe[0]);
        szNumber[nRead] = '\0';
        m_Name = nRead > 0 ? ":" + std::string(szNumber) : "";
    }

    ~CDisplay()
    {
        if (m_Server > 0)
        {
            ::kill(m_Server, SIGTERM);
            ::waitpid(m_Server, nullptr, 0);
        }
    }

    CDisplay(const CDisplay&) = delete;
    CDisplay& operator=(const CDisplay&) = delete;

    const std::string& GetName() const { return m_Name; } // empty when there is none

private:
    pid_t m_Server = -1;
    std::string m_Name;
};

} // namespace

int main(int nArguments, char** ppszArguments)
{
    testing::InitGoogleTest(&nArguments, ppszArguments);
    if (GTEST_FLAG_GET(list_tests))
    {
        return RUN_ALL_TESTS();
    }
    const CDisplay display;
    if (display.GetName().empty())
    {
        std::fprintf(stderr, "Xvfb cannot be started\n");
        return 1;
    }
    ::setenv("DISPLAY", display.GetName().c_str(), 1);
    ::setenv("QT_QPA_PLATFORM", "xcb", 1);
    ::setenv("LIBGL_ALWAYS_SOFTWARE", "1", 1);
    ::setenv("MESA_GL_VERSION_OVERRIDE", "3.3", 1); // no more than the editor asks for
    QSurfaceFormat format;
    format.setVersion(3, 3);
    format.setProfile(QSurfaceFormat::CoreProfile);
    format.setDepthBufferSize(24);
    QSurfaceFormat::setDefaultFormat(format);
    QApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    const QApplication application(nArguments, ppszArguments);
    QApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, false);
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    return HasExpectedPoint() ? RUN_ALL_TESTS() : 1;
}
