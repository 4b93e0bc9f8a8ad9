// The usage text; what it says of formats is made of their tables.

#include "engine/elevation/ElevationFormats.h"
#include "engine/imaging/CodecTable.h"
#include "tools/height/SHeightOptions.h"

#include <sstream>

namespace
{

constexpr char COMMANDS[] =
    "usage: tellur-height info FILE ... [--columns N] [--rows N] [--byte-order O]\n"
    "       tellur-height convert IN OUT [options]\n"
    "       tellur-height picture IN.height [IN.height ...] OUT.png [--pixels N]\n"
    "                     [--eye X,Y,Z --target X,Y,Z]\n"
    "       tellur-height --help | --version\n"
    "\n";

constexpr char CONVERT_OPTIONS[] =
    "\n"
    "  --size N          vertices per side, 2 to 16385 (default: the supported size 33,\n"
    "                    65 ... 16385 nearest to the longer side of the samples)\n"
    "  --fit resample|crop\n"
    "                    interpolate the whole file (default), or take a window of it\n"
    "                    (default --size: the largest supported one that fits)\n"
    "  --crop-x C, --crop-z R\n"
    "                    first column and row of the window (default: in the middle)\n"
    "  --rotate 90|180|270\n"
    "                    turn the samples to the right, seen from above\n"
    "  --flip x|z|xz     then mirror them along these axes; what follows counts in what\n"
    "                    is there now\n"
    "  --white H         height of full white in PNG, .r16, .r32 and .exr (there of 1.0)\n"
    "  --unit U          terrain units of one step or unit of the file (default: 1; PNG\n"
    "                    and .r16: by the lowest and highest sample of the file)\n"
    "  --base H          height of 0 in the file (default: 0)\n"
    "  --byte-order O    little (default) or big, of raw files\n"
    "  --columns N, --rows N\n"
    "                    shape of a raw file (default: a square)\n"
    "  --spacing-x U     terrain units between samples along x (default: the file's own,\n"
    "                    of degrees in metres at its latitude; else 1)\n"
    "  --spacing-z U     the same along z\n"
    "  --spacing auto    refuse a file in degrees whose latitude neither tags nor name say\n"
    "  --latitude D      of the middle of a file in degrees\n"
    "  --width U         terrain units along x, instead of --spacing-x\n"
    "  --depth U         terrain units along z, instead of --spacing-z\n"
    "  --max-height H    the terrain's height limit (default: that of the file, full "
    "white,\n"
    "                    1000 for a scale by range, or the next of 1, 2, 5, 10 ... above\n"
    "                    the highest sample)\n"
    "  --out-white H, --out-unit U, --out-base H, --out-byte-order O\n"
    "                    the same of OUT; those without out- are of IN, or of OUT when IN\n"
    "                    is a .height file (default: full white is the maximum height)\n"
    "  --out-bits 16|32  of a sample of an .exr file (default: 32)\n"
    "  --target NAME     write what this row of the table of File > Export asks for, and\n"
    "                    OUT.txt with what to type there; a wrong name lists the rows\n"
    "  --tiles N         as N x N files NAME_x0_y0 ... that share their edges\n"
    "  --level-unit cm|m what one terrain unit is, for a target that counts metres\n"
    "                    (default: by the place on a map, else cm)\n"
    "\n";

constexpr char PICTURE_OPTIONS[] =
    "\n"
    "  --pixels N        pixels of each picture's longer side (default: one a vertex,\n"
    "                    1280 for a camera)\n"
    "  --eye X,Y,Z, --target X,Y,Z\n"
    "                    the view of a camera instead, 16:9: where it is and what is in\n"
    "                    the middle, in terrain units; y is up\n"
    "\n"
    "  -h, --help        show this text\n"
    "  --version         show the version\n"
    "\n"
    "Exit code: 0 done; 1 a file cannot be read or written; 2 usage.\n";

// ".height (height file), .png (grey PNG)", those that are only read marked so.
std::string ListFormats()
{
    std::string strList;
    for (const SElevationFormat& format : GetElevationFormats())
    {
        strList += (strList.empty() ? "." : ", .") + std::string(format.extensions[0]) + " (" +
                   format.pszName + (IsWritten(&format) ? ")" : ", read only)");
    }
    return strList;
}

// Words in lines that fit a terminal.
std::string WrapLines(const std::string& strText)
{
    constexpr size_t COLUMNS = 84;
    std::istringstream words(strText);
    std::string strLines;
    size_t nColumn = 0;
    for (std::string strWord; words >> strWord;)
    {
        const bool bNewLine = nColumn + 1 + strWord.size() > COLUMNS;
        strLines += nColumn == 0 ? "" : bNewLine ? "\n" : " ";
        nColumn = nColumn == 0 || bNewLine ? strWord.size() : nColumn + 1 + strWord.size();
        strLines += strWord;
    }
    return strLines + "\n";
}

} // namespace

const char* SHeightOptions::GetUsage()
{
    static const std::string s_Usage =
        COMMANDS +
        WrapLines("info tells what a height map is; convert makes another of it. Formats both "
                  "ways, by content or extension: " +
                  ListFormats() +
                  ". To a .height file the samples are fitted to a square; between other files "
                  "the grid stays, unless --size or --fit is given.") +
        CONVERT_OPTIONS +
        WrapLines("picture draws height maps side by side as shaded relief, all in the height "
                  "colours of the first, as " +
                  ListImageNames(true) + " by the name of the output.") +
        PICTURE_OPTIONS;
    return s_Usage.c_str();
}
