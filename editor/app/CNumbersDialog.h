#pragma once

#include <QDialog>

#include <vector>

class CNumberBox;

// One number that a person is asked for; its texts in English, the dialog asks Words.
struct SNumberRow
{
    const char* pszLabel = "";
    const char* pszUnit = ""; // behind the number
    int iDecimals = 0;
    double fMost = 0.0; // 0 is the least
    double fValue = 0.0;
};

// Asks for a few numbers, a row each.
class CNumbersDialog : public QDialog
{
public:
    CNumbersDialog(QWidget* pParent, const char* pszTitle, const std::vector<SNumberRow>& rows);

    float GetNumber(size_t nRow) const;

private:
    std::vector<CNumberBox*> m_Boxes; // the dialog's
};
