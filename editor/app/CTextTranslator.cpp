#include "editor/app/CTextTranslator.h"

#include "editor/core/Words.h"
#include "host/FileSystem.h"

#include <QCoreApplication>
#include <QLocale>

#include <cstring>

CTextTranslator::~CTextTranslator()
{
    SetCatalogue(nullptr);
}

bool CTextTranslator::Read(const std::string& strLanguage)
{
    if (!strLanguage.empty())
    {
        const std::string strPlain = strLanguage.substr(0, strLanguage.find_first_of("_-"));
        std::string strFile = GetCatalogueFile(strLanguage);
        if (!fs::exists(strFile.c_str()) &&
            (strPlain == "en" || fs::exists(GetCatalogueFile(strPlain).c_str())))
        {
            strFile = GetCatalogueFile(strPlain);
        }
        return (strPlain == "en" && !fs::exists(strFile.c_str())) || ReadFile(strFile);
    }
    // "de_AT" has texts of its own, or those of "de".
    const QString strLocale = QLocale::system().name();
    for (const QString& strName : {strLocale, strLocale.section('_', 0, 0)})
    {
        const std::string strFile = GetCatalogueFile(strName.toStdString());
        if (!strFile.empty() && fs::exists(strFile.c_str()))
        {
            ReadFile(strFile); // nobody has asked for it: what is wrong with it is in the log
            break;
        }
    }
    return true;
}

bool CTextTranslator::ReadFile(const std::string& strFile)
{
    if (!m_Catalogue.Read(strFile))
    {
        return false;
    }
    SetCatalogue(&m_Catalogue);
    QCoreApplication::installTranslator(this);
    return true;
}

QString
CTextTranslator::translate(const char* pszContext, const char* pszEnglish, const char*, int) const
{
    // Keys are called as keyboards and the desktop do; "Shift" is something else in a menu.
    const bool bKey = std::strcmp(pszContext, "QShortcut") == 0;
    const char* pszFound = bKey ? nullptr : m_Catalogue.Find(pszEnglish);
    return pszFound != nullptr ? QString::fromUtf8(pszFound) : QString();
}
