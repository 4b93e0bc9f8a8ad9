#include "tools/height/SHeightOptions.h"

#include "engine/elevation/ElevationFormats.h"
#include "host/FileSystem.h"
#include "host/TerrainSize.h"
#include "tools/height/CValueReader.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>
#include <variant>

namespace
{

using EAction = SHeightOptions::EAction;

// Commands that know an option.
constexpr uint32_t CONVERT = 1;
constexpr uint32_t PICTURE = 2;
constexpr uint32_t INFO = 4;

std::vector<SOption> ListOptions(SHeightOptions& o)
{
    SImportOptions& in = o.import;
    return {
        {"--size", CONVERT, &in.uSize, TERRAIN_MIN_VERTICES, TERRAIN_MAX_VERTICES},
        {"--pixels", PICTURE, &o.uPixels, 2, TERRAIN_MAX_VERTICES},
        {"--eye", PICTURE, &o.eye},
        {"--target", PICTURE, &o.target},
        {"--columns", CONVERT | INFO, &in.uColumns, MIN_SAMPLES, MAX_SAMPLES},
        {"--rows", CONVERT | INFO, &in.uRows, MIN_SAMPLES, MAX_SAMPLES},
        {"--byte-order", CONVERT | INFO, &in.eByteOrder},
        {"--out-byte-order", CONVERT, &o.output.eByteOrder},
        {"--white", CONVERT, &in.dWhite},
        {"--unit", CONVERT, &in.dUnit},
        {"--base", CONVERT, SAnyNumber{&in.dBase}},
        {"--target", CONVERT, &o.strTarget},
        {"--tiles", CONVERT, &o.uTiles, 1, MOST_TILES},
        {"--level-unit", CONVERT, &o.levelUnit},
        {"--out-base", CONVERT, SAnyNumber{&o.output.dBase}},
        {"--out-bits", CONVERT, &o.output.uBits, 16, 32},
        {"--out-white", CONVERT, &o.output.dWhite},
        {"--out-unit", CONVERT, &o.output.dUnit},
        {"--max-height", CONVERT, &in.fMaxHeight},
        {"--rotate", CONVERT, &in.orientation.eTurn},
        {"--flip", CONVERT, &in.orientation.eFlip},
        {"--fit", CONVERT, &in.eFit},
        {"--crop-x", CONVERT, &in.cropX, 0, MAX_SAMPLES},
        {"--crop-z", CONVERT, &in.cropZ, 0, MAX_SAMPLES},
        {"--width", CONVERT, &in.fWidth},
        {"--depth", CONVERT, &in.fDepth},
        {"--spacing", CONVERT, &in.eSpacing},
        {"--latitude", CONVERT, &in.latitude},
        {"--spacing-x", CONVERT, &in.fSpacingX},
        {"--spacing-z", CONVERT, &in.fSpacingZ},
    };
}

uint32_t GetCommand(EAction eAction)
{
    return eAction == EAction::Convert ? CONVERT : eAction == EAction::Picture ? PICTURE : INFO;
}

// Empty when the command knows an option of that name and the value is one of its kind.
std::string ReadOption(SHeightOptions& options,
                       const std::vector<SOption>& known,
                       const char* pszName,
                       const char* pszValue)
{
    const SOption* pOption = nullptr;
    for (const SOption& option : known)
    {
        const bool bKnown = (option.uCommands & GetCommand(options.eAction)) != 0;
        pOption = bKnown && !std::strcmp(option.pszName, pszName) ? &option : pOption;
    }
    if (pOption == nullptr)
    {
        return std::string("unknown option ") + pszName;
    }
    options.bFitGiven =
        options.bFitGiven || !std::strcmp(pszName, "--fit") || !std::strcmp(pszName, "--size");
    const std::string strNeed = std::visit(CValueReader(*pOption, pszValue), pOption->target);
    return strNeed.empty() ? "" : std::string(pszName) + " needs " + strNeed;
}

// Takes the command off the operands.
std::string ReadCommand(SHeightOptions& options)
{
    const std::string strAction = options.inputs.empty() ? "" : options.inputs.front();
    if (!ReadName<EAction>(strAction.c_str(),
                           options.eAction,
                           {{"convert", EAction::Convert},
                            {"picture", EAction::Picture},
                            {"info", EAction::Info}}))
    {
        return strAction.empty() ? "no command given" : "unknown command " + strAction;
    }
    options.inputs.erase(options.inputs.begin());
    return "";
}

// What is wrong with the camera of a picture; empty for a good one and for none.
std::string FindCameraFault(const SHeightOptions& options)
{
    if (options.eye.has_value() != options.target.has_value())
    {
        return "--eye and --target need each other";
    }
    if (!options.eye)
    {
        return "";
    }
    constexpr uint32_t MOST_PIXELS = 8192;
    const float fAside = std::max(std::fabs(options.eye->x - options.target->x),
                                  std::fabs(options.eye->z - options.target->z));
    const float fAbove = std::fabs(options.eye->y - options.target->y);
    // A camera finds its right from its direction and the vertical, which must not be the same
    // line.
    if (fAside < std::max(1e-3F, 1e-3F * fAbove))
    {
        return "--eye must not be straight above or below --target";
    }
    return options.uPixels > MOST_PIXELS
               ? "--pixels of a camera are at most " + std::to_string(MOST_PIXELS)
               : "";
}

// Which options cannot stand together; empty when all can.
std::string FindContradiction(const SHeightOptions& options)
{
    const SImportOptions& in = options.import;
    const SExportOptions& out = options.output;
    const bool bOutput = out.dWhite > 0.0 || out.dUnit > 0.0 || out.dBase != 0.0 || out.uBits > 0 ||
                         out.eByteOrder != EByteOrder::None;
    if ((options.uTiles > 0 || options.levelUnit) && options.strTarget.empty())
    {
        return std::string(options.uTiles > 0 ? "--tiles" : "--level-unit") + " needs --target";
    }

    const struct
    {
        bool bBoth;
        const char* pszFirst;
        const char* pszSecond;
    } aPairs[] = {
        {in.fWidth > 0.0F && in.fSpacingX > 0.0F, "--width", "--spacing-x"},
        {in.fDepth > 0.0F && in.fSpacingZ > 0.0F, "--depth", "--spacing-z"},
        {in.dWhite > 0.0 && in.dUnit > 0.0, "--white", "--unit"},
        {out.dWhite > 0.0 && out.dUnit > 0.0, "--out-white", "--out-unit"},
        {!options.strTarget.empty() && bOutput, "--target", "an option --out-..."},
    };

    for (const auto& [bBoth, pszFirst, pszSecond] : aPairs)
    {
        if (bBoth)
        {
            return std::string(pszFirst) + " and " + pszSecond + " say the same, give one of them";
        }
    }
    return (in.cropX || in.cropZ) && in.eFit != EFit::Crop ? "--crop-x and --crop-z need --fit crop"
                                                           : FindCameraFault(options);
}

std::string FindMissing(SHeightOptions& options)
{
    const bool bConvert = options.eAction == EAction::Convert;
    if (options.eAction == EAction::Info)
    {
        return options.inputs.empty() ? "info needs files" : "";
    }
    if (options.inputs.size() < 2 || (bConvert && options.inputs.size() > 2))
    {
        return bConvert ? "convert needs one input and one output"
                        : "picture needs inputs and an output";
    }
    options.strOutput = options.inputs.back();
    options.inputs.pop_back();
    for (const std::string& strInput : options.inputs)
    {
        if (fs::same_file(strInput.c_str(), options.strOutput.c_str()))
        {
            return options.strOutput + ": input and output are the same file";
        }
    }
    if (bConvert && !IsWritten(FindFormatByName(options.strOutput.c_str())))
    {
        return "the extension of " + options.strOutput + " names no format (" +
               ListElevationFormats(true) + ")";
    }
    return FindContradiction(options);
}

} // namespace

bool SHeightOptions::Read(int nArguments, const char* const* ppszArguments, std::string& strFault)
{
    // Values are kept as texts first, because the command, which says what options there are, may
    // stand behind them. Of two options of one name the first takes the text.
    const std::vector<SOption> options = ListOptions(*this);
    std::vector<std::string> values(options.size()); // empty for an option left out
    std::vector<SProgramOption> known(options.size());
    for (size_t i = 0; i < options.size(); ++i)
    {
        known[i] = {options[i].pszName, &values[i]};
    }
    SCommandLine line;
    if (!line.Read(nArguments, ppszArguments, known, strFault))
    {
        return false;
    }
    eAnswer = line.eAnswer;
    if (eAnswer != EProgramAnswer::None)
    {
        return true;
    }
    inputs = line.operands;
    strFault = ReadCommand(*this);
    for (size_t i = 0; i < options.size() && strFault.empty(); ++i)
    {
        strFault = values[i].empty()
                       ? ""
                       : ReadOption(*this, options, options[i].pszName, values[i].c_str());
    }
    if (strFault.empty())
    {
        strFault = FindMissing(*this);
    }
    return strFault.empty();
}
