#include "editor/app/CImportDialog.h"

#include "editor/app/CNumberBox.h"
#include "host/TerrainSize.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QSpinBox>

namespace
{

constexpr int MOST_SAMPLES = 65536;

} // namespace

CImportDialog::CImportDialog(QWidget* pParent, const QString& strFile, bool bRaw, bool bLevel)
    : QDialog(pParent)
    , m_pVertices(new QComboBox(this))
    , m_pTarget(new QComboBox(this))
{
    setWindowTitle("Import " + strFile);
    auto* pForm = new QFormLayout(this);
    m_pVertices->addItem("nearest to the file", 0U);
    // Each choice has twice as many cells a side as the one before.
    for (uint32_t uVertices = TERRAIN_LEAST_CHOICE; uVertices <= TERRAIN_MAX_VERTICES;
         uVertices = uVertices * 2 - 1)
    {
        m_pVertices->addItem(QString("%1 x %1").arg(uVertices), uVertices);
    }
    pForm->addRow("Vertices", m_pVertices);
    m_pWidth = AddNumber(*pForm, "Width and depth", "from the file");
    m_pHighest = AddNumber(*pForm, "Highest ground", "from the heights");
    m_pWhite = AddNumber(*pForm, "Height of full white", "from the file");
    m_pUnit = AddNumber(*pForm, "Height of one step", "from the file");
    m_pUnit->setDecimals(6);
    if (bRaw)
    {
        m_pColumns = AddCount(*pForm, "Columns");
        m_pRows = AddCount(*pForm, "Rows");
        m_pOrder = new QComboBox(this);
        m_pOrder->addItem("little", static_cast<int>(EByteOrder::Little));
        m_pOrder->addItem("big", static_cast<int>(EByteOrder::Big));
        pForm->addRow("Byte order", m_pOrder);
    }
    m_pTarget->setObjectName("import-target");
    m_pTarget->addItem("a new level", static_cast<int>(EImportAs::NewLevel));
    if (bLevel)
    {
        m_pTarget->addItem("a step of this level", static_cast<int>(EImportAs::ThisLevel));
    }
    pForm->addRow("Becomes", m_pTarget);
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(pButtons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    pForm->addRow(pButtons);
}

QDoubleSpinBox*
CImportDialog::AddNumber(QFormLayout& form, const char* pszLabel, const char* pszFromFile)
{
    auto* pBox = new CNumberBox(this);
    pBox->setDecimals(1);
    pBox->setRange(0.0, CNumberBox::LONGEST);
    pBox->setSpecialValueText(pszFromFile);
    form.addRow(pszLabel, pBox);
    return pBox;
}

QSpinBox* CImportDialog::AddCount(QFormLayout& form, const char* pszLabel)
{
    auto* pBox = new QSpinBox(this);
    pBox->setRange(0, MOST_SAMPLES);
    pBox->setSpecialValueText("square");
    form.addRow(pszLabel, pBox);
    return pBox;
}

SImportOptions CImportDialog::GetOptions() const
{
    SImportOptions options;
    options.uSize = m_pVertices->currentData().toUInt();
    options.fWidth = static_cast<float>(m_pWidth->value());
    options.fDepth = options.fWidth;
    options.fMaxHeight = static_cast<float>(m_pHighest->value());
    options.dWhite = m_pWhite->value();
    options.dUnit = options.dWhite > 0.0 ? 0.0 : m_pUnit->value(); // one of the two at most
    if (m_pColumns != nullptr)
    {
        options.uColumns = static_cast<uint32_t>(m_pColumns->value());
        options.uRows = static_cast<uint32_t>(m_pRows->value());
        options.eByteOrder = static_cast<EByteOrder>(m_pOrder->currentData().toInt());
    }
    return options;
}

EImportAs CImportDialog::GetTarget() const
{
    return static_cast<EImportAs>(m_pTarget->currentData().toInt());
}
