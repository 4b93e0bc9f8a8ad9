#pragma once

// clang-format off
#include <cstdio> // jpeglib.h uses FILE and includes nothing
#include <jpeglib.h>
// clang-format on

#include <csetjmp>
#include <string>

// How libjpeg reports here: a fault, and a warning that tells of damage, jump back to whoever set
// "jump", with a text. So the step that calls it keeps nothing with a destructor on its stack.
struct SJpegErrors
{
    SJpegErrors();

    // Keeps the fault and jumps. pInfo: what libjpeg works on, with this manager.
    [[noreturn]] static void Fail(j_common_ptr pInfo, bool bIsDamage, const char* pszText);

    void SetFault(bool bIsDamage, const char* pszText);

    bool HasCode(int iCode) const { return manager.msg_code == iCode; }

    std::string GetFault() const;

    jpeg_error_mgr manager = {}; // first: a pointer to it is one to the whole
    jmp_buf jump = {};
    bool bDamage = false; // else nothing that can be read
    char szText[JMSG_LENGTH_MAX] = {};
};
