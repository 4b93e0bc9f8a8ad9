#include "editor/app/CNumbersDialog.h"

#include "editor/app/CNumberBox.h"
#include "editor/core/Words.h"

#include <QDialogButtonBox>
#include <QFormLayout>

CNumbersDialog::CNumbersDialog(QWidget* pParent,
                               const char* pszTitle,
                               const std::vector<SNumberRow>& rows)
    : QDialog(pParent)
{
    setWindowTitle(pszTitle);
    auto* pForm = new QFormLayout(this);
    for (const SNumberRow& row : rows)
    {
        auto* pBox = new CNumberBox(this);
        pBox->setDecimals(row.iDecimals);
        pBox->setRange(0.0, row.fMost);
        pBox->setSuffix(Words(row.pszUnit));
        pBox->setValue(row.fValue);
        pForm->addRow(Words(row.pszLabel), pBox);
        m_Boxes.push_back(pBox);
    }
    m_Boxes.front()->setFocus();
    m_Boxes.front()->selectAll(); // what is typed takes the place of what is there
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(pButtons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    pForm->addRow(pButtons);
}

float CNumbersDialog::GetNumber(size_t nRow) const
{
    return static_cast<float>(m_Boxes[nRow]->value());
}
