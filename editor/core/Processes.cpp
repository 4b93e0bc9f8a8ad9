#include "editor/core/Processes.h"

#include <fstream>
#include <iterator>

std::string GetProcessStart(int iProcess)
{
    constexpr int FIELDS_TO_START = 19; // of /proc/PID/stat, between the state and the start
    constexpr char ENDED[] = "ZXx";
    std::ifstream file("/proc/" + std::to_string(iProcess) + "/stat");
    const std::string strText{std::istreambuf_iterator<char>(file),
                              std::istreambuf_iterator<char>()};
    size_t iPlace = strText.rfind(')'); // the name before it may hold anything
    if (iPlace == std::string::npos || strText.find_first_of(ENDED, iPlace) == iPlace + 2)
    {
        return {};
    }
    ++iPlace;
    for (int i = 0; i < FIELDS_TO_START && iPlace != std::string::npos; ++i)
    {
        iPlace = strText.find(' ', iPlace + 1);
    }
    return iPlace != std::string::npos
               ? strText.substr(iPlace + 1, strText.find(' ', iPlace + 1) - iPlace - 1)
               : "";
}
