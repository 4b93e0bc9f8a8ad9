#pragma once

#include <string>

namespace fs
{

// One line without a line feed that names the file and what the system says of the fault.
std::string GetFaultText(const std::string& strName, int iFault);

} // namespace fs
