#include "parser/CTCParse.h"

#include "host/FileSystem.h"

#include <chrono>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

// Behind the text: the reader of names takes a whole buffer's length at a time.
static constexpr size_t TEXT_PADDING = CTCPARSE_KEYWORD::NAME_BYTES;

static double g_fTotalSeconds = 0.0;

CTCParse::CTCParse(const char* pszPath, bool bDebug)
    : m_bDebug(bDebug)
    , m_strFileName(pszPath)
{
    m_bLoaded = Load();
    if (!m_bLoaded)
    {
        m_Text = std::make_unique<char[]>(TEXT_PADDING);
        m_pEnd = m_Text.get();
    }
    m_pCursor = m_Text.get();
    m_pCounted = m_pCursor;

    m_strDirectory = fs::root_path(pszPath);
    const size_t nSeparator = m_strDirectory.find_last_of("/\\");
    m_strDirectory.resize(nSeparator != std::string::npos ? nSeparator + 1 : 0);
}

CTCParse::~CTCParse() = default;

bool CTCParse::Load()
{
    fs::file file;
    if (!file.open(m_strFileName.c_str(), fs::mode_read))
    {
        return false;
    }
    const uint64_t nLength = file.length();
    if (nLength > SIZE_MAX / 2)
    {
        return false;
    }
    m_Text.reset(new (std::nothrow) char[nLength + TEXT_PADDING]);
    if (m_Text == nullptr || file.read(m_Text.get(), nLength) != nLength)
    {
        return false;
    }
    m_pEnd = m_Text.get() + nLength;
    memset(m_Text.get() + nLength, 0, TEXT_PADDING);
    file.close();
    return true;
}

CTCPARSE_KEYWORD* CTCParse::Parse(int32_t* pError)
{
    const auto start = std::chrono::steady_clock::now();
    SVocabulary vocabulary;
    *pError = 0;
    std::unique_ptr<CTCPARSE_KEYWORD> pNodes(ReadBlock(vocabulary, pError));
    if (m_pOutline != nullptr)
    {
        m_pOutline->strText.assign<const char*>(m_Text.get(), m_pEnd);
        m_pOutline->declarations = std::move(vocabulary.declarations);
    }
    const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start;
    g_fTotalSeconds += spent.count();
    return pNodes.release();
}

double CTCParse::GetTotalSeconds()
{
    return g_fTotalSeconds;
}
