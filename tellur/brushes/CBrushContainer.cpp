#include "tellur/brushes/CBrushContainer.h"

#include "host/BrushBlock.h"
#include "host/FileSystem.h"
#include "host/IPluginBrushes.h"
#include "host/Log.h"
#include "parser/KeywordValues.h"
#include "parser/TCParseFile.h"
#include "tellur/brushes/BrushFaults.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/stroke/ITellurFunction.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace
{

constexpr int BRUSH_INDENT = 2;

std::string GetNameOf(const CTellurBrush& brush)
{
    return brush.GetName() != nullptr ? brush.GetName() : "";
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Length of a name without its trailing decimal digits.
size_t GetBaseLength(const std::string& strName)
{
    size_t nLength = strName.size();
    while (nLength > 0 && IsDigit(strName[nLength - 1]))
    {
        --nLength;
    }
    return nLength;
}

// The trailing number; long ones saturate.
int GetTrailingNumber(const std::string& strName, size_t nBaseLength)
{
    constexpr int64_t LIMIT = 999'999'999;
    int64_t iNumber = 0;
    for (size_t i = nBaseLength; i < strName.size(); ++i)
    {
        iNumber = std::min(iNumber * 10 + (strName[i] - '0'), LIMIT);
    }
    return static_cast<int>(iNumber);
}

} // namespace

CBrushContainer::CBrushContainer() = default;
CBrushContainer::~CBrushContainer() = default;

bool CBrushContainer::SavePredefinedBrushesToFile(const char* pszPath)
{
    if (pszPath == nullptr || *pszPath == '\0')
    {
        CrashLog("[CBrushContainer::SavePredefinedBrushesToFile] no file path\n");
        return false;
    }
    fs::ifile file;
    if (!file.open(pszPath, fs::mode_write))
    {
        CrashLog("[CBrushContainer::SavePredefinedBrushesToFile] %s\n",
                 file.last_error().get_error_text());
        return false;
    }
    file.printf("!brush()\n%s\n", GetBrushDeclarations(EBrushBlock::Library).c_str());
    for (const auto& pBrush : m_Predefined)
    {
        file << "brush()\n{\n";
        if (!pBrush->Save(file, BRUSH_INDENT))
        {
            CrashLog("[CBrushContainer::SavePredefinedBrushesToFile] failed to save brush %s\n",
                     GetNameOf(*pBrush).c_str());
            file.discard(); // a library without its last brushes must not replace a whole one
            return false;
        }
        file << "}\n\n";
    }
    file << "\n";
    if (!file.close())
    {
        CrashLog("[CBrushContainer::SavePredefinedBrushesToFile] %s\n",
                 file.last_error().get_error_text());
        return false;
    }
    return true;
}

bool CBrushContainer::LoadPredefinedBrushes(const char* pszPath, std::vector<SBrushFault>* pFaults)
{
    std::vector<SBrushFault> faults;
    ETCParseStatus eStatus = tcparse_unreadable;
    const uint64_t nLoggedBefore = GetCrashLogCount();
    const std::unique_ptr<CTCPARSE_KEYWORD> pTree(
        TCParseFile(pszPath, nullptr, nullptr, nullptr, nullptr, nullptr, &eStatus));
    // A file that is not there is no fault: nobody need have a library.
    if (eStatus == tcparse_failed || (eStatus == tcparse_unreadable && fs::exists(pszPath)))
    {
        faults.push_back({"", 0, "cannot be read, none of its brushes is there", true});
    }
    else if (GetCrashLogCount() != nLoggedBefore)
    {
        faults.push_back({"", 0, "not every value is as written, the parser says where"});
    }
    for (const CTCPARSE_KEYWORD* pKey = pTree.get(); pKey != nullptr; pKey = pKey->next)
    {
        if (!IsKeyword(pKey, "brush"))
        {
            continue;
        }
        auto pBrush = std::make_unique<CTellurBrush>();
        const uint64_t nLogged = GetCrashLogCount();
        const size_t nFaults = faults.size();
        const bool bLoaded = pBrush->Load(pKey->block);
        FindBrushFaults(*pKey, *pBrush, bLoaded, faults);
        // The log knows of something that no fault stands for.
        if (GetCrashLogCount() != nLogged && faults.size() == nFaults)
        {
            faults.push_back({GetNameOf(*pBrush), pKey->line, "not all of it could be used"});
        }
        if (bLoaded)
        {
            if (pBrush->GetName() == nullptr)
            {
                GetNextBrushName(pBrush.get());
            }
            m_Predefined.push_back(std::move(pBrush));
        }
    }
    NoteChange(EChange::Load);
    if (pFaults != nullptr)
    {
        *pFaults = std::move(faults);
    }
    return eStatus != tcparse_unreadable;
}

void CBrushContainer::AddBrush(const CTellurBrush* pBrush, bool bRename)
{
    if (pBrush == nullptr)
    {
        return;
    }
    std::unique_ptr<CTellurBrush> pClone(pBrush->Clone());
    if (bRename)
    {
        GetNextBrushName(pClone.get());
    }
    m_Predefined.push_back(std::move(pClone));
    NoteChange(EChange::Edit);
}

void CBrushContainer::GetNextBrushName(CTellurBrush* pBrush)
{
    if (pBrush == nullptr)
    {
        CrashLog("[CBrushContainer::GetNextBrushName] no brush\n");
        return;
    }
    std::string strBase = "Brush";
    if (pBrush->GetName() != nullptr)
    {
        strBase = pBrush->GetName();
        strBase.resize(GetBaseLength(strBase));
    }
    // The brush gets one more than the highest number of those whose names begin alike, with three
    // digits at least.
    int iHighest = -1;
    for (const auto& pOther : m_Predefined)
    {
        if (pOther.get() == pBrush || pOther->GetName() == nullptr)
        {
            continue;
        }
        const std::string strName = pOther->GetName();
        const size_t nBaseLength = GetBaseLength(strName);
        if (strName.starts_with(strBase) && nBaseLength < strName.size())
        {
            iHighest = std::max(iHighest, GetTrailingNumber(strName, nBaseLength));
        }
    }
    std::string strNumber = std::to_string(iHighest + 1);
    strNumber.insert(0, strNumber.size() < 3 ? 3 - strNumber.size() : 0, '0');
    pBrush->SetName((strBase + strNumber).c_str());
}

CTellurBrush* CBrushContainer::CreateBrush(const char* pszFunctionName,
                                           ITellurFunction* pFunction,
                                           const char* pszImagePath)
{
    if (pszFunctionName == nullptr || pFunction == nullptr || pszImagePath == nullptr)
    {
        CrashLog("[CBrushContainer::CreateBrush] invalid arguments\n");
        return nullptr;
    }
    if (CTellurBrush* pExisting = FindBrush(pszFunctionName))
    {
        return pExisting;
    }
    auto pBrush = std::make_unique<CTellurBrush>();
    pBrush->SetName(pszFunctionName);
    pBrush->LoadBitmap(pszImagePath);
    pBrush->SetFunction(pFunction);
    m_Tools.push_back(std::move(pBrush));
    return m_Tools.back().get();
}

CTellurBrush* CBrushContainer::FindBrush(const char* pszFunctionName) const
{
    if (pszFunctionName == nullptr)
    {
        return nullptr;
    }
    for (const auto& pBrush : m_Tools)
    {
        const char* pszName = pBrush->GetFunctionName();
        if (pszName != nullptr && std::strcmp(pszName, pszFunctionName) == 0)
        {
            return pBrush.get();
        }
    }
    return nullptr;
}

bool CBrushContainer::SetBrush(CTellurBrush* pBrush, std::unique_ptr<CTellurBrush>* pReplaced)
{
    if (pBrush == nullptr)
    {
        // Without a line feed, as it always was.
        CrashLog("[CBrushContainer::SetBrush] null ptr passed to function");
        return false;
    }
    const char* pszName = pBrush->GetFunctionName();
    const CTellurBrush* pOld = FindBrush(pszName);
    if (pOld == nullptr)
    {
        CrashLog("[CBrushContainer::SetBrush] cannot find brush %s\n",
                 pszName != nullptr ? pszName : "");
        return false;
    }
    if (pOld == pBrush) // one that is there already stays
    {
        return true;
    }
    const auto old = std::find_if(
        m_Tools.begin(), m_Tools.end(), [pOld](const auto& pTool) { return pTool.get() == pOld; });
    if (pReplaced != nullptr)
    {
        *pReplaced = std::move(*old);
    }
    m_Tools.erase(old);
    m_Tools.emplace_back(pBrush);
    return true;
}

void CBrushContainer::InsertPredefined(size_t iPlace, std::unique_ptr<CTellurBrush> pBrush)
{
    m_Predefined.insert(m_Predefined.begin() + static_cast<ptrdiff_t>(iPlace), std::move(pBrush));
    NoteChange(EChange::Edit);
}

std::unique_ptr<CTellurBrush> CBrushContainer::TakePredefined(size_t iPlace)
{
    const auto place = m_Predefined.begin() + static_cast<ptrdiff_t>(iPlace);
    std::unique_ptr<CTellurBrush> pBrush = std::move(*place);
    m_Predefined.erase(place);
    NoteChange(EChange::Edit);
    return pBrush;
}

void CBrushContainer::RenamePredefined(size_t iPlace, const char* pszName)
{
    m_Predefined[iPlace]->SetName(pszName);
    NoteChange(EChange::Edit);
}

void CBrushContainer::NoteChange(EChange eChange)
{
    const bool bSaved = !IsUnsaved();
    m_State = ++m_States;
    if (bSaved && eChange == EChange::Load)
    {
        m_SavedState = m_State;
    }
}

bool CBrushContainer::MaySave() const
{
    return m_pSaveGuard == nullptr || m_pSaveGuard->MayReplaceBrushFile();
}

void CBrushContainer::SetSaved()
{
    m_SavedState = m_State;
    if (m_pSaveGuard != nullptr)
    {
        m_pSaveGuard->OnBrushFileSaved();
    }
}

void CBrushContainer::ClearPredefined()
{
    m_Predefined.clear();
    NoteChange(EChange::Load);
}

void CBrushContainer::Clear()
{
    ClearPredefined();
    m_Tools.clear();
}
