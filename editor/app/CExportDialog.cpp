#include "editor/app/CExportDialog.h"

#include "editor/app/CFormScroll.h"
#include "editor/core/Words.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace
{

enum EColumn
{
    COLUMN_TARGET,
    COLUMN_SAMPLES,
    COLUMN_RANGE,
    COLUMN_STEP,
};

constexpr int SHOWN_ROWS = 12;
constexpr int SHOWN_LINES = 9;
constexpr int USE_LINES = 3;

constexpr const char* OTHER_NAME = TextKey("Another format");
constexpr const char* OTHER_USE =
    TextKey("The extension of the file says which. Where that has a white, it is the maximum "
            "height.");

} // namespace

CExportDialog::CExportDialog(QWidget* pParent,
                             const SGroundFacts& facts,
                             const std::vector<SExportTarget>& targets)
    : QDialog(pParent)
    , m_Facts(facts)
    , m_Targets(targets)
{
    setWindowTitle(Words("Export height map"));
    m_pRows = new QTreeWidget(this);
    m_pRows->setObjectName("export-targets");
    m_pRows->setAccessibleName(Words("What is exported"));
    m_pRows->setRootIsDecorated(false);
    m_pRows->setUniformRowHeights(true);
    m_pRows->setHeaderLabels(
        {Words("For"), Words("Samples"), Words("Numbers in the file"), Words("Height of a step")});
    m_pUse = new QLabel(this);
    m_pUse->setObjectName("export-use");
    m_pUse->setTextFormat(Qt::PlainText);
    m_pUse->setWordWrap(true);
    m_pUse->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    m_pUse->setMinimumHeight(USE_LINES * fontMetrics().lineSpacing()); // nothing moves
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_pOk = pButtons->button(QDialogButtonBox::Ok);
    m_pOk->setText(Words("&Export..."));
    connect(pButtons, &QDialogButtonBox::accepted, this, &CExportDialog::accept);
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* pContent = new QWidget(this);
    auto* pColumn = new QVBoxLayout(pContent);
    pColumn->setContentsMargins(0, 0, 0, 0);
    pColumn->addWidget(m_pRows, 1);
    pColumn->addWidget(MakeTiles());
    pColumn->addWidget(m_pUse);
    pColumn->addWidget(MakeNumbers());
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(new CFormScroll(this, pContent), 1);
    pLayout->addWidget(pButtons);
    AddRows();
    connect(m_pRows, &QTreeWidget::currentItemChanged, this, [this] { ShowTarget(); });
    connect(m_pRows, &QTreeWidget::itemActivated, this, [this] { accept(); });
    connect(m_pTiles, &QSpinBox::valueChanged, this, [this] { FillRows(); });
    connect(m_pUnit,
            &QComboBox::currentIndexChanged,
            this,
            [this]
            {
                m_Facts.eUnit = static_cast<ELevelUnit>(m_pUnit->currentData().toInt());
                ShowTarget();
            });
    FillRows();
    m_pRows->setFocus();
    FitDialogToScreen(*this);
}

void CExportDialog::AddRows()
{
    for (const SExportTarget& target : m_Targets)
    {
        new QTreeWidgetItem(m_pRows, {Words(target.strName.c_str())});
    }
    new QTreeWidgetItem(m_pRows, {Words(OTHER_NAME)});
    m_pRows->setCurrentItem(m_pRows->topLevelItem(0));
    const int iLine = m_pRows->sizeHintForRow(0);
    m_pRows->setMinimumHeight(SHOWN_ROWS * iLine);
}

QWidget* CExportDialog::MakeTiles()
{
    auto* pLine = new QWidget(this);
    m_pTiles = new QSpinBox(pLine);
    m_pTiles->setObjectName("export-tiles");
    m_pTiles->setRange(1, MOST_TILES);
    m_pTiles->setSpecialValueText(Words("one file"));
    auto* pLabel = new QLabel(Words("&Tiles a side"), pLine);
    pLabel->setBuddy(m_pTiles);
    // No file says it; who counts metres must know.
    m_pUnit = new QComboBox(pLine);
    m_pUnit->setObjectName("export-unit");
    m_pUnit->addItem(Words("a centimetre"), static_cast<int>(ELevelUnit::Centimetre));
    m_pUnit->addItem(Words("a metre"), static_cast<int>(ELevelUnit::Metre));
    m_pUnit->setCurrentIndex(m_pUnit->findData(static_cast<int>(m_Facts.eUnit)));
    auto* pUnitLabel = new QLabel(Words("One &unit of the level is"), pLine);
    pUnitLabel->setBuddy(m_pUnit);
    auto* pLayout = new QHBoxLayout(pLine);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(pLabel);
    pLayout->addWidget(m_pTiles);
    pLayout->addStretch(1);
    pLayout->addWidget(pUnitLabel);
    pLayout->addWidget(m_pUnit);
    return pLine;
}

QWidget* CExportDialog::MakeNumbers()
{
    auto* pLine = new QWidget(this);
    m_pNumbers = new QPlainTextEdit(pLine);
    m_pNumbers->setObjectName("export-numbers");
    m_pNumbers->setAccessibleName(Words("What to type in the other program"));
    m_pNumbers->setReadOnly(true);
    m_pNumbers->setTabChangesFocus(true);
    m_pNumbers->setMinimumHeight(SHOWN_LINES * fontMetrics().lineSpacing());
    m_pCopy = new QPushButton(Words("&Copy"), pLine);
    m_pCopy->setObjectName("export-copy");
    m_pCopy->setAutoDefault(false);
    connect(m_pCopy,
            &QPushButton::clicked,
            this,
            [this] { QApplication::clipboard()->setText(m_pNumbers->toPlainText()); });
    auto* pLayout = new QHBoxLayout(pLine);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(m_pNumbers, 1);
    pLayout->addWidget(m_pCopy, 0, Qt::AlignTop);
    return pLine;
}

const SExportTarget* CExportDialog::GetTarget() const
{
    const auto nRow = static_cast<size_t>(m_pRows->indexOfTopLevelItem(m_pRows->currentItem()));
    return nRow < m_Targets.size() ? &m_Targets[nRow] : nullptr;
}

uint32_t CExportDialog::GetTiles() const
{
    return static_cast<uint32_t>(m_pTiles->value());
}

void CExportDialog::accept()
{
    if (m_bPossible)
    {
        QDialog::accept();
    }
}

void CExportDialog::FillRows()
{
    for (size_t i = 0; i < m_Targets.size(); ++i)
    {
        QTreeWidgetItem* pRow = m_pRows->topLevelItem(static_cast<int>(i));
        SExportForm form;
        std::string strFault;
        const bool bMade = form.Make(m_Targets[i], m_Facts, GetTiles(), strFault);
        const QString strSamples = QString::fromStdString(form.GetSamplesText());
        pRow->setText(COLUMN_SAMPLES, bMade ? strSamples : QString(Words("none")));
        const std::string strRange = bMade ? form.GetRangeText(m_Facts) : "";
        pRow->setText(COLUMN_RANGE, QString::fromStdString(strRange));
        pRow->setText(COLUMN_STEP, QString::fromStdString(bMade ? form.GetStepText() : ""));
    }
    int iWidth = 2 * m_pRows->frameWidth();
    for (int i = COLUMN_TARGET; i <= COLUMN_STEP; ++i)
    {
        m_pRows->resizeColumnToContents(i);
        iWidth += m_pRows->columnWidth(i);
    }
    m_pRows->setMinimumWidth(iWidth);
    ShowTarget();
}

void CExportDialog::ShowTarget()
{
    const SExportTarget* pTarget = GetTarget();
    SExportForm form;
    std::string strFault;
    m_bPossible = pTarget == nullptr || form.Make(*pTarget, m_Facts, GetTiles(), strFault);
    const QString strUse = Words(pTarget != nullptr ? pTarget->strUse.c_str() : OTHER_USE);
    const bool bFit = pTarget != nullptr && m_bPossible && form.IsInterpolated(m_Facts);
    const QString strFit = bFit ? "\n" + QString::fromStdString(form.GetFitText(m_Facts)) : "";
    m_pUse->setText(m_bPossible
                        ? strUse + strFit
                        : QString::fromStdString(Words("It cannot be written: ") + strFault + "."));
    const bool bNumbers = pTarget != nullptr && m_bPossible;
    m_pNumbers->setPlainText(bNumbers ? QString::fromStdString(form.GetText(*pTarget, m_Facts))
                                      : QString());
    m_pCopy->setEnabled(bNumbers);
    m_pOk->setEnabled(m_bPossible);
    m_pTiles->setEnabled(pTarget != nullptr);
    m_pUnit->setEnabled(pTarget != nullptr && pTarget->bMetres);
    if (isVisible())
    {
        FitDialogToScreen(*this); // the table may have become wider
    }
}
