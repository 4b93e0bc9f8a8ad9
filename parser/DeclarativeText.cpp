#include "parser/DeclarativeText.h"

#include "host/FileSystem.h"
#include "host/Log.h"
#include "parser/CTCParseNodes.h"

#include <charconv>
#include <cmath>
#include <filesystem>
#include <iterator>
#include <system_error>

std::string QuoteText(const std::string& strText)
{
    std::string strQuoted = "\"";
    for (const char c : strText)
    {
        strQuoted += c == '"' || c == '\\' ? "\\" : "";
        strQuoted += c;
    }
    return strQuoted + "\"";
}

std::string MakeExactNumber(float fValue)
{
    // A float without an exponent takes less than 60 characters.
    char szText[64];
    const auto end = std::to_chars(std::begin(szText),
                                   std::end(szText),
                                   std::isfinite(fValue) ? fValue : 0.0F,
                                   std::chars_format::fixed);
    const std::string strText(szText, end.ptr);
    return strText.find('.') == std::string::npos ? strText + ".0" : strText;
}

std::string MakeValueText(const CTCPARSE_PARAM& param)
{
    const auto join = [](std::initializer_list<float> values)
    {
        std::string strText;
        for (const float fValue : values)
        {
            strText += (strText.empty() ? "[" : ", ") + MakeExactNumber(fValue);
        }
        return strText + "]";
    };
    switch (param.type)
    {
    case tcparse_int:
        return std::to_string(static_cast<const CTCPARSE_INT&>(param).value);
    case tcparse_float:
        return MakeExactNumber(static_cast<const CTCPARSE_FLOAT&>(param).value);
    case tcparse_string:
        return QuoteText(static_cast<const CTCPARSE_STRING&>(param).value);
    case tcparse_vec3:
    {
        const auto& vec = static_cast<const CTCPARSE_VEC3&>(param);
        return join({vec.x, vec.y, vec.z});
    }
    default:
    {
        const auto& vec = static_cast<const CTCPARSE_VEC4&>(param);
        return join({vec.x, vec.y, vec.z, vec.w});
    }
    }
}

bool WriteTextFile(const char* pszOperation, const std::string& strPath, const std::string& strText)
{
    std::error_code error; // when there is no folder, opening says so
    std::filesystem::create_directories(std::filesystem::path(strPath).parent_path(), error);
    fs::ifile file;
    const bool bDone = file.open(strPath.c_str(), fs::mode_write) &&
                       file.write(strText.data(), strText.size()) == strText.size() && file.close();
    if (!bDone)
    {
        CrashLog("[%s] %s\n", pszOperation, file.last_error().get_error_text());
    }
    return bDone;
}
