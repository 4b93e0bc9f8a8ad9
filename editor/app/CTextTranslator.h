#pragma once

#include "editor/core/CTextCatalogue.h"

#include <QTranslator>

#include <string>

// The language that the program shows: gives the catalogue to the editor's own texts (Words), and
// to what Qt says in buttons and dialogs of its own. One is made by the program, before its
// windows, and goes after them.
class CTextTranslator : public QTranslator
{
public:
    ~CTextTranslator() override;

    // strLanguage: as it was asked for; empty: that of the locale, where there is a file for it.
    // False, with one logged line, when there is none for what was asked for; English needs none.
    bool Read(const std::string& strLanguage);

    QString translate(const char* pszContext,
                      const char* pszEnglish,
                      const char* pszRemark,
                      int nCount) const override;

    bool isEmpty() const override { return m_Catalogue.GetCount() == 0; }

private:
    bool ReadFile(const std::string& strFile);

    CTextCatalogue m_Catalogue;
};
