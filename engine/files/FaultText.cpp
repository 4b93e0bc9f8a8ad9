#include "engine/files/FaultText.h"

#include <cstring>

namespace fs
{

std::string GetFaultText(const std::string& strName, int iFault)
{
    const char* pszFault = ::strerrordesc_np(iFault);
    return strName + ": " + (pszFault != nullptr ? pszFault : "unknown fault");
}

} // namespace fs
