#include "tests/tools/replay/CReplayRunner.h"

#include "host/Image.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace
{

constexpr uint32_t BRUSH_TEXELS = 16;

void AppendToEnvironment(const char* pszName, const char* pszText)
{
    const char* pszBefore = std::getenv(pszName);
    const std::string strValue = pszBefore != nullptr ? std::string(pszBefore) + ":" : "";
    ::setenv(pszName, (strValue + pszText).c_str(), 1);
}

[[noreturn]] void RunChild(const std::string& strProgram,
                           const std::string& strFolder,
                           const std::string& strOutputs,
                           const std::vector<std::string>& arguments)
{
    std::vector<char*> pointers = {const_cast<char*>(strProgram.c_str())};
    for (const std::string& strArgument : arguments)
    {
        pointers.push_back(const_cast<char*>(strArgument.c_str()));
    }
    pointers.push_back(nullptr);
    // A finding of a sanitizer must not look like a script that failed.
    AppendToEnvironment("ASAN_OPTIONS", "exitcode=99");
    AppendToEnvironment("UBSAN_OPTIONS", "exitcode=99");
    ::unsetenv("TELLUR_ROOT");
    const int iOut = ::open((strOutputs + "/out").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    const int iErr = ::open((strOutputs + "/err").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (::dup2(iOut, 1) == 1 && ::dup2(iErr, 2) == 2 && ::chdir(strFolder.c_str()) == 0)
    {
        ::execv(strProgram.c_str(), pointers.data());
    }
    ::_exit(98);
}

} // namespace

size_t SRunResult::CountErrorLines() const
{
    return static_cast<size_t>(std::count(strErr.begin(), strErr.end(), '\n'));
}

CReplayRunner::CReplayRunner()
{
    const std::vector<uint8_t> white(size_t{BRUSH_TEXELS} * BRUSH_TEXELS, 255);
    const std::unique_ptr<IImage> pImage(IL_CreateImageFromBufferFormat(
        BRUSH_TEXELS, BRUSH_TEXELS, EImageFormat::Indexed8, white.data()));
    EXPECT_TRUE(IL_SaveImage(Path("white.png").c_str(), pImage.get(), nullptr));
}

void CReplayRunner::LeaveOutWindowSystem()
{
    const std::filesystem::path folder = Path("bin");
    std::filesystem::create_directory(folder);
    std::filesystem::copy_file(m_Program, folder / "tellur-replay"); // a link is followed
    for (const char* pszName : {"libtellur.so", "libtellur_engine.so", "libtellur_framework.so"})
    {
        std::filesystem::create_symlink(std::filesystem::path(TELLUR_BIN_DIR) / pszName,
                                        folder / pszName);
    }
    m_Program = folder / "tellur-replay";
}

SRunResult CReplayRunner::Run(const std::vector<std::string>& arguments) const
{
    const CTempFolder outputs;
    SRunResult result;
    const pid_t iChild = ::fork();
    if (iChild == 0)
    {
        RunChild(m_Program, GetFolder(), outputs.GetFolder(), arguments);
    }
    int iStatus = 0;
    EXPECT_EQ(::waitpid(iChild, &iStatus, 0), iChild);
    result.iExitCode = WIFEXITED(iStatus) ? WEXITSTATUS(iStatus) : -WTERMSIG(iStatus);
    result.strOut = ReadBytes(outputs.Path("out"));
    result.strErr = ReadBytes(outputs.Path("err"));
    return result;
}

SRunResult CReplayRunner::RunWithFault(const std::string& strFault) const
{
    ::setenv("LD_PRELOAD", TELLUR_BIN_DIR "/libdisk_faults.so", 1);
    ::setenv("ASAN_OPTIONS", "verify_asan_link_order=0", 1);
    ::setenv("TELLUR_FAULT", strFault.c_str(), 1);
    SRunResult result = Run({"script.tellur"});
    ::unsetenv("LD_PRELOAD");
    ::unsetenv("ASAN_OPTIONS");
    ::unsetenv("TELLUR_FAULT");
    return result;
}

SRunResult CReplayRunner::Play(const std::string& strBody, std::vector<std::string> arguments) const
{
    WriteBytes(Path("script.tellur"), GetDeclarations() + strBody);
    arguments.insert(arguments.begin(), {"script.tellur", "--log", "log.txt"});
    return Run(arguments);
}

const std::string& CReplayRunner::GetDeclarations()
{
    static const std::string strDeclarations = CReplayRunner().Run({"--declarations"}).strOut;
    return strDeclarations;
}

std::string CReplayRunner::GetStrokeStart(const std::string& strFunction)
{
    return "level( 8, [ 80, 100, 80 ] )\n"
           "brush() { bitmap() { path( \"white.png\" ) } extent( 40 )\n"
           "  function( \"" +
           strFunction + "\" ) { attrib( \"m_Height\", \"20\" ) } }\nmode( \"terraforming\" )\n";
}

std::vector<std::string> CReplayRunner::GetNames() const
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(GetFolder()))
    {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}
