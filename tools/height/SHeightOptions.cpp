#include "tools/height/SHeightOptions.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace
{

using EAction = SHeightOptions::EAction;

struct SLengthOption
{
    const char* pszName;
    float SHeightOptions::*pValue;
};

constexpr SLengthOption LENGTH_OPTIONS[] = {
    {"--width", &SHeightOptions::fWidth},
    {"--depth", &SHeightOptions::fDepth},
    {"--spacing-x", &SHeightOptions::fSpacingX},
    {"--spacing-z", &SHeightOptions::fSpacingZ},
    {"--max-height", &SHeightOptions::fMaxHeight},
};

struct SCountOption
{
    const char* pszName;
    EAction eAction;
    uint32_t SHeightOptions::*pValue;
};

constexpr SCountOption COUNT_OPTIONS[] = {
    {"--size", EAction::Convert, &SHeightOptions::uSize},
    {"--pixels", EAction::Picture, &SHeightOptions::uPixels},
};

constexpr uint32_t MAX_COUNT = 16385;

template <typename TValue> bool ReadWhole(const char* pszText, TValue& value)
{
    const char* pEnd = pszText + std::strlen(pszText);
    const auto [pRead, error] = std::from_chars(pszText, pEnd, value);
    return error == std::errc() && pRead == pEnd;
}

const SLengthOption* FindLength(EAction eAction, const char* pszName)
{
    const auto* pFound = std::find_if(std::begin(LENGTH_OPTIONS),
                                      std::end(LENGTH_OPTIONS),
                                      [pszName](const SLengthOption& o)
                                      { return !std::strcmp(o.pszName, pszName); });
    return eAction == EAction::Convert && pFound != std::end(LENGTH_OPTIONS) ? pFound : nullptr;
}

const SCountOption* FindCount(EAction eAction, const char* pszName)
{
    const auto* pFound =
        std::find_if(std::begin(COUNT_OPTIONS),
                     std::end(COUNT_OPTIONS),
                     [=](const SCountOption& o)
                     { return o.eAction == eAction && std::strcmp(o.pszName, pszName) == 0; });
    return pFound != std::end(COUNT_OPTIONS) ? pFound : nullptr;
}

// pszValue: null when the line ends before it.
bool ReadOption(SHeightOptions& options,
                const char* pszName,
                const char* pszValue,
                std::string& strFault)
{
    const SLengthOption* pLength = FindLength(options.eAction, pszName);
    const SCountOption* pCount = FindCount(options.eAction, pszName);
    if (pLength == nullptr && pCount == nullptr)
    {
        strFault = std::string("unknown option ") + pszName;
        return false;
    }
    if (pszValue == nullptr)
    {
        strFault = std::string(pszName) + " needs a value";
        return false;
    }
    if (pLength != nullptr)
    {
        float& fValue = options.*pLength->pValue;
        if (!ReadWhole(pszValue, fValue) || !std::isfinite(fValue) || !(fValue > 0.0F))
        {
            strFault = std::string(pszName) + " needs a number above 0";
        }
        return strFault.empty();
    }
    uint32_t& uValue = options.*pCount->pValue;
    if (!ReadWhole(pszValue, uValue) || uValue < 2 || uValue > MAX_COUNT)
    {
        strFault = std::string(pszName) + " needs a whole number from 2 to 16385";
    }
    return strFault.empty();
}

std::string FindMissing(SHeightOptions& options)
{
    if (options.inputs.size() < 2 ||
        (options.eAction == EAction::Convert && options.inputs.size() > 2))
    {
        return options.eAction == EAction::Convert ? "convert needs one input and one output"
                                                   : "picture needs inputs and an output";
    }
    options.strOutput = options.inputs.back();
    options.inputs.pop_back();
    if (options.fWidth > 0.0F && options.fSpacingX > 0.0F)
    {
        return "--width and --spacing-x say the same, give one of them";
    }
    if (options.fDepth > 0.0F && options.fSpacingZ > 0.0F)
    {
        return "--depth and --spacing-z say the same, give one of them";
    }
    return "";
}

} // namespace

bool SHeightOptions::Read(int nArguments, const char* const* ppszArguments, std::string& strFault)
{
    const bool bHelp = std::any_of(ppszArguments + std::min(nArguments, 1),
                                   ppszArguments + nArguments,
                                   [](const char* p) { return std::strcmp(p, "--help") == 0; });
    if (bHelp)
    {
        eAction = EAction::ShowHelp;
        return true;
    }
    const std::string strAction = nArguments > 1 ? ppszArguments[1] : "";
    if (strAction != "convert" && strAction != "picture")
    {
        strFault = strAction.empty() ? "no command given" : "unknown command " + strAction;
        return false;
    }
    eAction = strAction == "convert" ? EAction::Convert : EAction::Picture;
    for (int i = 2; i < nArguments; ++i)
    {
        if (std::strncmp(ppszArguments[i], "--", 2) != 0)
        {
            inputs.emplace_back(ppszArguments[i]);
            continue;
        }
        const char* pszValue = i + 1 < nArguments ? ppszArguments[i + 1] : nullptr;
        if (!ReadOption(*this, ppszArguments[i], pszValue, strFault))
        {
            return false;
        }
        ++i;
    }
    strFault = FindMissing(*this);
    return strFault.empty();
}

const char* SHeightOptions::GetUsage()
{
    return "usage: tellur-height convert IN OUT.height [options]\n"
           "       tellur-height picture IN.height [IN.height ...] OUT.png [--pixels N]\n"
           "       tellur-height --help\n"
           "\n"
           "convert makes a height map of a .npy array (int16, uint16, float32, float64) or of a\n"
           ".hgt tile. Samples are interpolated; corner samples become corner vertices.\n"
           "\n"
           "  --size N          vertices per side, 2 to 16385 (default: the supported size 33,\n"
           "                    65 ... 16385 nearest to the longer side of the samples)\n"
           "  --spacing-x U     terrain units between samples along x (default: 1)\n"
           "  --spacing-z U     the same along z\n"
           "  --width U         terrain units along x, instead of --spacing-x\n"
           "  --depth U         terrain units along z, instead of --spacing-z\n"
           "  --max-height H    the terrain's height limit (default: the next of 1, 2, 5, 10 ...\n"
           "                    above the highest sample)\n"
           "\n"
           "picture draws height maps side by side as shaded relief, all in the height colours\n"
           "of the first, as PNG, TGA, BMP, JPEG or DDS by the name of the output.\n"
           "\n"
           "  --pixels N        pixels of each picture's longer side (default: one a vertex)\n"
           "\n"
           "Exit code: 0 done; 1 a file cannot be read or written; 2 usage.\n";
}
