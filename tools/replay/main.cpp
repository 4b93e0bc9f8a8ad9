#include "editor/core/CEditorHost.h"
#include "editor/core/CPluginLoader.h"
#include "editor/script/CScriptCall.h"
#include "editor/script/CScriptFolder.h"
#include "editor/script/CScriptKeywords.h"
#include "editor/script/CScriptPlayer.h"
#include "editor/script/LoadScript.h"
#include "engine/world/CEngineHost.h"
#include "host/FileSystem.h"
#include "host/Program.h"
#include "host/Terrain.h"
#include "host/World.h"
#include "parser/CTCParseNodes.h"
#include "tools/replay/CReplayLog.h"
#include "tools/replay/CScriptFace.h"
#include "tools/replay/SReplayOptions.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <system_error>
#include <vector>

namespace
{

enum EExitCode
{
    EXIT_PLAYED = 0,
    EXIT_FAILED = 1,
    EXIT_UNUSABLE = 2, // usage, or a script that cannot be read or parsed
};

int Report(EExitCode eCode, const std::string& strFault)
{
    std::fprintf(stderr, "%s\n", GetOneLine(strFault).c_str());
    return eCode;
}

// Paths of the command line count from the current folder, whatever the user root is.
std::string GetAbsolutePath(const std::string& strPath)
{
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(strPath, error);
    return error ? strPath : path.string();
}

std::filesystem::path GetProgramFolder()
{
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

void SetRoots(const SReplayOptions& options)
{
    const char* pszRoot = std::getenv("TELLUR_ROOT");
    const std::string strRoot =
        options.strRoot.empty() && pszRoot != nullptr ? pszRoot : options.strRoot;
    if (!strRoot.empty())
    {
        fs::set_user_root(GetAbsolutePath(strRoot).c_str());
    }
    const std::filesystem::path dataRoot = GetProgramFolder().parent_path() / "share" / "tellur";
    fs::set_data_root(dataRoot.c_str());
}

// What is written once everything has been played.
bool WriteResults(const SReplayOptions& options,
                  CEditorHost& host,
                  const CDragRecorder& drags,
                  std::string& strFault)
{
    if (!options.strStats.empty() && !drags.Write(GetAbsolutePath(options.strStats).c_str()))
    {
        strFault = options.strStats + ": --stats cannot be written, see the log";
        return false;
    }
    if (options.strOut.empty())
    {
        return true;
    }
    Terrain* pTerrain = host.GetEngine().GetWorld()->GetTerrain();
    if (pTerrain == nullptr)
    {
        strFault = options.strScript + ": --out: there is no terrain";
        return false;
    }
    if (!pTerrain->SaveHeightMap(GetAbsolutePath(options.strOut).c_str(), nullptr, 0, 0))
    {
        strFault = options.strOut + ": --out cannot be written, see the log";
        return false;
    }
    return true;
}

std::string GetPlugin(const SReplayOptions& options)
{
    return options.strPlugin.empty() ? (GetProgramFolder() / "libtellur.so").string()
                                     : options.strPlugin;
}

bool OpenPlugin(CPluginLoader& loader, const SReplayOptions& options, std::string& strFault)
{
    const std::string strPlugin = GetPlugin(options);
    const bool bLoaded = loader.Open(strPlugin.c_str());
    strFault = bLoaded ? "" : strPlugin + ": cannot be loaded, see the log";
    return bLoaded;
}

// The keywords of scripts that the plug-in plays, too.
int PrintDeclarations(const SReplayOptions& options)
{
    CScriptFace face;
    CEditorHost host(face);
    CPluginLoader loader(host);
    std::string strFault;
    if (!OpenPlugin(loader, options, strFault))
    {
        return Report(EXIT_UNUSABLE, strFault);
    }
    std::fputs(CScriptKeywords(loader.GetPlugin()).GetDeclarations().c_str(), stdout);
    return FlushStandardOutput("tellur-replay") ? EXIT_PLAYED : EXIT_FAILED;
}

// Log and statistics are no files that the script reads or writes, and nothing that is written is
// what every script reads: the plug-in, the programs beside it and the library of brushes. Empty
// when that is so. pScript: null for one that could not be read.
std::string FindClash(const SReplayOptions& options,
                      const CScriptKeywords& keywords,
                      const CTCPARSE_KEYWORD* pScript)
{
    const CScriptFolder folder(options.strScript, keywords);
    for (const std::string& strPath : {options.strLog, options.strStats})
    {
        if (!strPath.empty() && folder.Names(pScript, GetAbsolutePath(strPath)))
        {
            return strPath + ": is the same file as one of " + options.strScript;
        }
    }
    std::error_code error;
    std::vector<std::string> read = {"PredefinedBrushes.ini"};
    for (const auto& program : std::filesystem::directory_iterator(GetProgramFolder(), error))
    {
        read.push_back(program.path().string());
    }
    for (const std::string& strPath : {options.strOut, options.strLog, options.strStats})
    {
        const std::string strFull = strPath.empty() ? std::string() : GetAbsolutePath(strPath);
        for (const std::string& strRead : read)
        {
            if (!strPath.empty() && fs::same_file(strFull.c_str(), strRead.c_str()))
            {
                std::string strFault = strPath;
                return strFault.append(": is the same file as ").append(strRead);
            }
        }
    }
    return "";
}

std::string ReadStart(const std::string& strPath, size_t nBytes)
{
    std::ifstream file(strPath, std::ios::binary);
    std::string strText(nBytes, ' ');
    file.read(strText.data(), static_cast<std::streamsize>(nBytes));
    strText.resize(static_cast<size_t>(file.gcount()));
    return strText;
}

// Which files a script names that cannot be read, or whose plug-in is missing, nobody knows: a log
// that is there stays when it is no text, or its name stands in the script.
bool MayBeNamed(const SReplayOptions& options)
{
    constexpr size_t START = 4096;
    constexpr size_t MOST = size_t{1} << 24U;
    std::error_code error;
    if (options.strLog.empty() || !std::filesystem::is_regular_file(options.strLog, error))
    {
        return false;
    }
    const std::string strName = std::filesystem::path(options.strLog).filename().string();
    return ReadStart(options.strLog, START).find('\0') != std::string::npos ||
           ReadStart(options.strScript, MOST).find(strName) != std::string::npos;
}

// Which keywords name files is the plug-in's to say, so it is opened before that is judged. It
// starts when nothing stands against it, since a start reads and may mend its library of brushes.
int Play(const SReplayOptions& options, CReplayLog& log)
{
    std::unique_ptr<CTCPARSE_KEYWORD> pScript;
    std::string strFault;
    bool bReady = LoadScript(options.strScript, pScript, strFault);
    CScriptFace face;
    CEditorHost host(face);
    if (options.bPlainTerrain)
    {
        host.GetEngine().GetCWorld().ShowPlainTerrain();
    }
    CPluginLoader loader(host);
    if (bReady && !OpenPlugin(loader, options, strFault))
    {
        bReady = false;
    }
    // Judged before the log is opened, which would empty a file that the script names.
    const std::string strClash =
        FindClash(options, CScriptKeywords(loader.GetPlugin()), pScript.get());
    if (!strClash.empty())
    {
        return Report(EXIT_UNUSABLE, strClash);
    }
    if (!bReady && MayBeNamed(options))
    {
        if (pScript != nullptr) // the plug-in is what fails
        {
            log.ShowCollected();
        }
        return Report(EXIT_UNUSABLE, strFault + ", and " + options.strLog + " stays as it is");
    }
    if (!options.strLog.empty() && !log.Open(GetAbsolutePath(options.strLog).c_str()))
    {
        return Report(EXIT_UNUSABLE, options.strLog + ": --log cannot be written");
    }
    if (!bReady)
    {
        return Report(EXIT_UNUSABLE, strFault);
    }
    loader.Start();
    face.SetWorld(host.GetEngine().GetWorld());
    CScriptPlayer player(
        host, face.GetCursor(), CHeadlessFace::VIEW, loader.GetPlugin(), options.strScript);
    if (!player.Play(pScript.get(), strFault))
    {
        return Report(EXIT_FAILED, strFault);
    }
    if (player.GetDrags().HasLost())
    {
        return Report(EXIT_FAILED,
                      options.strScript + ": not enough memory for each stroke, see the log");
    }
    // Before the results: a log that is not whole is a failure, and then there is no terrain.
    if (!log.Flush())
    {
        return Report(EXIT_FAILED, options.strLog + ": --log cannot be written");
    }
    return WriteResults(options, host, player.GetDrags(), strFault) ? EXIT_PLAYED
                                                                    : Report(EXIT_FAILED, strFault);
}

} // namespace

int main(int nArguments, char** ppszArguments)
{
    GuardStandardStreams();
    DropWritesOnSignals();
    SReplayOptions options;
    std::string strFault;
    if (!options.Read(nArguments, ppszArguments, strFault))
    {
        return ReportWrongLine("tellur-replay", strFault);
    }
    if (options.eAnswer != EProgramAnswer::None)
    {
        return PrintAnswer(options.eAnswer, "tellur-replay", SReplayOptions::GetUsage());
    }
    SetRoots(options);
    if (options.bDeclarations)
    {
        return PrintDeclarations(options);
    }
    CReplayLog log;
    if (!options.strLog.empty())
    {
        log.Collect();
    }
    return Play(options, log);
}
