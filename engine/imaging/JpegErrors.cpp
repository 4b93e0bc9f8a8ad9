#include "engine/imaging/JpegErrors.h"

#include <jerror.h>

namespace
{

SJpegErrors& GetErrors(j_common_ptr pInfo)
{
    return *reinterpret_cast<SJpegErrors*>(pInfo->err);
}

[[noreturn]] void OnError(j_common_ptr pInfo)
{
    char szText[JMSG_LENGTH_MAX];
    pInfo->err->format_message(pInfo, szText);
    SJpegErrors::Fail(pInfo, false, szText);
}

// Remarks on numbers in the file, whose pixels are whole for all that.
bool IsRemark(int iCode)
{
    return iCode == JWRN_ADOBE_XFORM || iCode == JWRN_JFIF_MAJOR || iCode == JWRN_NOT_SEQUENTIAL;
}

// iLevel: -1 for a warning, traces above.
void OnMessage(j_common_ptr pInfo, int iLevel)
{
    if (iLevel >= 0 || IsRemark(pInfo->err->msg_code))
    {
        return;
    }
    char szText[JMSG_LENGTH_MAX];
    pInfo->err->format_message(pInfo, szText);
    SJpegErrors::Fail(pInfo, true, szText);
}

} // namespace

SJpegErrors::SJpegErrors()
{
    jpeg_std_error(&manager);
    manager.error_exit = OnError;
    manager.emit_message = OnMessage;
}

void SJpegErrors::Fail(j_common_ptr pInfo, bool bIsDamage, const char* pszText)
{
    SJpegErrors& errors = GetErrors(pInfo);
    errors.SetFault(bIsDamage, pszText);
    std::longjmp(errors.jump, 1);
}

void SJpegErrors::SetFault(bool bIsDamage, const char* pszText)
{
    bDamage = bIsDamage;
    std::snprintf(szText, sizeof(szText), "%s", pszText);
}

std::string SJpegErrors::GetFault() const
{
    return (bDamage ? "damaged JPEG file: " : "unreadable JPEG file: ") + std::string(szText);
}
