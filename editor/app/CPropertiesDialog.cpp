#include "editor/app/CPropertiesDialog.h"

#include "editor/app/CStatisticsPage.h"
#include "editor/app/GroundPages.h"
#include "editor/core/Words.h"
#include "engine/terrain/CTerrain.h"
#include "engine/terrain/SGroundMap.h"
#include "host/TerrainSize.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <bit>
#include <cmath>

namespace
{

QString GetLength(float fSize)
{
    return QString::number(std::fabs(static_cast<double>(fSize)), 'f', 2);
}

// Those that the tool panel and the dialog of a new level offer.
bool IsOffered(const SGroundMeasures& measures)
{
    return measures.uSizeX == measures.uSizeZ && measures.uSizeX >= TERRAIN_LEAST_CHOICE &&
           std::has_single_bit(measures.uSizeX - 1);
}

} // namespace

CPropertiesDialog::CPropertiesDialog(QWidget* pParent, const CTerrain& terrain, bool bBitmap)
    : QDialog(pParent)
    , m_Terrain(terrain)
    , m_bBitmap(bBitmap)
    , m_pTabs(new QTabWidget(this))
    , m_pOutcome(new QLabel(this))
{
    setWindowTitle(Words("Level properties"));
    m_pTabs->setObjectName("properties-pages");
    const SGroundMeasures before = GetGroundMeasures(terrain);
    AddPage(new CSizePage(this, before), Words("&Size"));
    AddPage(new CEdgesPage(this, before), Words("&Grow or crop"));
    AddPage(new CMovePage(this, before), Words("&Move"));
    AddPage(new CRaisePage(this, before), Words("&Raise"));
    m_pTabs->addTab(new CStatisticsPage(this, terrain), Words("S&tatistics"));
    connect(m_pTabs, &QTabWidget::currentChanged, this, [this] { Follow(); });
    m_pOutcome->setObjectName("properties-outcome");
    m_pOutcome->setWordWrap(true);
    m_pOutcome->setMinimumHeight(m_pOutcome->fontMetrics().lineSpacing() * 4); // nothing moves
    m_pOutcome->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_pApply = pButtons->button(QDialogButtonBox::Ok);
    connect(pButtons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* pColumn = new QVBoxLayout(this);
    pColumn->addWidget(m_pTabs);
    pColumn->addWidget(m_pOutcome);
    pColumn->addWidget(pButtons);
    m_Pages.front()->Begin();
    Follow();
}

void CPropertiesDialog::AddPage(CGroundPage* pPage, const char* pszTitle)
{
    pPage->SetOnChange([this] { Follow(); });
    m_Pages.push_back(pPage);
    m_pTabs->addTab(pPage, pszTitle);
}

bool CPropertiesDialog::GetAct(SGroundAct& act) const
{
    const auto nPage = static_cast<size_t>(m_pTabs->currentIndex());
    return nPage < m_Pages.size() && m_Pages[nPage]->GetAct(act);
}

void CPropertiesDialog::Follow()
{
    SGroundAct act;
    const bool bAct = GetAct(act);
    const char* pszFault = bAct ? FindGroundFault(GetGroundMeasures(m_Terrain), act) : nullptr;
    const bool bStatistics = static_cast<size_t>(m_pTabs->currentIndex()) >= m_Pages.size();
    m_pOutcome->setText(pszFault != nullptr
                            ? QString(Words("Not possible: %1.")).arg(Words(pszFault))
                        : bAct        ? GetOutcome(act)
                        : bStatistics ? QString()
                                      : QString(Words("Nothing changes.")));
    if (m_pApply != nullptr)
    {
        m_pApply->setEnabled(pszFault == nullptr);
    }
}

QString CPropertiesDialog::GetOutcome(const SGroundAct& act) const
{
    const SGroundMeasures after = GetMeasuresAfter(GetGroundMeasures(m_Terrain), act);
    QString strText =
        QString(
            Words(
                "The level will have %1 x %2 vertices on %3 x %4 cm, %5 x %6 cm apart; its highest "
                "ground is %7 cm."))
            .arg(after.uSizeX)
            .arg(after.uSizeZ)
            .arg(GetLength(after.size.x),
                 GetLength(after.size.z),
                 GetLength(after.size.x / static_cast<float>(after.uSizeX - 1)),
                 GetLength(after.size.z / static_cast<float>(after.uSizeZ - 1)),
                 GetLength(after.size.y));
    const size_t nCut = CountCutVertices(m_Terrain, act);
    if (nCut > 0)
    {
        strText += QString(Words(" %1 of %2 vertices end at 0 or at the highest ground."))
                       .arg(nCut)
                       .arg(size_t{m_Terrain.GetVerticesX()} * m_Terrain.GetVerticesZ());
    }
    if (act.eKind == EGround::Extend && !IsOffered(after))
    {
        strText +=
            Words(" The tool panel has no such resolution: its own are square, of 33, 65, 129 and "
                  "so on.");
    }
    if (m_bBitmap && IsGroundMoved(act.eKind))
    {
        strText += Words(" The terrain-type bitmap follows as a new file.");
    }
    return strText;
}
