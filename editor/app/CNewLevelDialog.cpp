#include "editor/app/CNewLevelDialog.h"

#include "editor/app/CNumberBox.h"
#include "editor/core/Words.h"
#include "host/TerrainSize.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>

namespace
{

constexpr uint32_t USUAL_CELLS = 512;
constexpr double USUAL_WIDTH = 51200.0;
constexpr double USUAL_HIGHEST = 10000.0;

} // namespace

CNewLevelDialog::CNewLevelDialog(QWidget* pParent)
    : QDialog(pParent)
    , m_pCells(new QComboBox(this))
    , m_pLimits(new QLabel(this))
{
    setWindowTitle(Words("New level"));
    auto* pForm = new QFormLayout(this);
    for (uint32_t uCells = TERRAIN_LEAST_CHOICE - 1; uCells <= TERRAIN_MAX_CELLS; uCells *= 2)
    {
        m_pCells->addItem(QString(Words("%1 x %1 vertices")).arg(uCells + 1), uCells);
    }
    m_pCells->setCurrentIndex(m_pCells->findData(USUAL_CELLS));
    pForm->addRow(Words("Resolution"), m_pCells);
    m_pWidth = AddLength(*pForm, Words("Width and depth"), USUAL_WIDTH);
    m_pHighest = AddLength(*pForm, Words("Highest ground"), USUAL_HIGHEST);
    m_pHeight = AddLength(*pForm, Words("Height at start"), USUAL_HIGHEST / 5.0);
    m_pLimits->setObjectName("new-level-limits");
    pForm->addRow(m_pLimits);
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(pButtons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    pForm->addRow(pButtons);
    m_pMake = pButtons->button(QDialogButtonBox::Ok);
    for (const QDoubleSpinBox* pBox : {m_pWidth, m_pHighest, m_pHeight})
    {
        connect(pBox, &QDoubleSpinBox::valueChanged, this, [this] { Follow(); });
    }
    Follow();
}

void CNewLevelDialog::Follow()
{
    const bool bSizes = m_pWidth->value() > 0.0 && m_pHighest->value() > 0.0;
    const bool bEnds = m_pHeight->value() > m_pHighest->value();
    m_pLimits->setText(!bSizes ? QString(Words("Width and highest ground are more than 0."))
                       : bEnds ? QString(Words("The height at start ends at the highest ground."))
                               : Words("Lengths are ") + CNumberBox::GetLimitText() + ".");
    m_pMake->setEnabled(bSizes);
}

QDoubleSpinBox* CNewLevelDialog::AddLength(QFormLayout& form, const char* pszLabel, double fValue)
{
    auto* pBox = new CNumberBox(this);
    pBox->setDecimals(1);
    pBox->setRange(0.0, CNumberBox::LONGEST);
    pBox->setSuffix(Words(" cm"));
    pBox->setValue(fValue);
    form.addRow(pszLabel, pBox);
    return pBox;
}

uint32_t CNewLevelDialog::GetCells() const
{
    return m_pCells->currentData().toUInt();
}

SVec3 CNewLevelDialog::GetSize() const
{
    const auto fWidth = static_cast<float>(m_pWidth->value());
    return {fWidth, static_cast<float>(m_pHighest->value()), fWidth};
}

float CNewLevelDialog::GetHeight() const
{
    return static_cast<float>(m_pHeight->value());
}
