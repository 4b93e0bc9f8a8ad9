#include "editor/app/CGroundPage.h"

#include "editor/app/CNumberBox.h"
#include "editor/core/Words.h"
#include "host/TerrainSize.h"

#include <QFormLayout>
#include <QLabel>
#include <QSpinBox>

CGroundPage::CGroundPage(QWidget* pParent, const SGroundMeasures& before)
    : QWidget(pParent)
    , m_Before(before)
{
}

CNumberBox* CGroundPage::AddLength(QFormLayout& form, const char* pszLabel, const char* pszName)
{
    auto* pBox = new CNumberBox(this);
    pBox->setObjectName(pszName);
    pBox->setDecimals(2);
    pBox->setRange(0.0, CNumberBox::LONGEST);
    pBox->setSuffix(Words(" cm"));
    connect(pBox, &QDoubleSpinBox::valueChanged, this, [this] { Tell(); });
    form.addRow(pszLabel, pBox);
    m_pFirst = m_pFirst != nullptr ? m_pFirst : pBox;
    return pBox;
}

QSpinBox* CGroundPage::AddCells(QFormLayout& form, const char* pszLabel, const char* pszName)
{
    auto* pBox = new QSpinBox(this);
    pBox->setObjectName(pszName);
    pBox->setRange(-static_cast<int>(TERRAIN_MAX_CELLS), static_cast<int>(TERRAIN_MAX_CELLS));
    pBox->setSuffix(Words(" cells"));
    connect(pBox, &QSpinBox::valueChanged, this, [this] { Tell(); });
    form.addRow(pszLabel, pBox);
    m_pFirst = m_pFirst != nullptr ? m_pFirst : pBox;
    return pBox;
}

void CGroundPage::AddLimits(QFormLayout& form, const QString& strLimits)
{
    auto* pLine = new QLabel(strLimits, this);
    pLine->setObjectName("page-limits");
    form.addRow(pLine);
}

void CGroundPage::Begin()
{
    m_pFirst->setFocus();
    m_pFirst->selectAll();
}

void CGroundPage::Tell() const
{
    if (m_OnChange)
    {
        m_OnChange();
    }
}
